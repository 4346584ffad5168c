#include "support/Cluster.h"
#include "support/Procesos.h"

#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

// The schema on the server as its administrator makes it, and what planners, readers and strangers may do with it.
class PrPermisos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void crearDosVeces();
    void quienCrea();
    void otraVersion();
    void tablas();
    void prohibido();
    void firmas();
    void actualizar();
    void actualizarConGente();
    void ordenes();

private:
    QString base = cluster::NombreNuevo("plan"); // with examples
    QString planificador = cluster::NombreNuevo("ana");
    QString lector = cluster::NombreNuevo("leo");
};

namespace
{

const QString SinPermiso = "42501";

QStringList CrearEn(const QString &base, const QString &usuario = "postgres")
{
    return {"--crear-esquema", "--servidor", cluster::Direccion(usuario, base)};
}

// A database as version 2 left it, with what planners may have put into it.
QString Vieja()
{
    QString nombre = cluster::NombreNuevo("vieja");
    cluster::Super("CREATE DATABASE " + nombre);
    QFile guion(CARPETA_DATOS "/version_2.postgres.sql");
    if (!guion.open(QIODevice::ReadOnly))
        qFatal("%s", qPrintable(guion.errorString()));
    cluster::Super(QString::fromUtf8(guion.readAll()), nombre);
    return nombre;
}

// The rows of the tables that it had.
QString Filas(const QString &base)
{
    QStringList tablas;
    for (const char *tabla :
         {"Tipo_Equipo", "Producto", "Tipo_Gasto", "Tipo_Servicio", "Prioridad_Servicio", "Unidad", "Tipo_Equipo_Parte",
          "Plan_Mantenimiento", "Plan_Mantenimiento_Detalle", "Formato_Clave", "Registro_Cambio", "Bitacora"})
        tablas.append(QString("SELECT '%1' || t::text FROM dbo.%1 t").arg(tabla));
    return cluster::Super("SELECT string_agg(todo, E'\\n' ORDER BY todo) FROM (" + tablas.join(" UNION ALL ")
                              + " UNION ALL SELECT Co_Nombre || regexp_replace(Co_Texto, '\\s+', ' ', 'g') FROM "
                                "dbo.Consulta) AS t (todo)",
                          base);
}

// Every object of a database and who may do what with it, as the server writes them down.
QString Objetos(const QString &base)
{
    QProcess programa;
    programa.start("pg_dump", {"-s", cluster::Direccion("postgres", base)});
    programa.waitForFinished();
    QStringList renglones = QString::fromUtf8(programa.readAll()).split('\n');
    renglones.removeIf([](const QString &renglon) { return renglon.contains("restrict "); }); // a new word each time
    return renglones.join('\n')
           + cluster::Super("SELECT array_to_string(datacl, ' ') FROM pg_database WHERE datname = '" + base + "'");
}

QStringList ActualizarEn(const QString &base, const QString &usuario = "postgres", const QString &opciones = {})
{
    return {"--actualizar-esquema", "--servidor", cluster::Direccion(usuario, base, {}, opciones)};
}

// What the catalogue says about the schema and its rights.
QString Retrato(const QString &base)
{
    return cluster::Super("SELECT string_agg(todo, ';' ORDER BY todo) FROM (SELECT concat_ws(',', oid, relfilenode, "
                          "relacl) FROM pg_class WHERE relnamespace = to_regnamespace('dbo') UNION ALL SELECT "
                          "concat_ws(',', datname, datacl) FROM pg_database UNION ALL SELECT p::text FROM "
                          "dbo.Plan_Mantenimiento p UNION ALL SELECT e::text FROM dbo.Esquema e) AS t (todo)",
                          base);
}

} // namespace

