#include "support/Cluster.h"
#include "support/Procesos.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

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
    QVERIFY2(extrana.contains(" no da permiso al usuario " + usuario), qPrintable(extrana));
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
        QCOMPARE(donde(usuario, "SELECT"), "consulta esquema formato_clave " + plan
                                               + "prioridad_servicio producto tipo_equipo tipo_equipo_parte tipo_gasto "
                                                 "tipo_servicio unidad");
        QCOMPARE(donde(usuario, "TRUNCATE") + donde(usuario, "TRIGGER") + donde(usuario, "REFERENCES"), "");
    }
    QCOMPARE(donde(planificador, "INSERT"), "bitacora " + plan + "registro_cambio tipo_equipo_parte");
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
          "COPY (SELECT 1) TO PROGRAM 'true'", "GRANT quorvex_planificadores TO postgres"})
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
