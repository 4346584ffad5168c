#include "support/Cluster.h"
#include "support/Escenario.h"

#include <QProcess>

// The schema on the server as its administrator makes it, and what planners, readers and strangers may do with it.
class PrPermisos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void crearDosVeces();
    void crearALaVez();
    void quienCrea_data();
    void quienCrea();
    void otraVersion_data();
    void otraVersion();
    void tablas_data();
    void tablas();
    void prohibido_data();
    void prohibido();
    void versiones();
    void ordenes();
    void extrano();
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

std::unique_ptr<QProcess> Lanzar(const QStringList &argumentos)
{
    auto programa = std::make_unique<QProcess>();
    programa->start(PROGRAMA_QUORVEX, argumentos);
    return programa;
}

Salida Esperar(QProcess &programa)
{
    if (!programa.waitForFinished(60000))
        qFatal("quorvex no termina");
    return {programa.exitCode(), QString::fromUtf8(programa.readAllStandardOutput()),
            QString::fromUtf8(programa.readAllStandardError())};
}

Salida Quorvex(const QStringList &argumentos)
{
    return Esperar(*Lanzar(argumentos));
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

// What the catalogue says about the schema, its rights and its roles, and what its tables hold.
QString Retrato(const QString &base)
{
    return cluster::Super(
        "SELECT (SELECT string_agg(concat_ws(',', oid, relname, relfilenode, relacl), ';' ORDER BY oid) FROM pg_class "
        "WHERE relnamespace = to_regnamespace('dbo')) || (SELECT string_agg(concat_ws(',', oid, xmin, proacl), ';' "
        "ORDER BY oid) FROM pg_proc WHERE pronamespace = to_regnamespace('dbo')) || (SELECT string_agg(r::text, ';' "
        "ORDER BY oid) FROM pg_roles r) || (SELECT concat_ws(',', datname, datacl) FROM pg_database WHERE datname = "
        "current_database()) || (SELECT concat_ws(',', oid, nspacl) FROM pg_namespace WHERE nspname = 'dbo') || "
        "(SELECT query_to_xml('SELECT * FROM Producto, Esquema, Consulta ORDER BY 1', true, false, '')::text)",
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

// In one database one creates and the others find it; in two, neither is in the other's way.
void PrPermisos::crearALaVez()
{
    const QStringList bases{BaseNueva(), BaseNueva()};
    std::vector<std::unique_ptr<QProcess>> programas;
    programas.reserve(6);
    for (int i = 0; i < 6; ++i)
        programas.push_back(Lanzar(CrearEn(bases.at(i % 2))));
    int creados = 0;
    for (const auto &programa : programas) {
        const Salida salida = Esperar(*programa);
        QVERIFY2(salida.codigo == 0, qPrintable(salida.error));
        creados += salida.dicho == YaEsta ? 0 : 1;
    }
    QCOMPARE(creados, 2);
    for (const QString &nueva : bases) {
        QCOMPARE(cluster::Super("SELECT count(*) FROM dbo.Esquema", nueva), "1");
        QCOMPARE(cluster::Super("SELECT count(*) FROM dbo.Plan_Mantenimiento", nueva), "0");
        Tirar(nueva);
    }
}

void PrPermisos::quienCrea_data()
{
    QTest::addColumn<QString>("derechos");
    QTest::addColumn<bool>("duena");
    QTest::addColumn<QString>("error");
    const QString negado = "no deja crear el esquema al usuario ";
    QTest::newRow("dueña") << "" << true << "";
    QTest::newRow("sin derechos") << "" << false << negado;
    // The planners would keep the right to make temporary tables.
    QTest::newRow("solo puede crear esquemas") << "GRANT CREATE ON DATABASE %1 TO %2" << false << negado;
}

// The roles are there: nobody else needs to be allowed to make them. What fails leaves nothing.
void PrPermisos::quienCrea()
{
    QFETCH(QString, derechos);
    QFETCH(bool, duena);
    QFETCH(QString, error);
    const QString usuario = cluster::NombreNuevo("jefa");
    cluster::Super("CREATE ROLE " + usuario + " LOGIN");
    const QString nueva = BaseNueva(duena ? usuario : "postgres");
    if (!derechos.isEmpty())
        cluster::Super(derechos.arg(nueva, usuario));
    const Salida salida = Quorvex(CrearEn(nueva, usuario));
    QVERIFY2(salida.error.contains(error) && salida.error.isEmpty() == error.isEmpty(), qPrintable(salida.error));
    QCOMPARE(salida.codigo, error.isEmpty() ? 0 : 1);
    QCOMPARE(cluster::Super("SELECT to_regnamespace('dbo') IS NOT NULL", nueva), error.isEmpty() ? "true" : "false");
    if (error.isEmpty())
        QCOMPARE(cluster::Codigo(planificador, nueva, "CREATE TEMP TABLE suya (n int)"), SinPermiso);
    Tirar(nueva);
    cluster::Super("DROP ROLE " + usuario);
}

void PrPermisos::otraVersion_data()
{
    QTest::addColumn<QString>("cambio");
    QTest::addColumn<QString>("mensaje");
    QTest::newRow("nueva") << "UPDATE dbo.Esquema SET Es_Version = Es_Version + 1"
                           << "es de una versión más reciente de Quorvex: actualice el programa.";
    QTest::newRow("vieja") << "UPDATE dbo.Esquema SET Es_Version = 1"
                           << "es de una versión de Quorvex que este programa ya no lee.";
    QTest::newRow("sin versión") << "DELETE FROM dbo.Esquema"
                                 << "ya no lee.";
    QTest::newRow("sin esquema") << "DROP SCHEMA dbo CASCADE"
                                 << "no tiene el esquema de Quorvex. Lo crea su administrador con --crear-esquema.";
    QTest::newRow("de otro programa") << "DROP TABLE dbo.Esquema"
                                      << "no tiene el esquema de Quorvex.";
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
    QTest::addColumn<QString>("usuario");
    QTest::addColumn<QString>("orden");
    QTest::addColumn<QStringList>("permitidas");
    const QStringList plan{"plan_mantenimiento", "plan_mantenimiento_detalle", "tipo_equipo_parte"};
    const QStringList bitacoras{"bitacora", "registro_cambio"};
    const QStringList catalogos{"consulta", "esquema",    "formato_clave", "prioridad_servicio", "producto",
                                "unidad",   "tipo_gasto", "tipo_servicio", "tipo_equipo"};
    for (const QString &usuario : {planificador, lector}) {
        const bool cambia = usuario == planificador;
        const auto fila = [&](const char *orden, const QStringList &permitidas) {
            QTest::addRow("%s: %s", cambia ? "planificador" : "lector", orden) << usuario << orden << permitidas;
        };
        fila("SELECT count(*) FROM tabla", plan + catalogos);
        fila("UPDATE tabla SET columna = DEFAULT WHERE false", cambia ? plan : QStringList());
        fila("DELETE FROM tabla WHERE false", cambia ? plan : QStringList());
        fila("INSERT INTO tabla (columna) VALUES (NULL)", cambia ? bitacoras + plan : QStringList());
        fila("TRUNCATE tabla", {});
        fila("DROP TABLE tabla CASCADE", {});
        fila("ALTER TABLE tabla DISABLE TRIGGER ALL", {});
        fila("COMMENT ON TABLE tabla IS 'suya'", {});
    }
}

// Each statement on each table of the schema: allowed, it does nothing, or is an empty row that the table refuses.
void PrPermisos::tablas()
{
    QFETCH(QString, usuario);
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
        const QString codigo = cluster::Codigo(usuario, base, sql);
        if (codigo == SinPermiso)
            continue;
        QVERIFY2(codigo == (sql.startsWith("INSERT") ? NoNulo : QString()), qPrintable(sql + " " + codigo));
        hechas.append(nombre);
    }
    hechas.sort();
    permitidas.sort();
    QCOMPARE(hechas, permitidas);
}

void PrPermisos::prohibido_data()
{
    QTest::addColumn<QString>("orden");
    for (const char *orden :
         {"CREATE TABLE dbo.suya (n int)",
          "CREATE TABLE public.suya (n int)",
          "CREATE TEMP TABLE suya (n int)",
          "CREATE SCHEMA suyo",
          "CREATE VIEW dbo.suya AS SELECT 1",
          "CREATE SEQUENCE dbo.suya",
          "CREATE ROLE suyo",
          "CREATE FUNCTION dbo.suya() RETURNS int LANGUAGE sql RETURN 1",
          "CREATE DATABASE suya",
          "CREATE INDEX ON Plan_Mantenimiento (Pm_Precio)",
          "CREATE EXTENSION pgcrypto",
          "CREATE TRIGGER suyo BEFORE UPDATE ON Plan_Mantenimiento FOR EACH ROW EXECUTE FUNCTION Sellar_Version()",
          "ALTER TABLE Plan_Mantenimiento ADD suya int",
          "DROP TRIGGER Pm_Version ON Plan_Mantenimiento",
          "CREATE OR REPLACE FUNCTION dbo.Sellar_Version() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN RETURN NEW; END'",
          "DROP FUNCTION Get_Ruta_Parte_Tipo_Equipo",
          "DROP SCHEMA dbo CASCADE",
          "SET session_replication_role = replica",
          "SET ROLE postgres",
          "SELECT count(*) FROM pg_authid",
          "SELECT pg_read_file('/etc/passwd')",
          "COPY Producto TO '/tmp/suya'",
          "COPY (SELECT 1) TO PROGRAM 'true'",
          "SELECT nextval('registro_cambio_rc_id_seq')",
          "SELECT setval('bitacora_bi_id_seq', 1)",
          "GRANT quorvex_planificadores TO postgres",
          "ALTER SYSTEM SET fsync = off"})
        QTest::newRow(orden) << orden;
}

void PrPermisos::prohibido()
{
    QFETCH(QString, orden);
    QCOMPARE(cluster::Codigo(planificador, base, orden), SinPermiso);
    QCOMPARE(cluster::Codigo(lector, base, orden), SinPermiso);
}

// Nobody who changes a row writes its version.
void PrPermisos::versiones()
{
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

void PrPermisos::extrano()
{
    const QString usuario = cluster::NombreNuevo("ext");
    cluster::Super("CREATE ROLE " + usuario + " LOGIN");
    const Salida salida = Quorvex({"--revisar", "--servidor", cluster::Direccion(usuario, base)});
    QCOMPARE(salida.codigo, 1);
    QVERIFY2(salida.error.endsWith(" no da permiso al usuario " + usuario
                                   + ". Su administrador se lo da con el rol quorvex_planificadores.\n"),
             qPrintable(salida.error));
    cluster::Super("DROP ROLE " + usuario);
}

PRUEBA_MAIN(PrPermisos)
#include "pr_permisos.moc"
