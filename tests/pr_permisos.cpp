#include "support/Cluster.h"
#include "support/Escenario.h"
#include "support/Tabla.h"

#include <QProcess>

// The schema on the server as its administrator makes it, and what planners, readers and strangers may do with it.
class PrPermisos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void crearDosVeces();
    void quienCrea();
    void otraVersion_data();
    void otraVersion();
    void tablas_data();
    void tablas();
    void prohibido();
    void ordenes();
    void cleanupTestCase();

private:
    QString base = cluster::NombreNuevo("plan"); // with examples
    QString planificador = cluster::NombreNuevo("ana");
    QString lector = cluster::NombreNuevo("leo");
};

namespace
{

const QString SinPermiso = "42501";
const QString NoNulo = "23502";
const QString YaEsta = "El esquema ya está al día.\n";

struct Salida {
    int codigo = -1;
    QString dicho;
    QString error;
};

Salida Esperar(QProcess &programa)
{
    if (!programa.waitForFinished(60000))
        qFatal("quorvex no termina");
    return {programa.exitCode(), QString::fromUtf8(programa.readAllStandardOutput()),
            QString::fromUtf8(programa.readAllStandardError())};
}

Salida Quorvex(const QStringList &argumentos)
{
    QProcess programa;
    programa.start(PROGRAMA_QUORVEX, argumentos);
    return Esperar(programa);
}

QStringList CrearEn(const QString &base, const QString &usuario = "postgres")
{
    return {"--crear-esquema", "--servidor", cluster::Direccion(usuario, base)};
}

QString BaseNueva(const QString &duena = "postgres")
{
    const QString base = cluster::NombreNuevo("nueva");
    cluster::Super("CREATE DATABASE " + base + " OWNER " + duena);
    return base;
}

void Tirar(const QString &base)
{
    cluster::Super("DROP DATABASE " + base + " WITH (FORCE)");
}

// What the catalogue says about the schema, its rights and its roles.
QString Retrato(const QString &base)
{
    return cluster::Super(
        "SELECT string_agg(todo, ';' ORDER BY todo) FROM (SELECT concat_ws(',', oid, relfilenode, relacl) "
        "FROM pg_class WHERE relnamespace = to_regnamespace('dbo') UNION ALL SELECT concat_ws(',', oid, "
        "xmin, proacl) FROM pg_proc WHERE pronamespace = to_regnamespace('dbo') UNION ALL SELECT r::text "
        "FROM pg_roles r UNION ALL SELECT concat_ws(',', datname, datacl) FROM pg_database WHERE datname = "
        "current_database() UNION ALL SELECT e::text FROM dbo.Esquema e) AS t (todo)",
        base);
}

} // namespace

void PrPermisos::initTestCase()
{
    cluster::Super("CREATE DATABASE " + base);
    const Salida creado = Quorvex(CrearEn(base) + QStringList{"--con-ejemplos"});
    QCOMPARE(creado.error, QString());
    QVERIFY2(creado.dicho.startsWith("Se creó el esquema ") && creado.codigo == 0, qPrintable(creado.dicho));
    QVERIFY(cluster::Super("SELECT count(*) FROM dbo.Plan_Mantenimiento", base).toInt() > 0);
    cluster::Super("CREATE ROLE " + planificador + " LOGIN IN ROLE quorvex_planificadores");
    cluster::Super("CREATE ROLE " + lector + " LOGIN IN ROLE quorvex_lectores");
}

void PrPermisos::cleanupTestCase()
{
    Tirar(base);
    cluster::Super("DROP ROLE " + planificador + ", " + lector);
}

void PrPermisos::crearDosVeces()
{
    const QString antes = Retrato(base);
    QVERIFY(antes.size() > 1000);
    for (const QStringList &otra : {QStringList(), QStringList{"--con-ejemplos"}}) {
        const Salida salida = Quorvex(CrearEn(base) + otra);
        QCOMPARE(salida.dicho, YaEsta);
        QCOMPARE(salida.codigo, 0);
        QCOMPARE(Retrato(base), antes);
    }
}

