#include "app/VentanaPrincipal.h"
#include "controls/Comunes.h"
#include "controls/InteraccionQt.h"
#include "data/Conexion.h"
#include "support/Plan.h"

#include <QEventLoop>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QTimer>

using comunesQVX::TreeView;

// Long jobs on the real screen in its window: what shows that they run, and what waits for their end.
class PrAvance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void vivaYSorda();
    void preguntaEnMedio();
    void deUnSoloMomento();
    void enOrden();

private:
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void Trabajar(const std::function<void()> &pasos) const;
    void HastaVerlo();
    static bool Reloj() { return QGuiApplication::overrideCursor() != nullptr; }

    std::unique_ptr<Escenario> escenario;
    std::unique_ptr<VentanaPrincipal> ventana;
    TreeView *arbol = nullptr;
    QLabel *avance = nullptr;
    int vistas = 0;      // how often the label said something
    int sentencias = 0;  // what it said last
    int dibujos = 0;     // of the label, since then
    QStringList sucesos; // delivered events of what the test watches
};

void PrAvance::init()
{
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    SembrarGrande(*escenario, "0904", 2000);
    QWidget &pantalla = escenario->Pantalla("0904");
    ventana = std::make_unique<VentanaPrincipal>(&pantalla, "", "mlopez", "prueba");
    ventana->show();
    QVERIFY(QTest::qWaitForWindowActive(ventana.get()));
    arbol = &escenario->De<TreeView>("tvPartes");
    avance = &escenario->En<QLabel>(*ventana, "lblAvance");
    QCOMPARE(arbol->Count(), 2001);
    vistas = sentencias = 0;
    sucesos.clear();
    qApp->installEventFilter(this);
    connect(static_cast<qvx::Aplicacion *>(qApp), &qvx::Aplicacion::Avance, avance, [this](int nuevas) {
        const QString numero = QLocale(QLocale::Spanish, QLocale::Mexico).toString(nuevas);
        QCOMPARE(avance->text(), "Trabajando… " + numero + " sentencias");
        QVERIFY(vistas == 0 || (nuevas > sentencias && dibujos > 0));
        ++vistas;
        sentencias = nuevas;
        dibujos = 0;
    });
}

void PrAvance::cleanup()
{
    qApp->removeEventFilter(this);
    ventana.reset();
    escenario.reset();
}

bool PrAvance::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == avance && evento->type() == QEvent::Paint)
        ++dibujos;
    if (objeto->parent() == this && evento->type() == QEvent::Close) // as a form does that is closed
        objeto->deleteLater();
    if (objeto->property("testigo").toList().contains(int(evento->type())))
        sucesos.append(QVariant::fromValue(evento->type()).toString());
    if (objeto == ventana->windowHandle() && evento->type() == QEvent::KeyPress)
        sucesos += escenario->Filas("SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Descripcion = 'PRIMERA'");
    return false;
}

// As one event of a loop.
void PrAvance::Trabajar(const std::function<void()> &pasos) const
{
    QEventLoop bucle;
    QTimer::singleShot(0, arbol, [&] {
        pasos();
        bucle.quit();
    });
    bucle.exec();
    QVERIFY(!Reloj() && avance->text().isEmpty());
}

// Reads the tree again until the job is a long one, on any machine.
void PrAvance::HastaVerlo()
{
    vistas = 0;
    for (int i = 0; i < 200 && vistas < 3; ++i)
        Q_EMIT arbol->KeyDown(116); // F5
    QVERIFY(vistas >= 3 && Reloj());
}

void PrAvance::vivaYSorda()
{
    auto *linea = escenario->De<QWidget>("txtTipoEquipo").findChild<QLineEdit *>();
    QTimer reloj;
    auto *borrado = new QObject(this);
    for (QObject *testigo : QObjectList{linea, &reloj, borrado})
        testigo->setProperty("testigo", QVariantList{QEvent::KeyPress, QEvent::Drop, QEvent::FocusOut, QEvent::Timer,
                                                     QEvent::DeferredDelete});
    QMimeData datos;
    datos.setText("0900");
    Trabajar([&] {
        QCoreApplication::postEvent(linea, new QKeyEvent(QEvent::KeyPress, Qt::Key_9, Qt::NoModifier, "9"));
        QCoreApplication::postEvent(linea, new QDropEvent({1, 1}, Qt::CopyAction, &datos, Qt::LeftButton, {}));
        QCoreApplication::postEvent(linea, new QFocusEvent(QEvent::FocusOut, Qt::OtherFocusReason));
        QEvent cierre(QEvent::Close);
        QCoreApplication::sendEvent(borrado, &cierre);
        reloj.start(0);
        HastaVerlo();
        QCOMPARE(sucesos, QStringList());
    });
    QTRY_VERIFY(sucesos.contains("Timer"));
    reloj.stop();
    sucesos.removeAll("Timer");
    QTRY_COMPARE(sucesos, (QStringList{"KeyPress", "FocusOut", "DeferredDelete"}));
}

// While a person is asked, nothing works; and the time to think is no work.
void PrAvance::preguntaEnMedio()
{
    Trabajar([&] {
        HastaVerlo();
        EnElDialogo([&](QWidget &) {
            QVERIFY(!Reloj() && avance->text().isEmpty());
            HastaVerlo(); // a job of its own
        });
        qvx::InteraccionQt().Mensaje({"¿Sigo?", qvx::mensaje::Pregunta, "Quorvex", ventana->winId(), "KT580", "", {}});
        qvx::Sesion::Actual().Conexion().Execute("SELECT * FROM Unidad");
        QVERIFY(!Reloj() && avance->text().isEmpty());
        HastaVerlo();
    });
}

// What others change while the windows are drawn is not in the document.
void PrAvance::deUnSoloMomento()
{
    connect(static_cast<qvx::Aplicacion *>(qApp), &qvx::Aplicacion::Avance, avance, [this] {
        if (Motor::EnServidor()) // while the file is read, nobody can
            escenario->Motor(
                "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'CAMBIADA' WHERE Te_Cve_Tipo_Equipo = '0904'");
    });
    escenario->Personas().DarArchivo(escenario->Ruta("plan.xml"));
    Pulsar(escenario->De<QWidget>("Controles"), "B1");
    QCOMPARE(escenario->Personas().Tomar().size(), 1);
    QVERIFY(vistas > 0);
    QFile archivo(escenario->Ruta("plan.xml"));
    QVERIFY(archivo.open(QIODevice::ReadOnly));
    QCOMPARE(archivo.readAll().count("Descripción=\"PARTE "), 2000);
}

// Keys and clicks that waited come at once: a label's end, which the toolkit calls later, is before the next command.
void PrAvance::enOrden()
{
    arbol->expandAll();
    ElegirNodo(*arbol, "N00001");
    QTest::keyClick(arbol, Qt::Key_F2);
    auto *editor = arbol->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->setText("PRIMERA");
    QTest::keyClick(editor, Qt::Key_Return);
    QTest::keyClick(ventana->windowHandle(), Qt::Key_Shift); // as it comes from outside
    QCOMPARE(sucesos, QStringList{"00001"});
}

PRUEBA_MAIN(PrAvance)
#include "pr_avance.moc"