void PrPermisos::initTestCase()
{
    cluster::Super("CREATE DATABASE " + base);
    const QString creado = Quorvex(CrearEn(base) + QStringList{"--con-ejemplos"});
    QVERIFY2(creado.startsWith("0Se creó el esquema "), qPrintable(creado));
    cluster::Super("CREATE ROLE " + planificador + " LOGIN IN ROLE quorvex_planificadores");
    cluster::Super("CREATE ROLE " + lector + " LOGIN IN ROLE quorvex_lectores");
}

void PrPermisos::crearDosVeces()
{
    const QString antes = Retrato(base);
    QCOMPARE(Quorvex(CrearEn(base) + QStringList{"--con-ejemplos"}), "0El esquema ya está al día.\n");
    QCOMPARE(Retrato(base), antes);
}

// The owner of a database may, for the roles are there. Somebody else could not take the right to temporary tables from
// planners: that leaves nothing.
void PrPermisos::quienCrea()
{
    const QString usuario = cluster::NombreNuevo("jefa");
    const QString propia = cluster::NombreNuevo("propia");
    const QString ajena = cluster::NombreNuevo("ajena");
    cluster::Super("CREATE ROLE " + usuario + " LOGIN");
    cluster::Super("CREATE DATABASE " + propia + " OWNER " + usuario);
    cluster::Super("CREATE DATABASE " + ajena);
    cluster::Super("GRANT CREATE ON DATABASE " + ajena + " TO " + usuario);
    QVERIFY(Quorvex(CrearEn(propia, usuario)).startsWith("0"));
    const QString negado = Quorvex(CrearEn(ajena, usuario));
    QVERIFY2(negado.startsWith("1") && negado.contains("no deja crear el esquema al usuario "), qPrintable(negado));
    QCOMPARE(cluster::Super("SELECT to_regnamespace('dbo') IS NOT NULL", ajena), "false");
    // One who has no rights at all.
    const QString extrana = Quorvex({"--revisar", "--servidor", cluster::Direccion(usuario, base)});
    QVERIFY2(extrana.contains("permission denied for database \"" + base), qPrintable(extrana));
}

void PrPermisos::otraVersion()
{
    for (const auto &[cambio, motivo] :
         {qMakePair("UPDATE dbo.Esquema SET Es_Version = Es_Version + 1", "es de una versión más reciente de Quorvex"),
          qMakePair("UPDATE dbo.Esquema SET Es_Version = 1",
                    "es de una versión de Quorvex que este programa ya no lee"),
          qMakePair("DROP TABLE dbo.Esquema", "no tiene el esquema de Quorvex.")}) {
        const QString copia = cluster::NombreNuevo("copia");
        cluster::Super("CREATE DATABASE " + copia + " TEMPLATE " + base);
        cluster::Super(cambio, copia);
        const QString dicho = Quorvex({"--revisar", "--servidor", cluster::Direccion(planificador, copia)});
        QVERIFY2(dicho.startsWith("1") && dicho.contains(motivo), qPrintable(dicho));
        QVERIFY(Quorvex(CrearEn(copia)).startsWith("1")); // what is there is not built over
    }
}

// Planners write the plan and add to the logs, and nobody writes the catalogues.
void PrPermisos::tablas()
{
    const auto donde = [&](const QString &usuario, const QString &derecho) {
        return cluster::Super("SELECT coalesce(string_agg(relname, ' ' ORDER BY relname), '') FROM pg_class WHERE "
                              "relnamespace = 'dbo'::regnamespace AND relkind = 'r' AND has_table_privilege('"
                                  + usuario + "', oid, '" + derecho + "')",
                              base);
    };
    const QString plan = "plan_mantenimiento plan_mantenimiento_detalle ";
    for (const QString &usuario : {planificador, lector}) {
        QCOMPARE(donde(usuario, "SELECT").remove("plan_reserva "),
                 "consulta esquema formato_clave " + plan
                     + "prioridad_servicio producto tipo_equipo tipo_equipo_parte tipo_gasto "
                       "tipo_servicio unidad");
        QCOMPARE(donde(usuario, "TRUNCATE") + donde(usuario, "TRIGGER") + donde(usuario, "REFERENCES"), "");
    }
    QCOMPARE(donde(planificador, "INSERT"), plan + "tipo_equipo_parte");
    QCOMPARE(donde(planificador, "UPDATE"), plan + "tipo_equipo_parte");
    QCOMPARE(donde(planificador, "DELETE"), plan + "tipo_equipo_parte");
    QCOMPARE(donde(lector, "INSERT") + donde(lector, "UPDATE") + donde(lector, "DELETE"), "");
}

