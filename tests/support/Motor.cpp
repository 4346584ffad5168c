#include "support/Motor.h"

#include "data/Instalador.h"
#include "support/Cluster.h"

#include <QSqlError>
#include <QSqlRecord>
#include <QTemporaryDir>

OtroPrograma::~OtroPrograma()
{
    qvx::BaseAbierta::Soltar(base);
}

QSqlQuery OtroPrograma::Correr(const QString &sql) const
{
    QSqlQuery consulta(base);
    if (!consulta.exec(sql))
        qFatal("%s: %s", qPrintable(sql), qPrintable(consulta.lastError().text()));
    return consulta;
}

QStringList OtroPrograma::Filas(const QString &sql) const
{
    QStringList filas;
    for (QSqlQuery consulta = Correr(sql); consulta.next();) {
        QStringList valores;
        for (int i = 0; i < consulta.record().count(); ++i)
            valores.append(consulta.value(i).toString());
        filas.append(valores.join(QLatin1Char('|')));
    }
    return filas;
}

namespace
{

std::unique_ptr<OtroPrograma> Conectar(const QString &controlador, const std::function<void(QSqlDatabase &)> &preparar)
{
    qvx::BaseAbierta base(controlador, preparar,
                          [](const QSqlError &error) { qFatal("%s", qPrintable(error.text())); });
    return std::make_unique<OtroPrograma>(base.Entregar());
}

class EnArchivo : public Motor
{
public:
    explicit EnArchivo(bool conEjemplos) : archivo(carpeta.filePath("prueba.db"))
    {
        qvx::AbrirBaseDeDatos(archivo, conEjemplos);
    }
    explicit EnArchivo(const QString &ajeno) : archivo(ajeno) {}

    std::unique_ptr<qvx::Conexion> Abrir() const override { return qvx::AbrirBaseDeDatos(archivo, false); }
    std::unique_ptr<OtroPrograma> Otro() const override
    {
        return Conectar("QSQLITE", [this](QSqlDatabase &base) { base.setDatabaseName(archivo); });
    }
    QStringList Argumentos() const override { return {"--base-datos", archivo, "--operador", "mlopez"}; }
    bool EsPostgres() const override { return false; }
    QString Archivo() const override { return archivo; }

    QStringList Falla(const QString &cuando, const QString &suceso, const QString &condicion,
                      bool omitida) const override
    {
        return {"CREATE TRIGGER falla " + cuando + " " + suceso + (condicion.isEmpty() ? "" : " WHEN " + condicion)
                + " BEGIN SELECT " + (omitida ? "RAISE(IGNORE)" : "RAISE(ABORT, 'falla')") + "; END"};
    }
    QStringList SinFalla() const override { return {"DROP TRIGGER IF EXISTS falla"}; }
    QStringList Ocupacion() const override { return {"BEGIN EXCLUSIVE"}; }
    // A reader holds the commit back.
    QStringList SinConfirmacion() const override { return {"BEGIN", "SELECT count(*) FROM Producto"}; }
    QStringList Examen(const QString &sql) const override { return {"EXPLAIN QUERY PLAN " + sql}; }

private:
    QTemporaryDir carpeta;
    QString archivo;
};

// The server that tools/con_servidor runs. A database is a copy of a template, which is made once.
class DelServidor : public Motor
{
public:
    explicit DelServidor(bool conEjemplos) : nombre(cluster::NombreNuevo("prueba"))
    {
        const auto servidor = Super("postgres");
        const QString plantilla = conEjemplos ? "quorvex_ejemplos" : "quorvex_vacia";
        servidor->Correr("SELECT pg_advisory_lock(1)");
        if (!servidor->Correr("SELECT 1 FROM pg_database WHERE datname = '" + plantilla + "'").next())
            HacerPlantilla(*servidor, plantilla, conEjemplos);
        servidor->Correr("SELECT pg_advisory_unlock(1)");
        servidor->Correr("CREATE DATABASE " + nombre + " TEMPLATE " + plantilla);
    }
    explicit DelServidor(const QString &ajena) : nombre(ajena), propia(false) {}
    ~DelServidor() override
    {
        if (propia)
            Super("postgres")->Correr("DROP DATABASE " + nombre + " WITH (FORCE)");
    }

