#include "data/ErrorEjecucion.h"
#include "plan/EsquemaServidor.h"
#include "support/Cluster.h"
#include "support/Escenario.h"
#include "support/Intermediario.h"
#include "support/Tabla.h"

#include <QProcess>
#include <csignal>

using qvx::ErrorEjecucion;

// The server is killed and the copy that follows it takes its place: what was told of a change is the truth there.
class PrRelevo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void relevo_data();
    void relevo();
    void sinReplica();
    void cleanup();

private:
    void Copiar(bool sincrona);
    void IniciarReplica() const;
    static void PararReplica();
    void Vigilar(const QString &cuando) const;
    void Relevar(bool parada = false) const;

    std::unique_ptr<BaseDePrueba> base;
    std::unique_ptr<Intermediario> intermediario; // before the server that is killed
    QString puertoDeReplica;
};

namespace
{

const QString Descrita = "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = '%1', Oper_Ult_Modif = 'mlopez', "
                         "Fecha_Ult_Modif = '20260101' WHERE Te_Cve_Tipo_Equipo = '0001' AND Tep_ID = '0001'";
const QString Descripcion =
    "SELECT Tep_Descripcion FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0001' AND Tep_ID = '0001'";
const QStringList CommitLento{
    "CREATE FUNCTION falla() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN PERFORM pg_sleep(60); RETURN NEW; END $$",
    "CREATE CONSTRAINT TRIGGER falla AFTER UPDATE ON Tipo_Equipo_Parte DEFERRABLE INITIALLY DEFERRED FOR EACH ROW "
    "EXECUTE FUNCTION falla()"};
const QString NadaGuardado = "Se perdió la conexión con el servidor: no se guardó nada. (";

QString EnCluster(const QString &archivo)
{
    return qEnvironmentVariable("QVX_PRUEBA_SERVIDOR") + '/' + archivo;
}

// One of the server's programs.
bool Intentar(const QString &programa, const QStringList &orden = {})
{
    QProcess proceso;
    proceso.start(EnCluster(programa), orden);
    return proceso.waitForFinished() && proceso.exitCode() == 0;
}

void Ejecutar(const QStringList &orden)
{
    if (!Intentar("ejecutar", orden))
        qFatal("%s", qPrintable(orden.join(' ')));
}

QString Codificado(const QString &carpeta)
{
    return QString(carpeta).replace('/', "%2F");
}

// What a step ends with, "" when it is done.
QString LoDicho(const std::function<void()> &paso)
{
    try {
        paso();
        return {};
    } catch (const ErrorEjecucion &error) {
        return error.Descripcion();
    }
}

} // namespace

void PrRelevo::initTestCase()
{
    qputenv("QVX_PRUEBA_MOTOR", "postgres");
    puertoDeReplica = QString::number(qEnvironmentVariableIntValue("QVX_PRUEBA_PUERTO") + 1);
}

// Of the server as it is now, followed from now on.
void PrRelevo::Copiar(bool sincrona)
{
    Ejecutar({"pg_basebackup", "-h", EnCluster(""), "-p", qEnvironmentVariable("QVX_PRUEBA_PUERTO"), "-U", "postgres",
              "-D", EnCluster("replica"), "-R", "-X", "stream", "-c", "fast", "--no-sync"});
    IniciarReplica();
    cluster::Super(QString("ALTER SYSTEM SET synchronous_standby_names = '%1'").arg(sincrona ? "*" : ""));
    cluster::Super("SELECT pg_reload_conf()");
    QTRY_COMPARE(cluster::Super("SELECT count(*) FROM pg_stat_replication WHERE sync_state = '"
                                + QString(sincrona ? "sync" : "async") + "' AND state = 'streaming'"),
                 "1");
}

void PrRelevo::IniciarReplica() const
{
    Ejecutar({"pg_ctl", "-D", EnCluster("replica"), "-s", "-w", "-l", EnCluster("replica.log"), "-o",
              "-p " + puertoDeReplica + " -k " + EnCluster("") + " -c listen_addresses= -c fsync=off", "start"});
}

void PrRelevo::relevo_data()
{
    const Tabla<QString, bool, QString, QString> fila("cuando", "sincrona", "dicho", "queda");
    fila("en reposo", "en reposo", false, "", "DESPUÉS");
    fila("antes de confirmar", "antes de confirmar", true, NadaGuardado, "ANTES");
    fila("al confirmar", "al confirmar", true, NadaGuardado, "ANTES");
    fila("respuesta perdida", "respuesta perdida", true, "AVISO: el cambio quedó guardado.", "DESPUÉS");
    // The copy does not get the change: what was saved on the server that is gone was not.
    fila("respuesta y cambio perdidos", "cambio perdido", false, NadaGuardado, "ANTES");
}

