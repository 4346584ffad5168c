#include "support/Planificador.h"

#include <QApplication>
#include <QLineEdit>
#include <QTimer>
#include <QTreeWidgetItemIterator>

using comunesQVX::Nodo;

Planificador::Planificador(Escenario *escenario_, Intento intento_)
    : escenario(escenario_), intento(std::move(intento_))
{
}

QString Planificador::Barras() const
{
    const Controles &barra = Barra();
    QString texto;
    for (bool valor : {barra.Ofrecido().nuevo, barra.Ofrecido().editar, barra.Ofrecido().eliminar,
                       barra.Ofrecido().reactivar, barra.Ofrecido().info})
        texto += valor ? "1" : "0";
    return texto + "|" + barra.Ofrecido().extras[0].titulo + "|" + barra.Ofrecido().extras[1].titulo + "|"
           + barra.Ofrecido().extras[2].titulo;
}

QString Planificador::Fila(const SSOleDBGrid &grid, int fila)
{
    QStringList celdas;
    for (int i = 0; i < grid.columnCount(); ++i)
        celdas.append(grid.Celda(fila, grid.NombreColumna(i)));
    return celdas.join("|");
}

void Planificador::ElegirTipo(const QString &tipo)
{
    Escribir(Tipo(), tipo);
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

bool Planificador::ElegirServicio(const QString &nodo, const QString &folio)
{
    ElegirNodo(Arbol(), nodo);
    Lista().setFocus();
    const auto filas = Lista().findItems(folio, Qt::MatchExactly);
    for (QTreeWidgetItem *fila : filas)
        QTest::mouseClick(Lista().viewport(), Qt::LeftButton, {}, Lista().visualItemRect(fila).center());
    return !filas.isEmpty();
}

// Answers that a failed attempt never asked for are not kept for another one.
void Planificador::Intentar(const std::function<void()> &paso)
{
    do {
        if (intento.antes)
            intento.antes();
        paso();
        QCoreApplication::processEvents();
        escenario->Personas().Descartar();
    } while (intento.otraVez && intento.otraVez());
}

void Planificador::EnLaForma(const std::function<void()> &abrir, const Pasos &pasos)
{
    bool abierta = false;
    const QPointer<QTimer> espera = EnElDialogo([&](QWidget &forma) {
        abierta = true;
        pasos(forma);
    });
    abrir();
    delete espera;
    if (!abierta && escenario->Personas().detalles.isEmpty())
        qFatal("No se abrió nada");
    if (!escenario->HayPantalla() || !Arbol().window()->isVisible())
        return;
    Arbol().window()->activateWindow(); // as a window manager does
    if (!QTest::qWaitForWindowActive(Arbol().window()))
        qFatal("La pantalla no volvió a activarse");
}

void Planificador::EnLaParte(const QString &nodo, const QString &boton, const Pasos &pasos)
{
    ElegirNodo(Arbol(), nodo);
    EnLaForma([&] { Pulsar(Barra(), boton); }, pasos);
}

void Planificador::EnElServicio(const QString &nodo, const QString &folio, const Pasos &pasos)
{
    if (folio.isEmpty())
        return EnLaParte(nodo, "B2", pasos);
    if (!ElegirServicio(nodo, folio))
        qFatal("No está el servicio %s", qPrintable(folio));
    EnElElegido(pasos);
}

void Planificador::EnElElegido(const Pasos &pasos)
{
    const QPoint fila = Lista().visualItemRect(Lista().currentItem()).center();
    EnLaForma([&] { QTest::mouseDClick(Lista().viewport(), Qt::LeftButton, {}, fila); }, pasos);
}

void Planificador::Aceptar(const QWidget &forma)
{
    auto *barra = forma.findChild<QWidget *>("Controles1"); // the editor's; a part's form has the other
    Pulsar(barra ? *barra : En<QWidget>(forma, "Controles"), "Aceptar");
}

QString Planificador::Guardar(const QWidget &forma, const char *clave)
{
    Intentar([&] { Aceptar(forma); });
    return forma.isVisible() ? QString() : Caja(forma, clave).Text();
}

QString Planificador::GuardarParte(const QString &nodo, const QString &boton, const QString &descripcion)
{
    QString clave;
    EnLaParte(nodo, boton, [&](QWidget &forma) {
        Escribir(Caja(forma, "txtTexto"), descripcion);
        clave = Guardar(forma, "txtClave");
    });
    return clave;
}

QString Planificador::NuevoServicio(const QString &nodo, const QString &precio)
{
    QString folio;
    EnElServicio(nodo, {}, [&](QWidget &editor) {
        LlenarServicio(editor);
        Escribir(Caja(editor, "txtPrecio"), precio);
        folio = Guardar(editor, "txtID");
    });
    return folio;
}

QString Planificador::CambiarServicio(const QString &nodo, const QString &folio, const QString &precio)
{
    if (!ElegirServicio(nodo, folio))
        return {};
    QString guardado;
    EnElElegido([&](QWidget &editor) {
        Escribir(Caja(editor, "txtPrecio"), precio);
        guardado = Guardar(editor, "txtID");
    });
    return guardado;
}

void Planificador::EliminarServicio(const QString &nodo, const QString &folio, int respuesta)
{
    ElegirServicio(nodo, folio);
    Intentar([&] {
        escenario->Personas().Responder(7500050, respuesta);
        QTest::keyClick(&Lista(), Qt::Key_Delete);
    });
}

void Planificador::Mandar(const QString &nodo, const QString &boton, int pregunta, int respuesta)
{
    ElegirNodo(Arbol(), nodo);
    Intentar([&] {
        if (pregunta != 0)
            escenario->Personas().Responder(pregunta, respuesta);
        Pulsar(Barra(), boton);
    });
}

// These are offered while no part is chosen.
void Planificador::Copiar(const QString &tipo, int respuesta)
{
    ElegirNodo(Arbol(), "N0000");
    Intentar([&] {
        escenario->Personas().Elegir("TIPO_EQUIPO", tipo);
        escenario->Personas().Responder(7500049, respuesta);
        Pulsar(Barra(), "B3");
    });
}

void Planificador::Importar(const QString &ruta, int respuesta)
{
    ElegirNodo(Arbol(), "N0000");
    Intentar([&] {
        escenario->Personas().DarArchivo(ruta);
        escenario->Personas().Responder(7500048, respuesta);
        Pulsar(Barra(), "B2");
    });
}

void Planificador::Exportar(const QString &ruta)
{
    escenario->Personas().DarArchivo(ruta);
    Mandar("N0000", "B1");
}

void Planificador::Rotular(const QString &nodo, const QString &texto)
{
    ElegirNodo(Arbol(), nodo);
    Intentar([&] {
        QTest::keyClick(&Arbol(), Qt::Key_F2);
        auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        if (!editor)
            return;
        editor->setText(texto);
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

void Planificador::LlenarServicio(const QWidget &editor)
{
    for (const auto &[caja, texto] : {qMakePair("txtTipoServicio", "9001"),
                                      {"txtPrioridad", "9001"},
                                      {"txtDias", "30"},
                                      {"txtTiempoEstimado", "2.5"},
                                      {"txtPrecio", "1,000.50"}})
        Escribir(Caja(editor, caja), texto);
    int pagina = 0;
    for (const auto &[grid, celdas] : {qMakePair("ssManoObra", QStringList{"Producto=9000000001", "Cantidad=2"}),
                                       {"ssRefacciones", {"Producto=9000000002", "Cantidad=1.5", "Gasto=9001"}},
                                       {"ssHerramientas", {"Producto=9000000003", "Cantidad=1"}}}) {
        Fichas(editor).setTab(++pagina);
        for (const QString &celda : celdas)
            EscribirCelda(Grid(editor, grid), 0, celda.section('=', 0, 0), celda.section('=', 1));
    }
}
