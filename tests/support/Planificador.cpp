#include "support/Planificador.h"

#include "controls/ListView.h"
#include "controls/SSOleDBGrid.h"
#include "controls/TreeView.h"
#include "controls/ssTbQvx.h"
#include "controls/txtQVX.h"

#include <QLineEdit>
#include <QTimer>
#include <QTreeWidgetItemIterator>

using comunesQVX::ListView;
using comunesQVX::Nodo;
using comunesQVX::TreeView;
using textoQVX::txtQVX;

Planificador::Planificador(Escenario &escenario_, Intento intento_)
    : escenario(escenario_), intento(std::move(intento_))
{
}

TreeView &Planificador::Arbol() const
{
    return escenario.De<TreeView>("tvPartes");
}

ListView &Planificador::Lista() const
{
    return escenario.De<ListView>("lvServicios");
}

void Planificador::ElegirTipo(const QString &tipo)
{
    Escribir(escenario.De<txtQVX>("txtTipoEquipo"), tipo);
}

QStringList Planificador::Nodos(bool retirados) const
{
    QStringList claves;
    for (QTreeWidgetItemIterator i(&Arbol()); *i; ++i) {
        const auto *nodo = static_cast<const Nodo *>(*i);
        if (nodo->Key() != "N0000" && (nodo->Image() >= 3) == retirados)
            claves.append(nodo->Key());
    }
    return claves;
}

// Answers that a failed attempt never asked for are not kept for another one.
void Planificador::Intentar(const std::function<void()> &paso)
{
    do {
        if (intento.antes)
            intento.antes();
        paso();
        QCoreApplication::processEvents();
        escenario.Personas().Descartar();
    } while (intento.otraVez && intento.otraVez());
}

// Fills the form that a step opens and accepts it: the text of its key box when that closed it.
QString Planificador::EnLaForma(const std::function<void()> &abrir, const Pasos &llenar, const QString &barra,
                                const QString &clave)
{
    QString guardada;
    const QPointer<QTimer> espera = EnElDialogo([&](QWidget &forma) {
        llenar(forma);
        Intentar([&] { Pulsar(escenario.En<QWidget>(forma, barra), "Aceptar"); });
        guardada = forma.isVisible() ? QString() : escenario.En<txtQVX>(forma, clave).Text();
    });
    abrir();
    delete espera;                      // what was to be opened is no longer there
    Arbol().window()->activateWindow(); // as a window manager does
    if (!QTest::qWaitForWindowActive(Arbol().window()))
        qFatal("La pantalla no volvió a activarse");
    return guardada;
}

QString Planificador::EnLaParte(const QString &nodo, const QString &boton, const QString &descripcion)
{
    ElegirNodo(Arbol(), nodo);
    return EnLaForma([&] { Pulsar(escenario.De<QWidget>("Controles"), boton); },
                     [&](QWidget &forma) { Escribir(escenario.En<txtQVX>(forma, "txtTexto"), descripcion); },
                     "Controles", "txtClave");
}

QString Planificador::NuevoServicio(const QString &nodo, const QString &precio)
{
    ElegirNodo(Arbol(), nodo);
    const auto llenar = [&](QWidget &editor) {
        LlenarServicio(escenario, editor);
        Escribir(escenario.En<txtQVX>(editor, "txtPrecio"), precio);
    };
    return EnLaForma([&] { Pulsar(escenario.De<QWidget>("Controles"), "B2"); }, llenar, "Controles1", "txtID");
}

QString Planificador::CambiarServicio(const QString &nodo, const QString &folio, const QString &precio)
{
    ElegirServicio(nodo, folio);
    const auto abrir = [&] {
        if (auto *elegido = Lista().currentItem())
            QTest::mouseDClick(Lista().viewport(), Qt::LeftButton, {}, Lista().visualItemRect(elegido).center());
    };
    const auto llenar = [&](QWidget &editor) { Escribir(escenario.En<txtQVX>(editor, "txtPrecio"), precio); };
    return EnLaForma(abrir, llenar, "Controles1", "txtID");
}