void PrPermisos::prohibido()
{
    for (const char *orden :
         {"CREATE TABLE dbo.suya (n int)", "CREATE TABLE public.suya (n int)", "CREATE TEMP TABLE suya (n int)",
          "CREATE SCHEMA suyo", "CREATE FUNCTION dbo.suya() RETURNS int LANGUAGE sql RETURN 1",
          "CREATE OR REPLACE FUNCTION dbo.Sellar_Version() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN RETURN NEW; END'",
          "DROP SCHEMA dbo CASCADE", "SET ROLE postgres", "SELECT pg_read_file('/etc/passwd')",
          "COPY (SELECT 1) TO PROGRAM 'true'", "GRANT quorvex_planificadores TO postgres", "SELECT lo_create(0)",
          "SELECT lo_from_bytea(0, 'x')", "SELECT pg_advisory_lock(1)",
          "INSERT INTO Bitacora (Bi_ID, Bi_Tabla, Bi_Clave, Bi_Accion, Bi_Oper, Bi_Fecha) OVERRIDING SYSTEM VALUE "
          "VALUES (9, 'a', 'b', 'c', 'd', 'e')",
          "DELETE FROM Bitacora", "SELECT setval('bitacora_bi_id_seq', 1)",
          "UPDATE Plan_Reserva SET "
          "Te_Cve_Tipo_Equipo = 'x'",
          "SELECT FROM Plan_Reserva FOR UPDATE"})
        for (const QString &usuario : {planificador, lector})
            QCOMPARE(orden + cluster::Codigo(usuario, base, orden), orden + SinPermiso);
    QCOMPARE(cluster::Codigo(lector, base, "SELECT Reservar_Plan('0001', false)"), SinPermiso);
    // A row for each key that somebody makes up would be nobody's to delete.
    QCOMPARE(cluster::Correr(planificador, base, "SELECT Reservar_Plan('inventada', true)"), "true");
    QCOMPARE(cluster::Super("SELECT count(*) FROM dbo.Plan_Reserva WHERE Te_Cve_Tipo_Equipo = 'inventada'", base), "0");
    QVERIFY(cluster::Super("SHOW temp_file_limit", base) != "-1");
    QCOMPARE(cluster::Codigo(planificador, base, "UPDATE Tipo_Equipo_Parte SET Tep_ID = '0000 ' WHERE Tep_ID = '0001'"),
             "23514");
    // Nobody who changes a row writes its version.
    cluster::Correr(planificador, base, "UPDATE Plan_Mantenimiento SET Version = 'suya', Version_Anterior = 'suya'");
    QCOMPARE(
        cluster::Super("SELECT count(*) FROM dbo.Plan_Mantenimiento WHERE 'suya' IN (Version, Version_Anterior)", base),
        "0");
}

