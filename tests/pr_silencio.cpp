#include "data/ErrorEjecucion.h"
#include "data/Servidor.h"
#include "plan/EsquemaServidor.h"
#include "support/Cluster.h"
#include "support/Escenario.h"
#include "support/Intermediario.h"

#include <QElapsedTimer>
#include <csignal>

using qvx::ErrorEjecucion;

// A server that stops answering: every wait ends, what is told is true, and the next command finds a new connection.
class PrSilencio : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("QVX_PRUEBA_MOTOR", "postgres"); }
    void direcciones();
    void detenido();
    void detenidoAlConfirmar();
    void callado();
};

namespace
{

const QString Cambio = "UPDATE Unidad SET Un_Descripcion = 'OTRA' WHERE Un_Cve_Unidad = 'HRS'";
const QString Ver = "SELECT Un_Descripcion FROM Unidad WHERE Un_Cve_Unidad = 'HRS'";
const QString Vivos = "SELECT COUNT(*) FROM pg_stat_activity WHERE ";
constexpr int Pronto = 8000; // ms; a wait without a deadline goes on past it
constexpr int Enseguida = 500;
constexpr int Tregua = 1100;

void Sembrar(const BaseDePrueba &base)
{
    base.Otro()->Correr(
        "INSERT INTO Unidad (Un_Cve_Unidad, Un_Descripcion, Es_Cve_Estado) VALUES ('HRS', 'HORAS', 'AC')");
}

// What a step ends with, "" when it is done; one that takes too long is told as that.
QString Dicho(const std::function<void()> &paso, int limite = Pronto)
{
    QElapsedTimer reloj;
    reloj.start();
    QString dicho;
    try {
        paso();
    } catch (const ErrorEjecucion &error) {
        dicho = error.Descripcion();
    }
    return reloj.elapsed() < limite ? dicho : "TARDE: " + dicho;
}

} // namespace

void PrSilencio::direcciones()
{
    for (const char *mala : {"espera=0", "sslmode=disable&espera=3601", "espera=x", "espera="})
        QVERIFY_THROWS_EXCEPTION(ErrorEjecucion, qvx::Servidor("postgresql://u@h/b?" + QString(mala)));
    QCOMPARE(qvx::Servidor("postgresql://u@h/b?espera=5&port=77").Equipo(), "h:77");
    QCOMPARE(qvx::Servidor("postgresql://u@h/b?port=77&espera=5").Equipo(), "h:77");
}

// The server's process for the connection hangs, in the middle of a transaction that holds locks.
void PrSilencio::detenido()
{
    const BaseDePrueba base(false);
    Sembrar(base);
    const auto otro = base.Otro();
    const auto conexion =
        qvx::AbrirServidor(qvx::Servidor(cluster::Direccion("postgres", base.Archivo(), {}, "?espera=1")));
    const auto pid = static_cast<pid_t>(conexion->Execute("SELECT pg_backend_pid() AS Pid", {}).Numero("Pid"));
    conexion->BeginTrans();
    conexion->Execute(Cambio, {});
    QCOMPARE(kill(pid, SIGSTOP), 0);
    const QString dicho = Dicho([&] { conexion->Execute(Ver, {}); });
    QVERIFY2(dicho.startsWith("Se perdió la conexión con el servidor: no se guardó nada. (El servidor no responde: no "
                              "contestó en 1 segundo."),
             qPrintable(dicho));
    conexion->RollbackTrans();
    QTest::qWait(Tregua);
    QCOMPARE(Dicho([&] { conexion->Execute(Ver, {}); }), "");
    kill(pid, SIGCONT);
    // Its locks are gone with it, and nothing was saved.
    const auto vive = [&](const QString &cual) { return otro->Filas(Vivos + cual).constFirst(); };
    QTRY_COMPARE(vive("pid = " + QString::number(pid)), "0");
    QCOMPARE(otro->Filas(Ver).constFirst(), "HORAS");
    QCOMPARE(Dicho([&] { conexion->Execute(Cambio, {}); }), "");
    // What the server was busy with is given up there too.
    QVERIFY(Dicho([&] { conexion->Execute("SELECT CAST(pg_sleep(60) AS text) AS Nada", {}); }).contains("no responde"));
    QTRY_COMPARE(vive("query LIKE '%pg_sleep(60)%' AND pid <> pg_backend_pid()"), "0");
}

// The server's process hangs before it comes to the commit: what is told stays true when it goes on.
void PrSilencio::detenidoAlConfirmar()
{
    const BaseDePrueba base(false);
    Sembrar(base);
    const auto otro = base.Otro();
    const auto conexion =
        qvx::AbrirServidor(qvx::Servidor(cluster::Direccion("postgres", base.Archivo(), {}, "?espera=1")));
    const auto pid = static_cast<pid_t>(conexion->Execute("SELECT pg_backend_pid() AS Pid", {}).Numero("Pid"));
    conexion->BeginTrans();
    conexion->Execute(Cambio, {});
    QCOMPARE(kill(pid, SIGSTOP), 0);
    const QString dicho = Dicho([&] { conexion->CommitTrans(); });
    kill(pid, SIGCONT);
    QVERIFY2(dicho.startsWith("Se perdió la conexión con el servidor: no se guardó nada. (El servidor no responde"),
             qPrintable(dicho));
    QTRY_COMPARE(otro->Filas(Vivos + "pid = " + QString::number(pid)).constFirst(), "0");
    QCOMPARE(otro->Filas(Ver).constFirst(), "HORAS");
}

// The way to the server falls silent, and nobody notices: no connection ends.
void PrSilencio::callado()
{
    const BaseDePrueba base(false);
    Sembrar(base);
    Intermediario intermediario;
    const auto conexion = qvx::AbrirServidor(
        qvx::Servidor(intermediario.Direccion("postgres", base.Archivo(), "espera=1&connect_timeout=2")));
    conexion->BeginTrans();
    conexion->Execute(Cambio, {});
    intermediario.Callar(true);
    const QString alConfirmar = Dicho([&] { conexion->CommitTrans(); });
    QVERIFY2(alConfirmar.contains("no se sabe si el cambio quedó guardado") && alConfirmar.contains("no responde"),
             qPrintable(alConfirmar));
    conexion->RollbackTrans();
    // What follows in the same procedure does not wait again; the next command does.
    const auto enseguida = [&] { return Dicho([&] { conexion->Execute(Ver, {}); }, Enseguida); };
    QCOMPARE(enseguida(), "No hay conexión con la base de datos: El servidor no responde.");
    QTest::qWait(Tregua);
    const QString sinEntrada = Dicho([&] { conexion->Execute(Ver, {}); });
    QVERIFY2(sinEntrada.startsWith("No hay conexión con la base de datos: El servidor no responde: no dio entrada en"),
             qPrintable(sinEntrada));
    QCOMPARE(enseguida(), "No hay conexión con la base de datos: El servidor no responde.");
    QTest::qWait(Tregua);
    intermediario.Callar(false);
    QCOMPARE(Dicho([&] { conexion->Execute(Ver, {}); }), "");
}

PRUEBA(PrSilencio)
#include "pr_silencio.moc"
