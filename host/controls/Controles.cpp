#include "controls/Controles.h"

#include "controls/EntradaPendiente.h"

#include <QAction>
#include <QHash>
#include <QKeyEvent>
#include <QToolButton>

namespace toolbarQVX
{

namespace
{

constexpr int LadoIcono = 20;

QIcon Icono(const QString &nombre)
{
    return QIcon(":/controls/" + nombre + ".svg");
}

QIcon IconoDeTitulo(const QString &titulo)
{
    static const QHash<QString, QString> iconos{
        {"Exportar XML", "exportar"},           {"Importar XML", "importar"}, {"Eliminar parte", "parte_borrar"},
        {"Agregar servicio", "servicio_nuevo"}, {"Copiar plan", "copiar"},
    };
    const QString nombre = iconos.value(titulo);
    return nombre.isEmpty() ? QIcon() : Icono(nombre);
}

QString Ayuda(const QString &texto, const QString &atajo)
{
    return atajo.isEmpty() ? texto : texto + " (" + atajo + ")";
}

} // namespace

Controles::Controles(QWidget *padre) : QToolBar(padre)
{
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setIconSize({LadoIcono, LadoIcono});

    nuevo = Agregar("Nuevo", "Nuevo", "nuevo", Qt::CTRL | Qt::Key_N, &Controles::Nuevo);
    editar = Agregar("Editar", "Editar", "editar", Qt::CTRL | Qt::Key_E, &Controles::Editar);
    eliminar = Agregar("Eliminar", "Dar de baja", "eliminar", Qt::CTRL | Qt::Key_B, &Controles::Eliminar);
    reactivar = Agregar("Reactivar", "Reactivar", "reactivar", Qt::CTRL | Qt::Key_R, &Controles::Reactivar);
    separador = addSeparator();
    info = Agregar("Info", "Información", "info", Qt::CTRL | Qt::Key_I, &Controles::Info);
    separadorExtras = addSeparator();
    extra1 = Agregar("B1", "", "", Qt::CTRL | Qt::Key_1, &Controles::B1Click);
    extra2 = Agregar("B2", "", "", Qt::CTRL | Qt::Key_2, &Controles::B2Click);
    extra3 = Agregar("B3", "", "", Qt::CTRL | Qt::Key_3, &Controles::B3Click);
    aceptar = Agregar("Aceptar", "Aceptar", "aceptar", {}, &Controles::Aceptar);
    cancelar = Agregar("Cancelar", "Cancelar", "cancelar", {}, &Controles::Cancelar);
    auto *relleno = new QWidget;
    relleno->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(relleno);
    cerrar = Agregar("Cerrar", "Cerrar", "cerrar", Qt::CTRL | Qt::Key_W, &Controles::Cerrar);
    aceptar->setToolTip(Ayuda("Aceptar", "F4"));
    cancelar->setToolTip(Ayuda("Cancelar", "Esc"));

    for (QAction *orden : {nuevo, editar, eliminar, reactivar, info, aceptar})
        orden->setEnabled(false);
    for (QAction *extra : {extra1, extra2, extra3})
        Titular(extra, "");
    setJuegoComandos(Pantalla);

    // Among them the one that opens what a narrow bar has no room for.
    for (QToolButton *boton : findChildren<QToolButton *>()) {
        boton->setFocusPolicy(Qt::TabFocus);
        boton->installEventFilter(this);
    }
}

QAction *Controles::Agregar(const QString &nombre, const QString &texto, const QString &icono,
                            const QKeySequence &atajo, void (Controles::*senal)())
{
    QAction *orden = addAction(icono.isEmpty() ? QIcon() : Icono(icono), texto);
    orden->setObjectName(nombre);
    orden->setShortcut(atajo);
    orden->setAutoRepeat(false);
    orden->setToolTip(Ayuda(texto, atajo.toString(QKeySequence::NativeText)));
    connect(orden, &QAction::triggered, this, [this, orden, senal] { Ejecutar(*orden, senal); });
    return orden;
}

// Confirming what is being typed may turn the command off or put another one in its place: that one was not pressed.
void Controles::Ejecutar(const QAction &orden, void (Controles::*senal)())
{
    const QString titulo = orden.text();
    if (&orden != cancelar && &orden != cerrar)
        qvx::EntradaPendiente::ConfirmarLaDelFoco();
    if (orden.isEnabled() && orden.text() == titulo)
        Q_EMIT(this->*senal)();
}

void Controles::Titular(QAction *extra, const QString &titulo)
{
    extra->setText(titulo);
    extra->setIcon(IconoDeTitulo(titulo));
    extra->setToolTip(Ayuda(titulo, extra->shortcut().toString(QKeySequence::NativeText)));
    extra->setVisible(juego == Pantalla && !titulo.isEmpty());
}

bool Controles::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent *>(evento)->key();
        auto *boton = qobject_cast<QToolButton *>(objeto);
        if (boton && (tecla == Qt::Key_Return || tecla == Qt::Key_Enter)) {
            boton->click();
            return true;
        }
    }
    return QToolBar::eventFilter(objeto, evento);
}

void Controles::setJuegoComandos(Juego nuevoJuego)
{
    juego = nuevoJuego;
    for (QAction *orden : {nuevo, editar, eliminar, reactivar, separador, info, separadorExtras, cerrar})
        orden->setVisible(juego == Pantalla);
    for (QAction *extra : {extra1, extra2, extra3})
        extra->setVisible(juego == Pantalla && !extra->text().isEmpty());
    for (QAction *orden : {aceptar, cancelar})
        orden->setVisible(juego == Dialogo);
}

bool Controles::NuevoDisponible() const
{
    return nuevo->isEnabled();
}

void Controles::setNuevoDisponible(bool valor)
{
    nuevo->setEnabled(valor);
}

bool Controles::EditarDisponible() const
{
    return editar->isEnabled();
}

void Controles::setEditarDisponible(bool valor)
{
    editar->setEnabled(valor);
}

bool Controles::EliminarDisponible() const
{
    return eliminar->isEnabled();
}

void Controles::setEliminarDisponible(bool valor)
{
    eliminar->setEnabled(valor);
}

bool Controles::ReactivarDisponible() const
{
    return reactivar->isEnabled();
}

void Controles::setReactivarDisponible(bool valor)
{
    reactivar->setEnabled(valor);
}

bool Controles::ExtrasDisponibles() const
{
    return info->isEnabled();
}

void Controles::setExtrasDisponibles(bool valor)
{
    info->setEnabled(valor);
}

bool Controles::AceptarDisponible() const
{
    return aceptar->isEnabled();
}

void Controles::setAceptarDisponible(bool valor)
{
    aceptar->setEnabled(valor);
}

QString Controles::Titulo1() const
{
    return extra1->text();
}

void Controles::setTitulo1(const QString &titulo)
{
    Titular(extra1, titulo);
}

QString Controles::Titulo2() const
{
    return extra2->text();
}

void Controles::setTitulo2(const QString &titulo)
{
    Titular(extra2, titulo);
}

QString Controles::Titulo3() const
{
    return extra3->text();
}

void Controles::setTitulo3(const QString &titulo)
{
    Titular(extra3, titulo);
}

void Controles::PulsarAceptar()
{
    aceptar->trigger();
}

void Controles::PulsarCancelar()
{
    cancelar->trigger();
}

} // namespace toolbarQVX
