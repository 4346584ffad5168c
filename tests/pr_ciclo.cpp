#include "controls/Comunes.h"
#include "controls/SSOleDBGrid.h"
#include "controls/txtQVX.h"
#include "support/Plan.h"

using comunesQVX::ListView;
using comunesQVX::TreeView;

// The planner's whole loop on the example plans, by keyboard alone: type, tree, new service, change, deletion.
class PrCiclo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cicloPorTeclado();
};

namespace
{

// Keys go to whatever has the focus, as from a keyboard.
void Teclear(const QString &texto)
{
    for (const QChar letra : texto) {
        QTest::keyClicks(QApplication::focusWidget(), letra);
        QCoreApplication::processEvents();
    }
}

void Tecla(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
{
    QTest::keyClick(QApplication::focusWidget(), tecla, con);
    QCoreApplication::processEvents();
}

void TeclearYSeguir(const QString &texto)
{
    Teclear(texto);
    Tecla(Qt::Key_Tab);
}

} // namespace

void PrCiclo::cicloPorTeclado()
{
    Escenario escenario(true);
    QWidget &pantalla = escenario.Pantalla();
    // Where there is no window manager, nobody gives the focus back when a dialog closes.
    const auto alVolver = [&] {
        pantalla.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(pantalla.window()));
    };
    auto &arbol = escenario.De<TreeView>("tvPartes");
    auto &lista = escenario.De<ListView>("lvServicios");

    TeclearYSeguir("1");
    arbol.expandAll();
    const auto hasta = [](QWidget &control) {
        while (!control.hasFocus() && !control.isAncestorOf(QApplication::focusWidget()))
            Tecla(Qt::Key_Tab);
    };
    hasta(arbol);
    while (!arbol.SelectedItem() || arbol.SelectedItem()->Key() != "N0002")
        Tecla(Qt::Key_Down);
    const int antes = lista.Count();
    const QStringList lineasAntes = escenario.Filas("SELECT * FROM Plan_Mantenimiento_Detalle ORDER BY 1, 2, 3, 4");

    QString folio;
    EnElDialogo([&](QWidget &editor) {
        folio = escenario.En<textoQVX::txtQVX>(editor, "txtID").Text();
        TeclearYSeguir("1"); // service type
        TeclearYSeguir("2"); // priority
        TeclearYSeguir("45");
        TeclearYSeguir("250");
        TeclearYSeguir("hr");
        TeclearYSeguir("3.5");
        Tecla(Qt::Key_Space); // must be stopped
        Tecla(Qt::Key_Return);
        TeclearYSeguir("2");
        Teclear("2,500");
        Tecla(Qt::Key_2, Qt::AltModifier);
        hasta(escenario.En<QWidget>(editor, "ssManoObra"));
        TeclearYSeguir("1");
        TeclearYSeguir("2.25");
        Tecla(Qt::Key_3, Qt::AltModifier);
        hasta(escenario.En<QWidget>(editor, "ssRefacciones"));
        TeclearYSeguir("1001");
        TeclearYSeguir("4");
        TeclearYSeguir("1");
        Tecla(Qt::Key_4, Qt::AltModifier);
        hasta(escenario.En<QWidget>(editor, "ssHerramientas"));
        TeclearYSeguir("2001");
        Teclear("1");
        Tecla(Qt::Key_F4);
        QVERIFY(!editor.isVisible());
    });
    Tecla(Qt::Key_2, Qt::ControlModifier);
    alVolver();
    QCOMPARE(escenario.Personas().Tomar(), QStringList());
    QCOMPARE(lista.Count(), antes + 1);
    QCOMPARE(escenario.Filas("SELECT Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, "
                             "Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro FROM "
                             "Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0001' AND Pm_ID = '"
                             + folio + "'"),
             QStringList{"0001|45|250|HR|2500|3.5|0002|SI|2"});
    QCOMPARE(escenario.Filas("SELECT Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, CAST(Pmd_Importe = Pmd_Cantidad * "
                             "Pmd_Costo AS integer), Pmd_Tipo_Gasto FROM Plan_Mantenimiento_Detalle WHERE "
                             "Te_Cve_Tipo_Equipo = '0001' AND Pm_ID = '"
                             + folio + "' ORDER BY Pmd_ID"),
             (QStringList{"01|0000000001|2.25|1|", "02|0000001001|4|1|0001", "03|0000002001|1|1|"}));

    // Found again at the end of the list, opened, its price changed.
    hasta(lista);
    Tecla(Qt::Key_End);
    QCOMPARE(lista.TextoSeleccionado(), folio);
    EnElDialogo([&](QWidget &editor) {
        hasta(escenario.En<QWidget>(editor, "txtPrecio"));
        Tecla(Qt::Key_A, Qt::ControlModifier);
        Teclear("2600.5");
        Tecla(Qt::Key_F4);
    });
    Tecla(Qt::Key_Return);
    alVolver();
    QCOMPARE(escenario.Personas().Tomar(), QStringList());
    QCOMPARE(escenario.Motor("SELECT Pm_Precio FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0001' AND Pm_ID = '"
                             + folio + "'"),
             2600.5);

    hasta(lista);
    Tecla(Qt::Key_End);
    QCOMPARE(lista.TextoSeleccionado(), folio);
    escenario.Personas().Responder(7500050, qvx::mensaje::Si);
    Tecla(Qt::Key_Delete);
    QCOMPARE(lista.Count(), antes);
    QCOMPARE(escenario.Filas("SELECT * FROM Plan_Mantenimiento_Detalle ORDER BY 1, 2, 3, 4"), lineasAntes);
}

PRUEBA_MAIN(PrCiclo)
#include "pr_ciclo.moc"
