#include "app/VentanaPrincipal.h"
#include "controls/InteraccionQt.h"
#include "controls/TreeView.h"
#include "data/Conexion.h"
#include "support/Plan.h"

#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>
#include <QTimer>

using comunesQVX::TreeView;

// Long jobs on the real screen in its window: what shows that they run, and what waits for their end.
class PrAvance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trabajo();
    void cleanupTestCase()
    {
        qApp->removeEventFilter(this);
        ventana.reset();
    }

private:
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void HastaVerlo();
    bool EnReposo() const { return !QGuiApplication::overrideCursor() && avance->text().isEmpty(); }

    Escenario escenario;
    std::unique_ptr<VentanaPrincipal> ventana;
    TreeView *arbol = nullptr;
    QLabel *avance = nullptr;
    int vistas = 0; // how often the label said something
    QObject *linea = nullptr;
    QStringList sucesos; // delivered events of that box, and what the next key would have found
};

bool PrAvance::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == linea && QList{QEvent::KeyPress, QEvent::FocusOut}.contains(evento->type()))
        sucesos.append(QVariant::fromValue(evento->type()).toString());
    if (objeto == ventana->windowHandle() && evento->type() == QEvent::KeyPress)
        sucesos += escenario.Filas("SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Descripcion = 'PRIMERA'");
    return false;
}

// Reads the tree again until the job is a long one, on any machine.
void PrAvance::HastaVerlo()
{
    vistas = 0;
    for (int i = 0; i < 200 && vistas < 3; ++i)
        Q_EMIT arbol->KeyDown(116); // F5
    QVERIFY(vistas >= 3 && QGuiApplication::overrideCursor());
}

// One event of a loop. Keys wait; while a person is asked nothing works, and the time to think is no work.
void PrAvance::trabajo()
{
    SembrarPlan(escenario);
    SembrarGrande(escenario, "0904", 2000);
    QWidget &pantalla = escenario.Pantalla("0904");
    ventana = std::make_unique<VentanaPrincipal>(&pantalla, "", "mlopez", "prueba");
    ventana->show();
    QVERIFY(QTest::qWaitForWindowActive(ventana.get()));
    QStringList rotulos;
    for (const auto *rotulo : ventana->statusBar()->findChildren<QLabel *>())
        rotulos.append(rotulo->text());
    QVERIFY2(rotulos.contains("Operador: mlopez") && rotulos.contains("prueba"), qPrintable(rotulos.join('|')));
    arbol = &escenario.De<TreeView>("tvPartes");
    avance = &En<QLabel>(*ventana, "lblAvance");
    linea = escenario.De<QWidget>("txtTipoEquipo").findChild<QLineEdit *>();
    qApp->installEventFilter(this);
    connect(static_cast<qvx::Aplicacion *>(qApp), &qvx::Aplicacion::Avance, avance, [this] {
        QVERIFY(avance->text().startsWith("Trabajando… "));
        ++vistas;
    });

    QEventLoop bucle;
    QTimer::singleShot(0, arbol, [&] {
        const auto fin = qScopeGuard([&] { bucle.quit(); });
        QCoreApplication::postEvent(linea, new QKeyEvent(QEvent::KeyPress, Qt::Key_Home, Qt::NoModifier));
        QCoreApplication::postEvent(linea, new QFocusEvent(QEvent::FocusOut, Qt::OtherFocusReason));
        HastaVerlo();
        QCOMPARE(sucesos, QStringList());
        EnElDialogo([&](QWidget &) {
            QVERIFY(EnReposo());
            HastaVerlo(); // a job of its own
        });
        qvx::InteraccionQt().Mensaje({"¿Sigo?", qvx::mensaje::Pregunta, "Quorvex", ventana->winId(), "KT580", "", {}});
        qvx::Sesion::Actual().Conexion().Execute("SELECT * FROM Unidad");
        QVERIFY(EnReposo());
        HastaVerlo();
    });
    bucle.exec();
    ventana->activateWindow(); // as a window manager does
    QVERIFY(QTest::qWaitForWindowActive(ventana.get()) && EnReposo());
    QCOMPARE(std::exchange(sucesos, {}), (QStringList{"KeyPress", "FocusOut"}));

    // Keys that waited come at once: a label's end, which the toolkit calls later, is before the next command.
    arbol->expandAll();
    ElegirNodo(*arbol, "N00001");
    QTest::keyClick(arbol, Qt::Key_F2);
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    QVERIFY(editor);
    editor->setText("PRIMERA");
    QTest::keyClick(editor, Qt::Key_Return);
    QTest::keyClick(ventana->windowHandle(), Qt::Key_Shift); // as it comes from outside
    QCOMPARE(sucesos, QStringList{"00001"});
}

PRUEBA_MAIN(PrAvance)
#include "pr_avance.moc"