    // By the port of a test that stands in between, where there is one.
    std::unique_ptr<qvx::Conexion> Abrir() const override
    {
        const QString puerto = qEnvironmentVariable("QVX_PRUEBA_INTERMEDIARIO");
        return qvx::AbrirServidor(qvx::Servidor(
            puerto.isEmpty() ? cluster::Direccion("mlopez", nombre)
                             : QString("postgresql://mlopez@127.0.0.1:%1/%2?sslmode=disable").arg(puerto, nombre)));
    }
    std::unique_ptr<OtroPrograma> Otro() const override { return Super(nombre); }
    QStringList Argumentos() const override { return {"--servidor", cluster::Direccion("mlopez", nombre)}; }
    bool EsPostgres() const override { return true; }

    QStringList Falla(const QString &cuando, const QString &suceso, const QString &condicion,
                      bool omitida) const override
    {
        const QString accion = omitida ? "RETURN NULL" : "RAISE EXCEPTION 'falla'";
        return {Funcion(condicion.isEmpty() ? accion : "IF " + condicion + " THEN " + accion + "; END IF"),
                "CREATE TRIGGER falla " + cuando + " " + suceso + " FOR EACH ROW EXECUTE FUNCTION falla()"};
    }
    QStringList SinFalla() const override { return {"DROP FUNCTION IF EXISTS falla CASCADE"}; }
    QStringList Ocupacion() const override
    {
        return {"BEGIN", "SELECT pg_advisory_xact_lock(580, hashtext(Te_Cve_Tipo_Equipo)) FROM Tipo_Equipo"};
    }
    QStringList SinConfirmacion() const override
    {
        QStringList sentencias{Funcion("RAISE EXCEPTION 'falla'")};
        for (const char *tabla : {"Tipo_Equipo_Parte", "Plan_Mantenimiento", "Plan_Mantenimiento_Detalle"})
            sentencias.append(QString("CREATE CONSTRAINT TRIGGER falla AFTER INSERT OR UPDATE OR DELETE ON %1 "
                                      "DEFERRABLE INITIALLY DEFERRED FOR EACH ROW EXECUTE FUNCTION falla()")
                                  .arg(tabla));
        return sentencias;
    }
    QStringList Examen(const QString &sql) const override
    {
        return {"SET enable_seqscan = off", "EXPLAIN (COSTS OFF) " + sql};
    }

private:
    static std::unique_ptr<OtroPrograma> Super(const QString &base)
    {
        const qvx::Servidor servidor(cluster::Direccion("postgres", base));
        return Conectar("QPSQL", [&](QSqlDatabase &b) { servidor.Preparar(b); });
    }
    static void HacerPlantilla(const OtroPrograma &servidor, const QString &plantilla, bool conEjemplos)
    {
        servidor.Correr("DROP DATABASE IF EXISTS en_obra");
        servidor.Correr("CREATE DATABASE en_obra");
        qvx::CrearEsquema(qvx::Servidor(cluster::Direccion("postgres", "en_obra")), conEjemplos);
        servidor.Correr("ALTER DATABASE en_obra RENAME TO " + plantilla);
        servidor.Correr("DO $$ BEGIN CREATE ROLE mlopez LOGIN IN ROLE quorvex_planificadores; "
                        "EXCEPTION WHEN duplicate_object THEN NULL; END $$");
    }
    // Reads what the planner must not.
    static QString Funcion(const QString &cuerpo)
    {
        return "CREATE FUNCTION falla() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER AS $$ BEGIN " + cuerpo
               + "; IF TG_OP = 'DELETE' THEN RETURN OLD; END IF; RETURN NEW; END $$";
    }

    QString nombre;
    bool propia = true;
};

} // namespace

bool Motor::EnServidor()
{
    return qEnvironmentVariable("QVX_PRUEBA_MOTOR") == "postgres";
}

std::unique_ptr<Motor> Motor::Nuevo(bool conEjemplos)
{
    if (EnServidor())
        return std::make_unique<DelServidor>(conEjemplos);
    return std::make_unique<EnArchivo>(conEjemplos);
}

std::unique_ptr<Motor> Motor::DeArchivo(const QString &archivo)
{
    if (EnServidor())
        return std::make_unique<DelServidor>(archivo);
    return std::make_unique<EnArchivo>(archivo);
}