// Whatever a planner writes into a log, and whatever time he says it is, the line is signed by him and dated by the
// database: in the server's zone, or in its own.
void PrPermisos::firmas()
{
    const auto escribir = [&] {
        cluster::Correr(
            planificador, base,
            "SET TimeZone = '-100'; INSERT INTO Registro_Cambio (Rc_Tabla, Rc_Clave, Rc_Oper, Rc_Fecha) VALUES "
            "('a', 'b', 'jefa', '1999-01-01 00:00:00'); INSERT INTO Bitacora (Bi_Tabla, Bi_Clave, "
            "Bi_Accion, Bi_Oper, Bi_Fecha) VALUES ('a', 'b', 'c', 'jefa', '1999-01-01 00:00:00')");
        const auto firmado = [&](const QString &oper, const QString &fecha, const QString &tabla) {
            const QString ultimo = cluster::Super(
                QString("SELECT %1 || %2 FROM dbo.%3 ORDER BY 1 DESC, %2 DESC LIMIT 1").arg(oper, fecha, tabla), base);
            return ultimo.startsWith(planificador) ? ultimo.mid(planificador.size()) : ultimo;
        };
        const QString registro = firmado("Rc_Oper", "Rc_Fecha", "Registro_Cambio");
        return registro == firmado("Bi_Oper", "Bi_Fecha", "Bitacora") ? registro : QString("distintas");
    };
    const auto esAhora = [](const QString &fecha, const QByteArray &zona) {
        const QDateTime ahora = QDateTime::currentDateTimeUtc().toTimeZone(QTimeZone(zona));
        const QDateTime firmada = QDateTime::fromString(fecha, "yyyy-MM-dd HH:mm:ss");
        return firmada.isValid() && qAbs(firmada.secsTo(QDateTime(ahora.date(), ahora.time()))) < 30;
    };
    const QString suya = escribir();
    QVERIFY2(esAhora(suya, cluster::Super("SHOW log_timezone").toLatin1()), qPrintable(suya));
    cluster::Super("ALTER DATABASE " + base + " SET TimeZone = 'Asia/Tokyo'");
    const QString lejana = escribir();
    QVERIFY2(esAhora(lejana, "Asia/Tokyo"), qPrintable(lejana));
}

// No row changes, and objects and rights are those of a new database; who may not do it, and a step that fails, leave
// it as it was.
void PrPermisos::actualizar()
{
    const QString vieja = Vieja();
    const QString antes = Filas(vieja);
    const QString mirar = Quorvex({"--revisar", "--servidor", cluster::Direccion(planificador, vieja)});
    QVERIFY2(mirar.contains("es de la versión 2 de Quorvex y este programa usa la 3: su administrador la actualiza con "
                            "--actualizar-esquema."),
             qPrintable(mirar));
    const QString negado = Quorvex(ActualizarEn(vieja, planificador));
    QVERIFY2(negado.startsWith("1") && negado.contains(": lo hace su dueño, postgres."), qPrintable(negado));
    cluster::Super("CREATE FUNCTION dbo.Rechazar_Programa() RETURNS int LANGUAGE sql RETURN 1", vieja); // the last one
    const QString fallida = Quorvex(ActualizarEn(vieja));
    QVERIFY2(fallida.startsWith("1") && fallida.contains("quedó como estaba."), qPrintable(fallida));
    QCOMPARE(cluster::Super("SELECT Es_Version || coalesce(to_regclass('dbo.plan_reserva')::text, '') FROM dbo.Esquema",
                            vieja),
             "2");
    cluster::Super("DROP FUNCTION dbo.Rechazar_Programa", vieja);
    const QString hecho = Quorvex(ActualizarEn(vieja));
    QVERIFY2(hecho.startsWith("0Se actualizó el esquema ") && hecho.contains(", de la versión 2 a la 3.\n"),
             qPrintable(hecho));
    QCOMPARE(Filas(vieja), antes);
    QCOMPARE(Quorvex(ActualizarEn(vieja)), "0El esquema ya está al día. Se repusieron los permisos de los roles.\n");
    const QString nueva = cluster::NombreNuevo("nueva");
    cluster::Super("CREATE DATABASE " + nueva);
    QVERIFY(Quorvex(CrearEn(nueva)).startsWith("0"));
    QCOMPARE(Objetos(vieja), Objetos(nueva));
    const QString texto = "SELECT Co_Texto FROM dbo.Consulta WHERE Co_Nombre = 'PLAN_MANTENIMIENTO'";
    QCOMPARE(cluster::Super(texto, vieja), cluster::Super(texto, nueva));
    // An administrator's own query stays.
    const QString propia = Vieja();
    cluster::Super("UPDATE dbo.Consulta SET Co_Texto = 'SELECT 1 -- suya' WHERE Co_Nombre = 'PLAN_MANTENIMIENTO'",
                   propia);
    QVERIFY(Quorvex(ActualizarEn(propia)).startsWith("0Se actualizó"));
    QCOMPARE(cluster::Super(texto, propia), "SELECT 1 -- suya");
}

