#include "controls/Comunes.h"
#include "controls/SSOleDBGrid.h"
#include "controls/txtQVX.h"
#include "support/Plan.h"

using comunesQVX::ListView;
using comunesQVX::Nodo;
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

QStringList Claves(const Nodo *nodo)
{
    QStringList claves{nodo->Key().mid(1)};
    for (int i = 0; i < nodo->childCount(); ++i)
        claves += Claves(static_cast<const Nodo *>(nodo->child(i)));
    return claves;
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
    QStringList mostradas = Claves(arbol.Primero());
    mostradas.removeFirst();
    mostradas.sort();
    QCOMPARE(mostradas,
             escenario.Filas("SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0001' ORDER BY 1"));

    while (!arbol.hasFocus())
        Tecla(Qt::Key_Tab);
    while (!arbol.SelectedItem() || arbol.SelectedItem()->Key() != "N0002")
        Tecla(Qt::Key_Down);
    const QString parte = arbol.SelectedItem()->Key().mid(1);
    const auto cuantos = [&](const QString &tabla) {
        return escenario
            .Motor("SELECT count(*) FROM " + tabla + " WHERE Te_Cve_Tipo_Equipo = '0001' AND Tep_ID = '" + parte + "'")
            .toInt();
    };
    const int antes = cuantos("Plan_Mantenimiento");
    const int lineasAntes = cuantos("Plan_Mantenimiento_Detalle");
    QCOMPARE(lista.Count(), antes);

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
        while (!escenario.En<QWidget>(editor, "ssManoObra").hasFocus())
            Tecla(Qt::Key_Tab);
        TeclearYSeguir("1");
        TeclearYSeguir("2.25");
        Tecla(Qt::Key_3, Qt::AltModifier);
        while (!escenario.En<QWidget>(editor, "ssRefacciones").hasFocus())
            Tecla(Qt::Key_Tab);
        TeclearYSeguir("1001");
        TeclearYSeguir("4");
        TeclearYSeguir("1");
        Tecla(Qt::Key_4, Qt::AltModifier);
        while (!escenario.En<QWidget>(editor, "ssHerramientas").hasFocus())
            Tecla(Qt::Key_Tab);
        TeclearYSeguir("2001");
        Teclear("1");
        Tecla(Qt::Key_F4);
        QVERIFY(!editor.isVisible());
    });
    Tecla(Qt::Key_2, Qt::ControlModifier);
    alVolver();
    QCOMPARE(escenario.Personas().Tomar(), QStringList());
    QCOMPARE(cuantos("Plan_Mantenimiento"), antes + 1);
    QCOMPARE(escenario.Filas("SELECT Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, "
                             "Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro FROM "
                             "Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0001' AND Pm_ID = '"
                             + folio + "'"),
             QStringList{"0001|45|250|HR|2500|3.5|0002|SI|2"});
    QCOMPARE(escenario.Filas(
                 "SELECT Pmd_Tipo, d.Pr_Cve_Producto, Pmd_Cantidad, CAST(Pmd_Costo = CASE Pmd_Tipo WHEN '03' THEN "
                 "0 ELSE Pr_Costo_Estandar END AS integer), CAST(Pmd_Importe = Pmd_Cantidad * Pmd_Costo AS integer), "
                 "Pmd_Tipo_Gasto FROM "
                 "Plan_Mantenimiento_Detalle d JOIN Producto USING (Pr_Cve_Producto) WHERE "
                 "Te_Cve_Tipo_Equipo = '0001' AND Pm_ID = '"
                 + folio + "' ORDER BY Pmd_ID"),
             (QStringList{"01|0000000001|2.25|1|1|", "02|0000001001|4|1|1|0001", "03|0000002001|1|1|1|"}));

    // Found again at the end of the list, opened, its price changed.
    while (!lista.hasFocus())
        Tecla(Qt::Key_Tab);
    Tecla(Qt::Key_End);
    QCOMPARE(lista.TextoSeleccionado(), folio);
    EnElDialogo([&](QWidget &editor) {
        while (!escenario.En<textoQVX::txtQVX>(editor, "txtPrecio").isAncestorOf(QApplication::focusWidget()))
            Tecla(Qt::Key_Tab);
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

    while (!lista.hasFocus())
        Tecla(Qt::Key_Tab);
    Tecla(Qt::Key_End);
    QCOMPARE(lista.TextoSeleccionado(), folio);
    escenario.Personas().Responder(7500050, qvx::mensaje::Si);
    Tecla(Qt::Key_Delete);
    QCOMPARE(cuantos("Plan_Mantenimiento"), antes);
    QCOMPARE(cuantos("Plan_Mantenimiento_Detalle"), lineasAntes);
    QCOMPARE(lista.Count(), antes);
}

PRUEBA_MAIN(PrCiclo)
#include "pr_ciclo.moc"