// Nothing is chosen when the service is not in the list.
void Planificador::ElegirServicio(const QString &nodo, const QString &folio)
{
    ElegirNodo(Arbol(), nodo);
    Lista().setFocus();
    for (QTreeWidgetItem *fila : Lista().findItems(folio, Qt::MatchExactly))
        QTest::mouseClick(Lista().viewport(), Qt::LeftButton, {}, Lista().visualItemRect(fila).center());
}

void Planificador::EliminarServicio(const QString &nodo, const QString &folio)
{
    ElegirServicio(nodo, folio);
    Intentar([&] {
        escenario.Personas().Responder(7500050, qvx::mensaje::Si);
        QTest::keyClick(&Lista(), Qt::Key_Delete);
    });
}

void Planificador::Mandar(const QString &nodo, const QString &boton, int pregunta, int respuesta)
{
    ElegirNodo(Arbol(), nodo);
    Intentar([&] {
        if (pregunta != 0)
            escenario.Personas().Responder(pregunta, respuesta);
        Pulsar(escenario.De<QWidget>("Controles"), boton);
    });
}

// These are offered while no part is chosen.
void Planificador::Copiar(const QString &tipo)
{
    ElegirNodo(Arbol(), "N0000");
    Intentar([&] {
        escenario.Personas().Elegir("TIPO_EQUIPO", tipo);
        escenario.Personas().Responder(7500049, qvx::mensaje::Si);
        Pulsar(escenario.De<QWidget>("Controles"), "B3");
    });
}

void Planificador::Importar(const QString &ruta)
{
    ElegirNodo(Arbol(), "N0000");
    Intentar([&] {
        escenario.Personas().DarArchivo(ruta);
        escenario.Personas().Responder(7500048, qvx::mensaje::Si);
        Pulsar(escenario.De<QWidget>("Controles"), "B2");
    });
}

void Planificador::Exportar(const QString &ruta)
{
    escenario.Personas().DarArchivo(ruta);
    Mandar("N0000", "B1");
}

void Planificador::Rotular(const QString &nodo, const QString &descripcion)
{
    ElegirNodo(Arbol(), nodo);
    Intentar([&] {
        QTest::keyClick(&Arbol(), Qt::Key_F2);
        auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        if (!editor)
            return;
        editor->setText(nodo.mid(1) + " - " + descripcion);
        QTest::keyClick(editor, Qt::Key_Return);
    });
}

void Planificador::Mover(const QString &nodo, const QString &folio, const QString &destino)
{
    ElegirNodo(Arbol(), nodo);
    Intentar([&] {
        const auto soltar = [&] { // in an event, as every drop
            Arbol().setDropHighlight(Arbol().Item(destino));
            Q_EMIT Arbol().OLEDragDrop(folio);
        };
        QTimer::singleShot(0, &Arbol(), soltar);
        QCoreApplication::processEvents();
    });
}

void LlenarServicio(const Escenario &escenario, QWidget &editor)
{
    using Grid = SSDataWidgets_B_OLEDB::SSOleDBGrid;
    const auto caja = [&](const char *nombre, const QString &texto) {
        Escribir(escenario.En<txtQVX>(editor, nombre), texto);
    };
    const auto celda = [&](const char *nombre, const QString &columna, const QString &texto) {
        EscribirCelda(escenario.En<Grid>(editor, nombre), 0, columna, texto);
    };
    auto &fichas = escenario.En<ssTabQvx::ssTbQvx>(editor, "ssTabQvx");
    caja("txtTipoServicio", "9001");
    caja("txtPrioridad", "9001");
    caja("txtDias", "30");
    caja("txtTiempoEstimado", "2.5");
    caja("txtPrecio", "1,000.50");
    fichas.setTab(1);
    celda("ssManoObra", "Producto", "9000000001");
    celda("ssManoObra", "Cantidad", "2");
    fichas.setTab(2);
    celda("ssRefacciones", "Producto", "9000000002");
    celda("ssRefacciones", "Cantidad", "1.5");
    celda("ssRefacciones", "Gasto", "9001");
    fichas.setTab(3);
    celda("ssHerramientas", "Producto", "9000000003");
    celda("ssHerramientas", "Cantidad", "1");
}
