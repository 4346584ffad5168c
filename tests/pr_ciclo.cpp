#include "controls/Comunes.h"
#include "controls/SSOleDBGrid.h"
#include "controls/txtQVX.h"
#include "support/Plan.h"

using comunesQVX::ListView;
using comunesQVX::TreeView;

// The planner's whole loop on the example plans, by keyboard alone: type, tree, new service, change.
class PrCiclo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cicloPorTeclado();
};

namespace
{

// Keys go to whatever has the focus, as from a keyboard.
void Tecla(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
{
    QTest::keyClick(QApplication::focusWidget(), tecla, con);
    QCoreApplication::processEvents();
}

// "|" is a Tab.
void Teclear(const QString &texto)
{
    for (const QChar letra : texto) {
        QTest::keyClicks(QApplication::focusWidget(), letra == '|' ? QChar('\t') : letra);
        QCoreApplication::processEvents();
    }
}

void TabularHasta(const QWidget &control)
{
    for (int i = 0; i < 50 && !control.hasFocus() && !control.isAncestorOf(QApplication::focusWidget()); ++i)
        Tecla(Qt::Key_Tab);
}

} // namespace

void PrCiclo::cicloPorTeclado()
{
    Escenario escenario(true);
    QWidget &pantalla = escenario.Pantalla();
    auto &arbol = escenario.De<TreeView>("tvPartes");
    auto &lista = escenario.De<ListView>("lvServicios");
    // Where there is no window manager, nobody gives the focus back when a dialog closes.
    const auto enElEditor = [&](Qt::Key tecla, Qt::KeyboardModifiers con, const std::function<void(QWidget &)> &pasos) {
        EnElDialogo(pasos);
        Tecla(tecla, con);
        QCOMPARE(escenario.Personas().Tomar(), QStringList());
        pantalla.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(pantalla.window()));
    };

    Teclear("1|");
    arbol.expandAll();
    TabularHasta(arbol);
    while (!arbol.SelectedItem() || arbol.SelectedItem()->Key() != "N0002")
        Tecla(Qt::Key_Down);
    const int antes = lista.Count();

    QString folio;
    enElEditor(Qt::Key_2, Qt::ControlModifier, [&](QWidget &editor) {
        folio = escenario.En<textoQVX::txtQVX>(editor, "txtID").Text();
        Teclear("1|2|45|250|hr|3.5|");
        Tecla(Qt::Key_Space); // must be stopped
        Tecla(Qt::Key_Return);
        Teclear("2|2,500");
        Tecla(Qt::Key_2, Qt::AltModifier);
        TabularHasta(escenario.En<QWidget>(editor, "ssManoObra"));
        Teclear("1|2.25");
        Tecla(Qt::Key_3, Qt::AltModifier);
        TabularHasta(escenario.En<QWidget>(editor, "ssRefacciones"));
        Teclear("1001|4|1");
        Tecla(Qt::Key_4, Qt::AltModifier);
        TabularHasta(escenario.En<QWidget>(editor, "ssHerramientas"));
        Teclear("2001|1");
        Tecla(Qt::Key_F4);
        QVERIFY(!editor.isVisible());
    });
    QCOMPARE(lista.Count(), antes + 1);
    const QString elServicio = " WHERE Te_Cve_Tipo_Equipo = '0001' AND Pm_ID = '" + folio + "'";
    QCOMPARE(escenario.Filas("SELECT Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, "
                             "Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro FROM "
                             "Plan_Mantenimiento"
                             + elServicio),
             QStringList{"0001|45|250|HR|2500|3.5|0002|SI|2"});
    QCOMPARE(escenario.Filas("SELECT Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, CAST(Pmd_Importe = Pmd_Cantidad * "
                             "Pmd_Costo AS integer), Pmd_Tipo_Gasto FROM Plan_Mantenimiento_Detalle"
                             + elServicio + " ORDER BY Pmd_ID"),
             (QStringList{"01|0000000001|2.25|1|", "02|0000001001|4|1|0001", "03|0000002001|1|1|"}));

    // Found again at the end of the list, opened, its price changed.
    TabularHasta(lista);
    Tecla(Qt::Key_End);
    QCOMPARE(lista.TextoSeleccionado(), folio);
    enElEditor(Qt::Key_Return, Qt::NoModifier, [&](QWidget &editor) {
        TabularHasta(escenario.En<QWidget>(editor, "txtPrecio"));
        Tecla(Qt::Key_A, Qt::ControlModifier);
        Teclear("2600.5");
        Tecla(Qt::Key_F4);
    });
    QCOMPARE(escenario.Motor("SELECT Pm_Precio FROM Plan_Mantenimiento" + elServicio), 2600.5);
}

PRUEBA_MAIN(PrCiclo)
#include "pr_ciclo.moc"