// The roles are there: nobody else needs to be allowed to make them. What fails leaves nothing.
void PrPermisos::quienCrea()
{
    const QString usuario = cluster::NombreNuevo("jefa");
    cluster::Super("CREATE ROLE " + usuario + " LOGIN");
    const QString propia = BaseNueva(usuario);
    QCOMPARE(Quorvex(CrearEn(propia, usuario)).error, "");
    QCOMPARE(cluster::Codigo(planificador, propia, "CREATE TEMP TABLE suya (n int)"), SinPermiso);
    const QString ajena = BaseNueva();
    cluster::Super("GRANT CREATE ON DATABASE " + ajena + " TO " + usuario);
    const Salida salida = Quorvex(CrearEn(ajena, usuario)); // planners would keep the right to temporary tables
    QVERIFY2(salida.codigo == 1 && salida.error.contains("no deja crear el esquema al usuario "),
             qPrintable(salida.error));
    QCOMPARE(cluster::Super("SELECT to_regnamespace('dbo') IS NOT NULL", ajena), "false");
    // One who has no rights at all.
    const Salida extrana = Quorvex({"--revisar", "--servidor", cluster::Direccion(usuario, base)});
    QVERIFY2(extrana.codigo == 1
                 && extrana.error.endsWith(" no da permiso al usuario " + usuario
                                           + ". Su administrador se lo da con el rol quorvex_planificadores.\n"),
             qPrintable(extrana.error));
    Tirar(propia);
    Tirar(ajena);
    cluster::Super("DROP ROLE " + usuario);
}

void PrPermisos::otraVersion_data()
{
    const Tabla<QString, QString> fila("cambio", "mensaje");
    fila("nueva", "UPDATE dbo.Esquema SET Es_Version = Es_Version + 1",
         "es de una versión más reciente de Quorvex: actualice el programa.");
    fila("vieja", "UPDATE dbo.Esquema SET Es_Version = 1", "es de una versión de Quorvex que este programa ya no lee.");
    fila("sin esquema", "DROP SCHEMA dbo CASCADE",
         "no tiene el esquema de Quorvex. Lo crea su administrador con --crear-esquema.");
    fila("de otro programa", "DROP TABLE dbo.Esquema", "no tiene el esquema de Quorvex.");
}

void PrPermisos::otraVersion()
{
    QFETCH(QString, cambio);
    QFETCH(QString, mensaje);
    const QString copia = cluster::NombreNuevo("copia");
    cluster::Super("CREATE DATABASE " + copia + " TEMPLATE " + base);
    cluster::Super(cambio, copia);
    const QString direccion = cluster::Direccion(planificador, copia);
    const Salida salida = Quorvex({"--revisar", "--servidor", direccion});
    QCOMPARE(salida.codigo, 1);
    QVERIFY2(salida.error.startsWith("La base de datos «" + copia + "» de ") && salida.error.contains(mensaje),
             qPrintable(salida.error));
    if (!cambio.contains("SCHEMA")) // what is there is not built over
        QCOMPARE(Quorvex(CrearEn(copia)).codigo, 1);
    Tirar(copia);
}

void PrPermisos::tablas_data()
{
    const Tabla<bool, QString, QStringList> fila("cambia", "orden", "permitidas");
    const QStringList plan{"plan_mantenimiento", "plan_mantenimiento_detalle", "tipo_equipo_parte"};
    const QStringList catalogos{"consulta", "esquema",    "formato_clave", "prioridad_servicio", "producto",
                                "unidad",   "tipo_gasto", "tipo_servicio", "tipo_equipo"};
    for (bool cambia : {true, false}) {
        const auto orden = [&](const QString &sql, const QStringList &permitidas) {
            fila(QString(cambia ? "planificador: " : "lector: ") + sql, cambia, sql, permitidas);
        };
        const QStringList propias = cambia ? plan : QStringList();
        orden("SELECT count(*) FROM tabla", plan + catalogos);
        orden("UPDATE tabla SET columna = DEFAULT WHERE false", propias);
        orden("DELETE FROM tabla WHERE false", propias);
        orden("INSERT INTO tabla (columna) VALUES (NULL)",
              cambia ? plan + QStringList{"bitacora", "registro_cambio"} : QStringList());
        orden("TRUNCATE tabla", {});
        orden("DROP TABLE tabla CASCADE", {});
        orden("ALTER TABLE tabla DISABLE TRIGGER ALL", {});
    }
}

