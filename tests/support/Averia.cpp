#include "support/Averia.h"

#include "support/Cluster.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <sys/socket.h>
#include <sys/un.h>

namespace
{

// A trigger named falla. On the server it is a function's, which may do what the planner must not.
QStringList Disparador(const QString &cuando, const QString &suceso, const QString &accion)
{
    return {"CREATE FUNCTION falla() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER AS $$ BEGIN " + accion
                + "; IF TG_OP = 'DELETE' THEN RETURN OLD; END IF; RETURN NEW; END $$",
            "CREATE " + cuando + suceso + " FOR EACH ROW EXECUTE FUNCTION falla()"};
}

QStringList Diferido(const QString &suceso, const QString &accion)
{
    return Disparador("CONSTRAINT TRIGGER falla AFTER ", suceso + " DEFERRABLE INITIALLY DEFERRED", accion);
}

QStringList DelSuceso(const QString &nombre)
{
    const QString suceso = nombre.section(" WHEN ", 0, 0);
    const QString condicion = nombre.contains(" WHEN ") ? nombre.section(" WHEN ", 1) : "1 = 1";
    if (motor::EsPostgres())
        return Disparador("TRIGGER falla BEFORE ", suceso, "IF " + condicion + " THEN RAISE EXCEPTION 'falla'; END IF");
    return {"CREATE TRIGGER falla BEFORE " + suceso + " WHEN " + condicion
            + " BEGIN SELECT RAISE(ABORT, 'falla'); END"};
}

QStringList Sentencias(const QString &nombre)
{
    if (nombre == "ocupada")
        return motor::EsPostgres()
                   ? QStringList{"BEGIN", "SELECT Reservar_Plan(Te_Cve_Tipo_Equipo, true) FROM Tipo_Equipo"}
                   : QStringList{"BEGIN IMMEDIATE"};
    if (nombre == "confirmación") // on the embedded engine a reader holds the commit back
        return motor::EsPostgres() ? Diferido("INSERT ON Plan_Mantenimiento_Detalle", "RAISE EXCEPTION 'falla'")
                                   : QStringList{"BEGIN", "SELECT count(*) FROM Producto"};
    return DelSuceso(nombre);
}

void Reiniciar()
{
    if (QProcess::execute(qEnvironmentVariable("QVX_PRUEBA_SERVIDOR") + "/reiniciar", {}) != 0)
        qFatal("El servidor no se reinició");
}

// The network's cut, which the application learns of before the server does.
void Cortar(const QString &proceso)
{
    for (int enchufe = 3; enchufe < 256; ++enchufe) {
        sockaddr_un servidor{};
        socklen_t tamano = sizeof servidor;
        if (getpeername(enchufe, reinterpret_cast<sockaddr *>(&servidor), &tamano) == 0
            && QByteArray(servidor.sun_path).contains(".s.PGSQL."))
            shutdown(enchufe, SHUT_RDWR);
    }
    cluster::Super("SELECT pg_terminate_backend(" + proceso + ", 5000)");
}

// Waits until the server stops in the middle of the planner's command, and ends it.
void Vigilar(bool reinicio)
{
    QString proceso;
    for (const QDeadlineTimer fin(20000); proceso.isEmpty(); QThread::msleep(10)) {
        proceso = cluster::Super("SELECT pid FROM pg_stat_activity WHERE usename = 'mlopez' AND wait_event IN "
                                 "('PgSleep', 'SyncRep')");
        if (fin.hasExpired())
            qFatal("La falla no ocurrió");
    }
    if (reinicio)
        Reiniciar();
    else
        Cortar(proceso);
}

} // namespace

Averia::Averia(const Escenario &escenario_, const QString &nombre, const QString &ultimo) : escenario(escenario_)
{
    if (!ultimo.isEmpty()) {
        Caer(nombre, ultimo);
    } else if (nombre == "disco") {
        disco = std::make_unique<DiscoLleno>();
    } else {
        otro = escenario.Base().Otro();
        for (const QString &sentencia : Sentencias(nombre))
            otro->Correr(sentencia).next();
    }
}

Averia::~Averia()
{
    if (vigia.joinable())
        vigia.join();
}

void Averia::Caer(const QString &nombre, const QString &ultimo)
{
    if (nombre == "reinicio en reposo")
        return Reiniciar();
    if (nombre == "ausente") {
        cluster::Super("ALTER ROLE mlopez NOLOGIN");
        cluster::Super("SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE usename = 'mlopez'");
        return;
    }
    // A commit that asks for it waits for another server, which there is not.
    QStringList sentencias = Disparador("TRIGGER falla AFTER ", ultimo, "PERFORM pg_sleep(60)");
    if (nombre == "antes de confirmar")
        sentencias = Diferido(ultimo, "PERFORM pg_sleep(60)");
    if (nombre == "al confirmar")
        sentencias = Disparador("TRIGGER falla AFTER ", ultimo, "SET LOCAL synchronous_commit = on");
    for (const QString &sentencia : sentencias)
        escenario.Correr(sentencia);
    vigia = std::thread(Vigilar, nombre.startsWith("reinicio"));
}

void Averia::Reparar()
{
    if (vigia.joinable())
        vigia.join();
    disco.reset();
    otro.reset();
    escenario.Correr(motor::Segun("DROP TRIGGER IF EXISTS falla", "DROP FUNCTION IF EXISTS falla CASCADE"));
    if (motor::EsPostgres())
        cluster::Super("ALTER ROLE mlopez LOGIN");
}
