#include "support/PruebaPantalla.h"

#include "support/Planificador.h"

#include <algorithm>

void PruebaPantalla::init()
{
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    pantalla = &escenario->Pantalla("0900");
}

void PruebaPantalla::cleanup()
{
    const QStringList sinEsperar = Mensajes();
    escenario.reset();
    QCOMPARE(sinEsperar.join("\n"), "");
}

QStringList PruebaPantalla::Dichos()
{
    QStringList dichos = Mensajes();
    dichos.removeIf([](const QString &dicho) { return (dicho.section('|', 0, 0).toInt() & 0xF) != 0; });
    return dichos;
}

QString PruebaPantalla::Barras()
{
    const toolbarQVX::Estado &barra = Barra().Ofrecido();
    QString texto;
    for (bool valor : {barra.nuevo, barra.editar, barra.eliminar, barra.reactivar, barra.info})
        texto += valor ? "1" : "0";
    for (const toolbarQVX::Extra &extra : barra.extras)
        texto += "|" + extra.titulo;
    return texto;
}

void PruebaPantalla::Mandar(const QString &comando, const QString &nodo)
{
    if (!nodo.isEmpty())
        ElegirNodo(Arbol(), nodo);
    Pulsar(Barra(), comando);
}

void PruebaPantalla::Preparar(const QString &sentencias)
{
    for (const QString &sentencia : sentencias.split(';', Qt::SkipEmptyParts))
        escenario->Motor(sentencia);
    QTest::keyClick(&Arbol(), Qt::Key_F5);
}

void PruebaPantalla::EnOrden(const QStringList &traza, const QStringList &sentencias)
{
    auto desde = traza.begin();
    for (const QString &sentencia : sentencias) {
        desde = std::find(desde, traza.end(), sentencia);
        QVERIFY2(desde != traza.end(), qPrintable("Falta " + sentencia + " en\n" + traza.join('\n')));
        ++desde;
    }
}

QString PruebaPantalla::Partes(const QString &columnas, const QString &condicion) const
{
    return escenario
        ->Filas("SELECT " + columnas + " FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND (" + condicion
                + ") ORDER BY Tep_ID")
        .join(' ');
}

void PruebaPantalla::EnLaForma(const std::function<void()> &abrir, const Pasos &pasos)
{
    bool abierta = false;
    EnElDialogo([&](QWidget &forma) {
        abierta = true;
        pasos(forma);
    });
    abrir();
    QVERIFY2(abierta, "No se abrió");
}

void PruebaPantalla::EnLaParte(const QString &comando, const QString &nodo, const Pasos &pasos)
{
    Arbol().setSelectedItem(nullptr);
    EnLaForma([&] { Mandar(comando, nodo); }, pasos);
}

void PruebaPantalla::Abrir(int fila, const Pasos &pasos, const QString &parte)
{
    if (fila < 0)
        return EnLaParte("B2", parte, pasos);
    ElegirNodo(Arbol(), parte);
    const QPoint punto = Lista().visualItemRect(Lista().topLevelItem(fila)).center();
    QTest::mouseClick(Lista().viewport(), Qt::LeftButton, {}, punto);
    EnLaForma([&] { QTest::mouseDClick(Lista().viewport(), Qt::LeftButton, {}, punto); }, pasos);
}

void PruebaPantalla::LlenarNuevo(QWidget &editor)
{
    LlenarServicio(*escenario, editor);
}

void PruebaPantalla::Aceptar(QWidget &forma)
{
    auto *barra = forma.findChild<QWidget *>("Controles1"); // the editor's; a part's form has the other
    Pulsar(barra ? *barra : *forma.findChild<QWidget *>("Controles"), "Aceptar");
}

QString PruebaPantalla::Fila(const SSOleDBGrid &grid, int fila) const
{
    QStringList celdas;
    for (int i = 0; i < grid.columnCount(); ++i)
        celdas.append(grid.Celda(fila, grid.NombreColumna(i)));
    return celdas.join("|");
}