// Each statement on each table of the schema: allowed, it does nothing, or is an empty row that the table refuses.
void PrPermisos::tablas()
{
    QFETCH(bool, cambia);
    QFETCH(QString, orden);
    QFETCH(QStringList, permitidas);
    const QStringList todas =
        cluster::Super("SELECT string_agg(relname || ' ' || (SELECT attname FROM pg_attribute WHERE attrelid = c.oid "
                       "AND attnum > 0 AND attgenerated = '' ORDER BY attnum DESC LIMIT 1), ',') FROM pg_class c "
                       "WHERE relnamespace = 'dbo'::regnamespace AND relkind = 'r'",
                       base)
            .split(',');
    QVERIFY(todas.size() >= 14);
    QStringList hechas;
    for (const QString &tabla : todas) {
        const QString nombre = tabla.section(' ', 0, 0);
        QString sql = orden;
        sql.replace("tabla", nombre).replace("columna", tabla.section(' ', 1));
        const QString codigo = cluster::Codigo(cambia ? planificador : lector, base, sql);
        if (codigo == SinPermiso)
            continue;
        QVERIFY2(codigo == (sql.startsWith("INSERT") ? NoNulo : QString()), qPrintable(sql + " " + codigo));
        hechas.append(nombre);
    }
    hechas.sort();
    permitidas.sort();
    QCOMPARE(hechas, permitidas);
}

void PrPermisos::prohibido()
{
    for (const char *orden :
         {"CREATE TABLE dbo.suya (n int)",
          "CREATE TABLE public.suya (n int)",
          "CREATE TEMP TABLE suya (n int)",
          "CREATE SCHEMA suyo",
          "CREATE ROLE suyo",
          "CREATE FUNCTION dbo.suya() RETURNS int LANGUAGE sql RETURN 1",
          "CREATE TRIGGER suyo BEFORE UPDATE ON Plan_Mantenimiento FOR EACH ROW EXECUTE FUNCTION Sellar_Version()",
          "CREATE OR REPLACE FUNCTION dbo.Sellar_Version() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN RETURN NEW; END'",
          "ALTER TABLE Plan_Mantenimiento ADD suya int",
          "DROP SCHEMA dbo CASCADE",
          "SET session_replication_role = replica",
          "SET ROLE postgres",
          "SELECT count(*) FROM pg_authid",
          "SELECT pg_read_file('/etc/passwd')",
          "SELECT lo_import('/etc/passwd')",
          "COPY Producto TO '/tmp/suya'",
          "COPY (SELECT 1) TO PROGRAM 'true'",
          "SELECT nextval('registro_cambio_rc_id_seq')",
          "GRANT quorvex_planificadores TO postgres",
          "ALTER SYSTEM SET fsync = off"})
        for (const QString &usuario : {planificador, lector})
            QCOMPARE(orden + cluster::Codigo(usuario, base, orden), orden + SinPermiso);
    // Nobody who changes a row writes its version.
    cluster::Correr(planificador, base, "UPDATE Plan_Mantenimiento SET Version = 'suya', Version_Anterior = 'suya'");
    QCOMPARE(
        cluster::Super("SELECT count(*) FROM dbo.Plan_Mantenimiento WHERE 'suya' IN (Version, Version_Anterior)", base),
        "0");
}

// The commands without a window. A reader sees what a planner sees, through the screen's own statements, and changes
// nothing.
void PrPermisos::ordenes()
{
    QTemporaryDir carpeta;
    QByteArray documento;
    for (const QString &usuario : {planificador, lector}) {
        const QStringList servidor{"--servidor", cluster::Direccion(usuario, base)};
        QFile archivo(carpeta.filePath(usuario));
        const Salida salida = Quorvex(QStringList{"--exportar", "0001", archivo.fileName()} + servidor);
        QVERIFY2(salida.codigo == 0 && archivo.open(QIODevice::ReadOnly), qPrintable(salida.error));
        const QByteArray exportado = archivo.readAll();
        QVERIFY(exportado.contains("Mantenimiento") && (documento.isEmpty() || exportado == documento));
        documento = exportado;
        QCOMPARE(Quorvex(QStringList{"--revisar"} + servidor).dicho, "No se encontró nada que corregir.\n");
    }
    const QString cuantos = "SELECT (SELECT string_agg(p::text, '') FROM dbo.Plan_Mantenimiento p)";
    const auto importar = [&](const QString &usuario) {
        return Quorvex(
            {"--importar", carpeta.filePath(lector), "--si", "--servidor", cluster::Direccion(usuario, base)});
    };
    const QString antes = cluster::Super(cuantos, base);
    const Salida negado = importar(lector);
    QVERIFY2(negado.codigo == 1 && negado.error.contains("permission denied"), qPrintable(negado.error));
    QCOMPARE(cluster::Super(cuantos, base), antes);
    const Salida hecho = importar(planificador);
    QVERIFY2(hecho.codigo == 0, qPrintable(hecho.error));
    QCOMPARE(
        cluster::Super("SELECT DISTINCT Oper_Alta FROM dbo.Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0001'", base),
        planificador);
}

PRUEBA_MAIN(PrPermisos)
#include "pr_permisos.moc"
