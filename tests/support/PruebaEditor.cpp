#include "support/PruebaEditor.h"

#include "controls/Comunes.h"

void PruebaEditor::init()
{
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    escenario->Pantalla("0900");
}

void PruebaEditor::cleanup()
{
    const QStringList sinEsperar = Mensajes();
    escenario.reset();
    QCOMPARE(sinEsperar.join("\n"), "");
}

void PruebaEditor::Abrir(int fila, const Pasos &pasos, const QString &parte)
{
    ElegirNodo(escenario->De<QWidget>("tvPartes"), parte);
    bool corrido = false;
    EnElDialogo([&](QWidget &editor) {
        corrido = true;
        pasos(editor);
    });
    if (fila < 0) {
        Pulsar(escenario->De<QWidget>("Controles"), "B2");
    } else {
        auto &lista = escenario->De<comunesQVX::ListView>("lvServicios");
        const QPoint punto = lista.visualItemRect(lista.topLevelItem(fila)).center();
        QTest::mouseClick(lista.viewport(), Qt::LeftButton, {}, punto);
        QTest::mouseDClick(lista.viewport(), Qt::LeftButton, {}, punto);
    }
    QVERIFY(corrido);
}

QString PruebaEditor::Fila(const SSOleDBGrid &grid, int fila) const
{
    QStringList celdas;
    for (int i = 0; i < grid.columnCount(); ++i)
        celdas.append(grid.Celda(fila, grid.NombreColumna(i)));
    return celdas.join("|");
}

// A valid new service with a line of each kind, typed field by field.
void PruebaEditor::LlenarNuevo(QWidget &editor)
{
    Escribir(Caja(editor, "txtTipoServicio"), "9001");
    Escribir(Caja(editor, "txtPrioridad"), "9001");
    Escribir(Caja(editor, "txtDias"), "30");
    Escribir(Caja(editor, "txtTiempoEstimado"), "2.5");
    Escribir(Caja(editor, "txtPrecio"), "1,000.50");
    Fichas(editor).setTab(1);
    EscribirCelda(Grid(editor, "ssManoObra"), 0, "Producto", "9000000001");
    EscribirCelda(Grid(editor, "ssManoObra"), 0, "Cantidad", "2");
    Fichas(editor).setTab(2);
    EscribirCelda(Grid(editor, "ssRefacciones"), 0, "Producto", "9000000002");
    EscribirCelda(Grid(editor, "ssRefacciones"), 0, "Cantidad", "1.5");
    EscribirCelda(Grid(editor, "ssRefacciones"), 0, "Gasto", "9001");
    Fichas(editor).setTab(3);
    EscribirCelda(Grid(editor, "ssHerramientas"), 0, "Producto", "9000000003");
    EscribirCelda(Grid(editor, "ssHerramientas"), 0, "Cantidad", "1");
}