// Whoever is saving is waited for; whoever opened the database with the old program is told before he saves, and
// reads on.
void PrPermisos::actualizarConGente()
{
    const QString vieja = Vieja();
    const QString antes = Filas(vieja);
    const qvx::Servidor suyo(cluster::Direccion(planificador, vieja, {}, "?options=-c%20quorvex.esquema%3D2"));
    QString dicho;
    qvx::BaseAbierta gente(
        "QPSQL", [&](QSqlDatabase &nueva) { suyo.Preparar(nueva); },
        [&](const QSqlError &error) { dicho = error.databaseText(); });
    const QString cambio = "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'OTRA' WHERE Tep_ID = '0001'";
    gente.Ejecutar("PREPARE mirar AS SELECT * FROM Tipo_Equipo_Parte");
    gente.Ejecutar("BEGIN");
    gente.Ejecutar(cambio);
    const QString ocupada = Quorvex(ActualizarEn(vieja, "postgres", "?options=-c%20lock_timeout%3D500"));
    QVERIFY2(ocupada.startsWith("1") && ocupada.contains("quedó como estaba. Otra persona"), qPrintable(ocupada));
    gente.Ejecutar("ROLLBACK");
    QCOMPARE(dicho, "");
    QVERIFY(Quorvex(ActualizarEn(vieja)).startsWith("0Se actualizó"));
    gente.Ejecutar("EXECUTE mirar");
    QCOMPARE(dicho, "");
    gente.Ejecutar(cambio);
    QVERIFY2(dicho.contains("es ahora de otra versión de Quorvex"), qPrintable(dicho));
    QCOMPARE(Filas(vieja), antes);
}

// The commands without a window. A reader sees what a planner sees, through the screen's own statements, and changes
// nothing.
void PrPermisos::ordenes()
{
    const QTemporaryDir carpeta;
    const auto correr = [&](const QString &usuario, const QStringList &orden) {
        return Quorvex(orden + QStringList{"--servidor", cluster::Direccion(usuario, base)});
    };
    QStringList documentos;
    for (const QString &usuario : {planificador, lector}) {
        QFile archivo(carpeta.filePath(usuario));
        const QString dicho = correr(usuario, {"--exportar", "0001", archivo.fileName()});
        QVERIFY2(dicho.startsWith("0") && archivo.open(QIODevice::ReadOnly), qPrintable(dicho));
        documentos.append(QString::fromUtf8(archivo.readAll()));
        QCOMPARE(correr(usuario, {"--revisar"}), "0No se encontró nada que corregir.\n");
    }
    QVERIFY(documentos.constFirst().contains("Mantenimiento"));
    QCOMPARE(documentos.constLast(), documentos.constFirst());

    const QString plan = "SELECT string_agg(p::text, '') FROM dbo.Plan_Mantenimiento p";
    const QString antes = cluster::Super(plan, base);
    const QStringList importar{"--importar", carpeta.filePath(lector), "--si"};
    const QString negado = correr(lector, importar);
    QVERIFY2(negado.startsWith("1") && negado.contains("permission denied"), qPrintable(negado));
    QCOMPARE(cluster::Super(plan, base), antes);
    QVERIFY(correr(planificador, importar).startsWith("0"));
    QVERIFY(cluster::Super(plan, base) != antes);
}

QTEST_GUILESS_MAIN(PrPermisos)
#include "pr_permisos.moc"
