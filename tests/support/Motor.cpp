#include "support/Motor.h"

#include "data/BaseAbierta.h"
#include "data/ErrorEjecucion.h"
#include "data/Instalador.h"
#include "data/Servidor.h"

#include <QSqlError>
#include <QTemporaryDir>
#include <QUuid>

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
    QString Lugar() const override { return archivo; }
    QString Archivo() const override { return archivo; }

    QStringList Falla(const QString &cuando, const QString &suceso, const QString &condicion) const override
    {
        return {Disparador(cuando, suceso, condicion, "RAISE(ABORT, 'falla')")};
    }
    QStringList Omision(const QString &suceso) const override
    {
        return {Disparador("BEFORE", suceso, {}, "RAISE(IGNORE)")};
    }
    QStringList SinFalla() const override { return {"DROP TRIGGER IF EXISTS falla"}; }
    QStringList Detencion(const QString &suceso) const override
    {
        QStringList productos; // so many rows that counting them does not end
        for (char alias = 'a'; alias <= 'j'; ++alias)
            productos.append(QString("Producto ") + QLatin1Char(alias));
        return {Disparador("BEFORE", suceso, {}, "count(*) FROM " + productos.join(", "))};
    }
    QStringList Ocupacion() const override { return {"BEGIN EXCLUSIVE"}; }
    QStringList Lectura() const override { return {"BEGIN", "SELECT count(*) FROM Producto"}; }
    // A reader holds the commit back.
    QStringList SinConfirmacion() const override { return Lectura(); }
    QStringList Examen(const QString &sql) const override { return {"EXPLAIN QUERY PLAN " + sql}; }

private:
    static QString Disparador(const QString &cuando, const QString &suceso, const QString &condicion,
                              const QString &accion)
    {
        const QString filtro = condicion.isEmpty() ? QString() : " WHEN " + condicion;
        return "CREATE TRIGGER falla " + cuando + " " + suceso + filtro + " BEGIN SELECT " + accion + "; END";
    }

    QTemporaryDir carpeta;
    QString archivo;
};

// The server that tools/con_servidor runs. A database is a copy of a template, which is made once.
class DelServidor : public Motor
{
public:
    explicit DelServidor(bool conEjemplos) : nombre("prueba_" + QUuid::createUuid().toString(QUuid::Id128))
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
            puerto.isEmpty() ? Direccion("mlopez", nombre)
                             : QString("postgresql://mlopez@127.0.0.1:%1/%2?sslmode=disable").arg(puerto, nombre)));
    }
    std::unique_ptr<OtroPrograma> Otro() const override { return Super(nombre); }
    QStringList Argumentos() const override { return {"--servidor", Direccion("mlopez", nombre)}; }
    bool EsPostgres() const override { return true; }
    QString Lugar() const override { return nombre; }

    QStringList Falla(const QString &cuando, const QString &suceso, const QString &condicion) const override
    {
        return Disparador(cuando, suceso, condicion, "RAISE EXCEPTION 'falla'");
    }
    QStringList Omision(const QString &suceso) const override
    {
        return Disparador("BEFORE", suceso, {}, "RETURN NULL");
    }
    QStringList SinFalla() const override { return {"DROP FUNCTION IF EXISTS falla CASCADE"}; }
    QStringList Detencion(const QString &suceso) const override
    {
        return Disparador("BEFORE", suceso, {}, "PERFORM pg_advisory_xact_lock(1)")
               + QStringList{"SELECT pg_advisory_lock(1)"};
    }
    QStringList Ocupacion() const override
    {
        return {"BEGIN", "SELECT pg_advisory_xact_lock(580, hashtext(Te_Cve_Tipo_Equipo)) FROM Tipo_Equipo"};
    }
    QStringList Lectura() const override { return {"BEGIN", "SELECT count(*) FROM Producto"}; }
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
    static QString Carpeta()
    {
        const QString carpeta = qEnvironmentVariable("QVX_PRUEBA_SERVIDOR");
        if (carpeta.isEmpty())
            qFatal("Sin servidor de pruebas: esta prueba corre dentro de tools/con_servidor");
        return carpeta;
    }
    static QString Direccion(const QString &usuario, const QString &base)
    {
        return QString("postgresql://%1@%2:%3/%4")
            .arg(usuario, Carpeta().replace(QLatin1Char('/'), "%2F"), qEnvironmentVariable("QVX_PRUEBA_PUERTO"), base);
    }
    static std::unique_ptr<OtroPrograma> Super(const QString &base)
    {
        const qvx::Servidor servidor(Direccion("postgres", base));
        return Conectar("QPSQL", [&](QSqlDatabase &b) { servidor.Preparar(b); });
    }
    static void HacerPlantilla(const OtroPrograma &servidor, const QString &plantilla, bool conEjemplos)
    {
        servidor.Correr("DROP DATABASE IF EXISTS en_obra");
        servidor.Correr("CREATE DATABASE en_obra");
        qvx::CrearEsquema(qvx::Servidor(Direccion("postgres", "en_obra")), conEjemplos);
        servidor.Correr("ALTER DATABASE en_obra RENAME TO " + plantilla);
        servidor.Correr("DO $$ BEGIN CREATE ROLE mlopez LOGIN IN ROLE quorvex_planificadores; "
                        "EXCEPTION WHEN duplicate_object THEN NULL; END $$");
    }
    static QStringList Disparador(const QString &cuando, const QString &suceso, const QString &condicion,
                                  const QString &accion)
    {
        const QString cuerpo = condicion.isEmpty() ? accion : "IF " + condicion + " THEN " + accion + "; END IF";
        return {Funcion(cuerpo),
                "CREATE TRIGGER falla " + cuando + " " + suceso + " FOR EACH ROW EXECUTE FUNCTION falla()"};
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
