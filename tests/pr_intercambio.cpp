#include "support/Plan.h"

#include <QProcess>
#include <QRegularExpression>
#include <csignal>

namespace
{

const QByteArray Bueno = "<PlanMantenimiento><TipoEquipo Id=\"0902\"><Parte Id=\"7\" Descripción=\"NUEVA\"/>"
                         "</TipoEquipo></PlanMantenimiento>";

} // namespace

// The exchange from the command line: the program itself, on a real database, without a window.
class PrIntercambio : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void linea_data();
    void linea();
    void interrumpido();

private:
    void Preparar(QProcess &programa) const;
    void Poner(const QString &nombre, const QByteArray &contenido) const;

    std::unique_ptr<Escenario> escenario;
    std::unique_ptr<QTemporaryDir> carpeta;
};

void PrIntercambio::init()
{
    carpeta = std::make_unique<QTemporaryDir>();
    escenario.reset();
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
}

// Started among the test's files, with a registry of its own, and where no display is.
void PrIntercambio::Preparar(QProcess &programa) const
{
    QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    entorno.insert("XDG_CONFIG_HOME", carpeta->filePath("config"));
    entorno.insert("XDG_RUNTIME_DIR", carpeta->path());
    entorno.insert("QVX_TRAZA", carpeta->filePath("traza"));
    for (const char *variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        entorno.remove(variable);
    programa.setProcessEnvironment(entorno);
    programa.setWorkingDirectory(carpeta->path());
}

void PrIntercambio::Poner(const QString &nombre, const QByteArray &contenido) const
{
    QFile archivo(carpeta->filePath(nombre));
    QVERIFY(archivo.open(QIODevice::WriteOnly) && archivo.write(contenido) == contenido.size());
}

void PrIntercambio::linea_data()
{
    QTest::addColumn<QStringList>("argumentos");
    QTest::addColumn<int>("salida");
    QTest::addColumn<QString>("dicho"); // on the standard error
    QTest::addColumn<bool>("cambia");
    QTest::newRow("exportar") << QStringList{"--exportar", "900", "nuevo.xml"} << 0
                              << "^Se generó el archivo/.*/nuevo.xml\n$" << false;
    QTest::newRow("exportar sin partes") << QStringList{"--exportar", "0901", "nuevo.xml"} << 1
                                         << "^El tipo de equipo 0901 no existe, o no tiene partes que exportar.\n$"
                                         << false;
    QTest::newRow("exportar donde no se puede") << QStringList{"--exportar", "0900", "no/hay.xml"} << 1
                                                << "^No se pudo guardar el archivo /.*/no/hay.xml: " << false;
    QTest::newRow("exportar sin archivo") << QStringList{"--exportar", "0900"} << 2 << "^Falta el archivo" << false;
    QTest::newRow("importar") << QStringList{"--importar", "bueno.xml", "--si"} << 0
                              << "^Se reemplazará el plan .* equipo0902, ¿DESEA CONTINUAR\\?\n$" << true;
    QTest::newRow("importar sin --si") << QStringList{"--importar", "bueno.xml"} << 1 << "contesta que sí con --si"
                                       << false;
    QTest::newRow("importar otro formato") << QStringList{"--importar", "malo.xml", "--si"} << 1
                                           << "^El archivo xml que se cargo no cumple con el formato del "
                                              "mantenimiento\nRenglón 2, Parte: falta el atributo"
                                           << false;
    QTest::newRow("importar nada") << QStringList{"--importar", "nada.xml", "--si"} << 1 << "No se pudo abrir" << false;
    QTest::newRow("con productos desconocidos")
        << QStringList{"--importar", "sinproducto.xml", "--si"} << 0 << "Los productos:  ,P1 no están" << true;
    QTest::newRow("validar bueno") << QStringList{"--validar", "bueno.xml"} << 0 << "^$" << false;
    QTest::newRow("validar malo") << QStringList{"--validar", "malo.xml"} << 1
                                  << "^malo.xml: Renglón 2, Parte: falta .*\nmalo.xml: Renglón 3, Otra: " << false;
    QTest::newRow("--si de más") << QStringList{"--validar", "bueno.xml", "--si"} << 2 << "^--si solo va" << false;
    QTest::newRow("dos a la vez") << QStringList{"--validar", "a", "--importar", "b"} << 2 << "no van juntos" << false;
}

void PrIntercambio::linea()
{
    QFETCH(QStringList, argumentos);
    QFETCH(QString, dicho);
    QFETCH(bool, cambia);
    Poner("bueno.xml", Bueno);
    Poner("malo.xml", "<PlanMantenimiento><TipoEquipo Id=\"0900\">\n<Parte Id=\"1\"/>\n<Otra/></TipoEquipo>"
                      "</PlanMantenimiento>");
    Poner("sinproducto.xml",
          QByteArray(Bueno).replace("/></TipoE", "><TipoServicio Id=\"1\" UnidadLectura=\"\" FrecuenciaLectura=\"0\" "
                                                 "FrecuenciaDias=\"1\" RequiereParo=\"NO\" Duracion=\"1\" Precio=\"1\" "
                                                 "Prioridad=\"1\"><ManoObra><Servicio Id=\"P1\" Cantidad=\"1\"/>"
                                                 "</ManoObra><Refacciones/><Herramientas/></TipoServicio></Parte>"
                                                 "</TipoE"));
    const QStringList antes = escenario->Tablas();
    QProcess programa;
    Preparar(programa);
    programa.start(PROGRAMA_QUORVEX, argumentos + escenario->Base().Argumentos());
    QVERIFY(programa.waitForFinished());
    QTEST(programa.exitCode(), "salida");
    const QString error = QString::fromUtf8(programa.readAllStandardError());
    QVERIFY2(QRegularExpression(dicho).match(error).hasMatch(), qPrintable(error));
    QCOMPARE(escenario->Tablas() != antes, cambia);
    QCOMPARE(QFile::exists(carpeta->filePath("nuevo.xml")), argumentos.value(1) == "900");
}

// Killed in the middle of the import: the plan that was there is whole.
void PrIntercambio::interrumpido()
{
    QByteArray partes;
    for (int i = 0; i < 50000; ++i)
        partes += "<Parte Id=\"" + QByteArray::number(10000 + i) + "\" Descripción=\"PIEZA\"/>";
    Poner("grande.xml", QByteArray(Bueno).replace("</TipoE", partes + "</TipoE"));
    const QStringList antes = escenario->Tablas();
    QProcess programa;
    Preparar(programa);
    programa.start(PROGRAMA_QUORVEX, QStringList{"--importar", "grande.xml", "--si"} + escenario->Base().Argumentos());
    QVERIFY(programa.waitForStarted());
    const auto traza = [&] {
        QFile archivo(carpeta->filePath("traza"));
        return archivo.open(QIODevice::ReadOnly) ? archivo.readAll() : QByteArray();
    };
    QTRY_VERIFY_WITH_TIMEOUT(traza().count("INSERT INTO") > 500, 60000);
    QCOMPARE(kill(static_cast<pid_t>(programa.processId()), SIGKILL), 0);
    QVERIFY(programa.waitForFinished());
    QCOMPARE(programa.exitStatus(), QProcess::CrashExit);
    QVERIFY(!traza().contains("COMMIT"));
    QCOMPARE(escenario->Tablas(), antes);
    if (!escenario->Base().EsPostgres())
        QCOMPARE(escenario->Motor("PRAGMA integrity_check").toString(), "ok");
}

PRUEBA_MAIN(PrIntercambio)
#include "pr_intercambio.moc"
