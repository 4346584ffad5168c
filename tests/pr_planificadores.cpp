#include "Jornada.h"
#include "support/Planificador.h"
#include "support/Procesos.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTextStream>

// Many planners on one server at the same time, each with a screen in a process of its own.
class PrPlanificadores : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("QVX_PRUEBA_MOTOR", "postgres"); }
    void init();
    void cleanup() { escenario.reset(); }
    void carga();
    void guardados();

private:
    // What so many processes of this program print.
    QStringList Correr(int cuantos, const QString &orden);

    std::unique_ptr<Escenario> escenario;
};

void PrPlanificadores::init()
{
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    escenario->Correr(
        "INSERT INTO Tipo_Equipo SELECT CAST(t AS text), 'DE CARGA', 'AC' FROM (SELECT 1000 AS t UNION ALL "
        "SELECT 100 * s + n FROM generate_series(11, 13) s, generate_series(0, 7) n) todos");
    escenario->Correr("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) SELECT "
                      "Te_Cve_Tipo_Equipo, '000' || n, '0000', 'PARTE ' || n FROM Tipo_Equipo, generate_series(1, 3) n "
                      "WHERE Te_Descripcion = 'DE CARGA' AND Te_Cve_Tipo_Equipo < '1200'");
}

// They begin together, as soon as all are ready.
QStringList PrPlanificadores::Correr(int cuantos, const QString &orden)
{
    const QString base = escenario->Base().Argumentos().constLast().section(QLatin1Char('/'), -1);
    const QString seguir = escenario->Ruta(orden + QString::number(cuantos));
    const auto listo = [&](int i) { return seguir + "-" + QString::number(i); };
    std::vector<QProcess> hijos(static_cast<std::size_t>(cuantos));
    for (int i = 0; i < cuantos; ++i)
        hijos[static_cast<std::size_t>(i)].start(QCoreApplication::applicationFilePath(),
                                                 {orden, base, QString::number(i), listo(i), seguir});
    for (int i = 0; i < cuantos; ++i)
        if (!QTest::qWaitFor([&] { return QFile::exists(listo(i)); }, 120000))
            qFatal("Un planificador no empezó");
    if (!QFile(seguir).open(QIODevice::WriteOnly))
        qFatal("No se pudo hacer %s", qPrintable(seguir));
    QStringList dichos;
    for (QProcess &hijo : hijos) {
        if (hijo.state() != QProcess::NotRunning && !hijo.waitForFinished(1000 * Segundos() + 60000))
            qFatal("Un planificador no terminó");
        if (hijo.exitStatus() != QProcess::NormalExit || hijo.exitCode() != 0)
            qFatal("Un planificador falló: %s", hijo.readAllStandardError().constData());
        dichos.append(QString::fromUtf8(hijo.readAllStandardOutput()));
    }
    return dichos;
}

// What each planner was told to be saved is there, and the plans are whole.
void PrPlanificadores::carga()
{
    QCOMPARE(Correr(Planificadores, "--planificador").join(QString()), "");
    QVERIFY(escenario->Correr("SELECT count(*) FROM Plan_Mantenimiento").toInt() > Planificadores);
    for (const char *sql :
         {"SELECT 'parte', Te_Cve_Tipo_Equipo, Tep_Numero FROM Tipo_Equipo_Parte GROUP BY 1, 2, 3 HAVING count(*) > 1",
          "SELECT 'servicio', Te_Cve_Tipo_Equipo, Pm_Numero FROM Plan_Mantenimiento GROUP BY 1, 2, 3 HAVING count(*) "
          "> 1",
          // Those of an import are numbered within their service.
          "SELECT 'renglón', Te_Cve_Tipo_Equipo, Pmd_Numero FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo "
          "BETWEEN '1000' AND '1299' GROUP BY 1, 2, 3 HAVING count(*) > 1",
          "SELECT 'renglón sin servicio', d.* FROM Plan_Mantenimiento_Detalle d LEFT JOIN Plan_Mantenimiento s USING "
          "(Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID) WHERE s.Pm_ID IS NULL",
          "SELECT 'servicio sin parte', s.* FROM Plan_Mantenimiento s LEFT JOIN Tipo_Equipo_Parte p USING "
          "(Te_Cve_Tipo_Equipo, Tep_ID) WHERE p.Tep_ID IS NULL"})
        QCOMPARE(escenario->Filas(sql).join('\n'), "");
    AnotarResultado({"carga", QString::number(Segundos()), QString::number(Planificadores)});
}

namespace
{

// Changes a service on the screen, and then repeats that save's statements as fast as the server takes them.
int RepetirGuardado(const QStringList &argumentos)
{
    Escenario escenario(argumentos.at(0));
    escenario.Pantalla(QString::number(Propios + argumentos.at(1).toInt()));
    Planificador planificador(&escenario);
    const QString folio = planificador.NuevoServicio("N0001", "70");
    if (planificador.CambiarServicio("N0001", folio, "71").isEmpty())
        return 1;
    const QStringList renglones = escenario.Traza(true);
    const auto inicio = renglones.lastIndexOf("-\tBEGIN");
    const QStringList guardado = renglones.mid(inicio + 1, renglones.lastIndexOf("-\tCOMMIT") - inicio - 1);
    auto &conexion = qvx::Sesion::Actual().Conexion();
    Encontrarse(argumentos.at(2), argumentos.at(3));
    int veces = 0;
    for (const QDeadlineTimer fin(500LL * Segundos()); !fin.hasExpired(); ++veces) {
        conexion.BeginTrans();
        for (const QString &renglon : guardado)
            conexion.Execute(renglon.section('\t', 1));
        conexion.CommitTrans();
    }
    QTextStream(stdout) << "guardados " << veces << ' ' << guardado.size() + 2 << Qt::endl;
    return 0;
}

} // namespace

// How many saves the server takes: the statements of a service's save, from one planner, and from all of them without a
// pause, each on an equipment type of their own. Every one is registered.
void PrPlanificadores::guardados()
{
    for (const int cuantos : {1, Planificadores}) {
        escenario->Correr("DELETE FROM Registro_Cambio");
        int total = 0;
        QString sentencias;
        for (const QString &dicho : Correr(cuantos, "--guardar")) {
            const auto hallado = QRegularExpression("guardados (\\d+) (\\d+)").match(dicho);
            QVERIFY2(hallado.hasMatch(), qPrintable(dicho));
            total += hallado.captured(1).toInt();
            sentencias = hallado.captured(2);
        }
        QVERIFY(total > 0);
        QCOMPARE(escenario->Correr("SELECT count(*) FROM Registro_Cambio").toInt(), total + 2 * cuantos);
        AnotarResultado({"guardados", QString::number(cuantos), QString::number(2 * total / Segundos()), sentencias});
    }
}

int main(int argc, char **argv)
{
    qvx::Aplicacion aplicacion(argc, argv);
    const QStringList argumentos = QCoreApplication::arguments();
    if (argumentos.value(1) == "--guardar")
        return RepetirGuardado(argumentos.mid(2));
    if (argumentos.value(1) == "--planificador") {
        TrabajarComoPlanificador(argumentos.mid(2));
        return 0;
    }
    PrPlanificadores prueba;
    return QTest::qExec(&prueba, argc, argv);
}
#include "pr_planificadores.moc"