void PrRelevo::relevo()
{
    QFETCH(QString, cuando);
    QFETCH(bool, sincrona);
    QFETCH(QString, dicho);
    QFETCH(QString, queda);
    base = std::make_unique<BaseDePrueba>(true);
    base->Otro()->Correr(Descrita.arg("ANTES"));
    if (cuando == "al confirmar")
        for (const QString &sentencia : CommitLento)
            base->Otro()->Correr(sentencia);
    Copiar(sincrona);
    intermediario = std::make_unique<Intermediario>();
    const QString direccion =
        QString("postgresql://mlopez@127.0.0.1:%1,%2:%3/%4?espera=15&sslmode=disable&gssencmode=disable")
            .arg(QString::number(intermediario->Puerto()), Codificado(EnCluster("")), puertoDeReplica, base->Archivo());
    const auto conexion = qvx::AbrirServidor(qvx::Servidor(direccion));
    QString aviso;
    conexion->AlAvisar([&](const QString &texto) { aviso = texto; });
    QCOMPARE(conexion->Execute(Descripcion)["Tep_Descripcion"], "ANTES");
    std::thread vigia;
    if (cuando == "en reposo")
        Relevar();
    const QString visto = LoDicho([&] {
        conexion->BeginTrans();
        conexion->Execute(Descrita.arg("DESPUÉS"));
        if (cuando == "antes de confirmar")
            Relevar();
        if (cuando == "cambio perdido")
            PararReplica();
        if (cuando.endsWith("perdida") || cuando.endsWith("perdido"))
            intermediario->PerderConfirmaciones();
        if (!cuando.startsWith("en ") && !cuando.startsWith("antes "))
            vigia = std::thread([&] { Vigilar(cuando); });
        conexion->CommitTrans();
    });
    if (vigia.joinable())
        vigia.join();
    conexion->RollbackTrans();
    const bool avisado = dicho.startsWith("AVISO: ");
    QVERIFY2(aviso.isEmpty() != avisado && visto.isEmpty() == (avisado || dicho.isEmpty())
                 && (aviso + visto).contains(avisado ? dicho.mid(7) : dicho),
             qPrintable(visto + aviso));
    QCOMPARE(LoDicho([&] { QCOMPARE(conexion->Execute(Descripcion)["Tep_Descripcion"], queda); }), "");
}

// Until the commit has come so far; then the other server takes over.
void PrRelevo::Vigilar(const QString &cuando) const
{
    const QString hecho = cuando == "al confirmar"
                              ? "SELECT count(*) FROM pg_stat_activity WHERE wait_event = 'PgSleep'"
                              : "SELECT count(*) FROM dbo.Tipo_Equipo_Parte WHERE Tep_Descripcion = 'DESPUÉS'";
    for (int i = 0; i < 500 && cluster::Correr("postgres", base->Archivo(), hecho) == "0"; ++i)
        QThread::msleep(10);
    Relevar(cuando == "cambio perdido");
}

void PrRelevo::Relevar(bool parada) const
{
    intermediario->NoRecibir();
    Ejecutar({"pg_ctl", "-D", EnCluster("datos"), "-s", "-m", "immediate", "stop"});
    if (parada)
        IniciarReplica();
    Ejecutar({"pg_ctl", "-D", EnCluster("replica"), "-s", "-w", "promote"});
}

void PrRelevo::PararReplica()
{
    Intentar("ejecutar", {"pg_ctl", "-D", EnCluster("replica"), "-s", "-m", "immediate", "stop"});
}

// The server waits for a copy that is not there until somebody ends the waiting: saved here, and told as that. Who only
// looks changes nothing.
void PrRelevo::sinReplica()
{
    base = std::make_unique<BaseDePrueba>(true);
    Copiar(true);
    const QString lugares = Codificado(EnCluster(""));
    const QString direccion =
        QString("postgresql://mlopez@%1:%2,%1:%3/%4")
            .arg(lugares, qEnvironmentVariable("QVX_PRUEBA_PUERTO"), puertoDeReplica, base->Archivo());
    const qvx::Servidor servidor(direccion);
    const auto mira = qvx::AbrirServidor(servidor.DeSoloLectura());
    QVERIFY(mira->SoloLectura());
    QCOMPARE(mira->Execute("SELECT CAST(pg_is_in_recovery() AS integer) AS Copia", {})["Copia"], "1");
    for (const auto &paso : std::initializer_list<std::function<void()>>{[&] { mira->BeginTrans(); },
                                                                         [&] { mira->Execute(Descrita.arg("NADIE")); }})
        QVERIFY(LoDicho(paso).startsWith("Aquí solo se puede mirar"));
    const auto conexion = qvx::AbrirServidor(servidor);
    QVERIFY(!conexion->SoloLectura());
    QString aviso;
    conexion->AlAvisar([&](const QString &texto) { aviso = texto; });
    PararReplica();
    std::thread otro([] {
        const QString esperan =
            "SELECT count(pg_cancel_backend(pid)) FROM pg_stat_activity WHERE wait_event = 'SyncRep'";
        for (int i = 0; i < 500 && cluster::Super(esperan) == "0"; ++i)
            QThread::msleep(10);
    });
    conexion->BeginTrans();
    conexion->Execute(Descrita.arg("AQUÍ"));
    conexion->CommitTrans();
    otro.join();
    QVERIFY2(aviso.contains("pero no se sabe que su réplica lo tenga, si la hay"), qPrintable(aviso));
    QCOMPARE(conexion->Execute(Descripcion)["Tep_Descripcion"], "AQUÍ");
}

void PrRelevo::cleanup()
{
    intermediario.reset();
    PararReplica();
    QDir(EnCluster("replica")).removeRecursively();
    QVERIFY(Intentar("reiniciar"));
    cluster::Super("ALTER SYSTEM RESET synchronous_standby_names");
    cluster::Super("SELECT pg_reload_conf()");
    base.reset();
}

PRUEBA(PrRelevo)
#include "pr_relevo.moc"
