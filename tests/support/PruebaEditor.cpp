#include "support/PruebaEditor.h"

#include "controls/Comunes.h"
#include "support/Planificador.h"

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

void PruebaEditor::EnLaParte(const QString &comando, const QString &nodo, const Pasos &pasos)
{
    auto &arbol = escenario->De<comunesQVX::TreeView>("tvPartes");
    arbol.setSelectedItem(nullptr);
    ElegirNodo(arbol, nodo);
    bool abierto = false;
    EnElDialogo([&](QWidget &dialogo) {
        abierto = true;
        pasos(dialogo);
    });
    Pulsar(escenario->De<QWidget>("Controles"), comando);
    QVERIFY2(abierto, "No se abrió el diálogo");
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
    LlenarServicio(*escenario, editor);
}
