#include "support/Planificador.h"

#include "controls/Comunes.h"
#include "controls/SSOleDBGrid.h"
#include "controls/ssTbQvx.h"
#include "controls/txtQVX.h"

#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
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

QWidget &Planificador::Barra() const
{
    return escenario.De<QWidget>("Controles");
}

void Planificador::ElegirTipo(const QString &tipo)
{
    Escribir(escenario.De<txtQVX>("txtTipoEquipo"), tipo);
}

void Planificador::Releer()
{
    Intentar([&] { QTest::keyClick(&Arbol(), Qt::Key_F5); });
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

bool Planificador::TieneHijas(const QString &nodo) const
{
    return Arbol().Item(nodo)->childCount() > 0;
}

QStringList Planificador::Servicios(const QString &nodo)
{
    ElegirNodo(Arbol(), nodo);
    QStringList folios;
    for (int i = 0; i < Lista().Count(); ++i)
        folios.append(Lista().Texto(i));
    return folios;
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

void Planificador::EnLaForma(const std::function<void()> &abrir, const Pasos &pasos)
{
    QTimer espera;
    QObject::connect(&espera, &QTimer::timeout, &espera, [&] {
        QWidget *dialogo = QApplication::activeModalWidget();
        if (!dialogo || !dialogo->isActiveWindow())
            return;
        espera.stop();
        pasos(*dialogo);
        if (dialogo == QApplication::activeModalWidget())
            dialogo->close();
    });
    espera.start(1);
    abrir();
    Arbol().window()->activateWindow(); // as a window manager does
    if (!QTest::qWaitForWindowActive(Arbol().window()))
        qFatal("La pantalla no volvió a activarse");
}

// Accepts a form: the text of its key box when that closed it.
QString Planificador::Guardar(QWidget &dialogo, const QString &barra, const QString &clave)
{
    Intentar([&] { Pulsar(escenario.En<QWidget>(dialogo, barra), "Aceptar"); });
    return dialogo.isVisible() ? QString() : escenario.En<txtQVX>(dialogo, clave).Text();
}

QString Planificador::EnLaParte(const QString &nodo, const QString &comando, const QString &descripcion)
{
    QString clave;
    ElegirNodo(Arbol(), nodo);
    EnLaForma([&] { Pulsar(Barra(), comando); },
              [&](QWidget &dialogo) {
                  Escribir(escenario.En<txtQVX>(dialogo, "txtTexto"), descripcion);
                  clave = Guardar(dialogo, "Controles", "txtClave");
              });
    return clave;
}

QString Planificador::NuevaParte(const QString &nodo, const QString &descripcion)
{
    return EnLaParte(nodo, "Nuevo", descripcion);
}

bool Planificador::EditarParte(const QString &nodo, const QString &descripcion)
{
    return !EnLaParte(nodo, "Editar", descripcion).isEmpty();
}

QString Planificador::NuevoServicio(const QString &nodo, const QString &precio)
{
    QString folio;
    ElegirNodo(Arbol(), nodo);
    EnLaForma([&] { Pulsar(Barra(), "B2"); },
              [&](QWidget &editor) {
                  LlenarServicio(escenario, editor);
                  Escribir(escenario.En<txtQVX>(editor, "txtPrecio"), precio);
                  folio = Guardar(editor, "Controles1", "txtID");
              });
    return folio;
}

// Nothing is chosen when the service is not in the list.
void Planificador::ElegirServicio(const QString &nodo, const QString &folio)
{
    const auto fila = Servicios(nodo).indexOf(folio);
    if (fila < 0)
        return;
    const QPoint punto = Lista().visualItemRect(Lista().topLevelItem(static_cast<int>(fila))).center();
    Lista().setFocus();
    QTest::mouseClick(Lista().viewport(), Qt::LeftButton, {}, punto);
}

bool Planificador::CambiarServicio(const QString &nodo, const QString &folio, const QString &precio)
{
    bool guardado = false;
    ElegirServicio(nodo, folio);
    const auto abrir = [&] {
        if (auto *elegido = Lista().currentItem())
            QTest::mouseDClick(Lista().viewport(), Qt::LeftButton, {}, Lista().visualItemRect(elegido).center());
    };
    EnLaForma(abrir, [&](QWidget &editor) {
        Escribir(escenario.En<txtQVX>(editor, "txtPrecio"), precio);
        guardado = !Guardar(editor, "Controles1", "txtID").isEmpty();
    });
    return guardado;
}

void Planificador::EliminarServicio(const QString &nodo, const QString &folio)
{
    ElegirServicio(nodo, folio);
    Intentar([&] {
        escenario.Personas().Responder(7500050, qvx::mensaje::Si);
        QTest::keyClick(&Lista(), Qt::Key_Delete);
    });
}

void Planificador::Mandar(const QString &nodo, const QString &comando)
{
    ElegirNodo(Arbol(), nodo);
    Intentar([&] { Pulsar(Barra(), comando); });
}

void Planificador::Retirar(const QString &nodo)
{
    Mandar(nodo, "Eliminar");
}

void Planificador::Reactivar(const QString &nodo)
{
    ElegirNodo(Arbol(), nodo);
    Intentar([&] {
        escenario.Personas().Responder(7500045, qvx::mensaje::Aceptar);
        Pulsar(Barra(), "Reactivar");
    });
}

void Planificador::EliminarParte(const QString &nodo, const std::function<void()> &alPreguntar)
{
    ElegirNodo(Arbol(), nodo);
    const int pregunta = Arbol().Item(nodo)->childCount() > 0 ? 7500046 : 7500047;
    Intentar([&] {
        escenario.Personas().Responder(pregunta, qvx::mensaje::Si, alPreguntar);
        Pulsar(Barra(), "B1");
    });
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
    Arbol().expandAll();
    ElegirServicio(nodo, folio);
    Intentar([&] {
        QString folios;
        Q_EMIT Lista().OLEStartDrag(folios);
        QMimeData datos;
        datos.setText(folios);
        Arbol().EnsureVisible(Arbol().Item(destino));
        const QPoint punto = Arbol().visualItemRect(Arbol().Item(destino)).center();
        QDragEnterEvent entra(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Arbol().viewport(), &entra);
        QDragMoveEvent pasa(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Arbol().viewport(), &pasa);
        QDropEvent cae(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Arbol().viewport(), &cae);
    });
}

void Planificador::Copiar(const QString &tipo)
{
    ElegirNodo(Arbol(), "N0000");
    Intentar([&] {
        escenario.Personas().Elegir("TIPO_EQUIPO", tipo);
        escenario.Personas().Responder(7500049, qvx::mensaje::Si);
        Pulsar(Barra(), "B3");
    });
}

// Offered while no part is chosen.
void Planificador::Importar(const QString &ruta)
{
    ElegirNodo(Arbol(), "N0000");
    Intentar([&] {
        escenario.Personas().DarArchivo(ruta);
        escenario.Personas().Responder(7500048, qvx::mensaje::Si);
        Pulsar(Barra(), "B2");
    });
}

void Planificador::Exportar(const QString &ruta)
{
    ElegirNodo(Arbol(), "N0000");
    Intentar([&] {
        escenario.Personas().DarArchivo(ruta);
        Pulsar(Barra(), "B1");
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
