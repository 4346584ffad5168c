#include "controls/Controles.h"

#include "controls/EntradaPendiente.h"

#include <QAction>
#include <QKeyEvent>
#include <QPointer>
#include <QToolButton>

namespace toolbarQVX
{

namespace
{

constexpr int LadoIcono = 20;

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
    extras = {Agregar("B1", "", "", Qt::CTRL | Qt::Key_1, &Controles::B1Click),
              Agregar("B2", "", "", Qt::CTRL | Qt::Key_2, &Controles::B2Click),
              Agregar("B3", "", "", Qt::CTRL | Qt::Key_3, &Controles::B3Click)};
    aceptar = Agregar("Aceptar", "Aceptar", "aceptar", Qt::Key_F4, &Controles::Aceptar);
    cancelar = Agregar("Cancelar", "Cancelar", "cancelar", Qt::Key_Escape, &Controles::Cancelar);
    auto *relleno = new QWidget;
    relleno->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(relleno);
    cerrar = Agregar("Cerrar", "Cerrar", "cerrar", Qt::CTRL | Qt::Key_W, &Controles::Cerrar);

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
    QAction *orden = addAction(icono.isEmpty() ? QIcon() : QIcon(":/controls/" + icono + ".svg"), texto);
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
    const QPointer<Controles> viva = this;
    const bool vista = isVisible();
    if (&orden != cancelar && &orden != cerrar && !qvx::EntradaPendiente::ConfirmarLaDelFoco())
        return;
    if (!viva || isVisible() != vista) // the form went while a message waited
        return;
    // An entry that cannot be taken may have been left behind, on a page that is not open.
    if (&orden == aceptar && !qvx::EntradaPendiente::ConfirmarLasDe(*parentWidget()))
        return;
    if (viva && isVisible() == vista && orden.isEnabled() && orden.text() == titulo)
        Q_EMIT(this->*senal)();
}

void Controles::Ofrecer(const Estado &nuevoEstado)
{
    estado = nuevoEstado;
    nuevo->setEnabled(estado.nuevo);
    editar->setEnabled(estado.editar);
    eliminar->setEnabled(estado.eliminar);
    reactivar->setEnabled(estado.reactivar);
    info->setEnabled(estado.info);
    aceptar->setEnabled(estado.aceptar);
    for (std::size_t i = 0; i < extras.size(); ++i) {
        const auto &[titulo, icono] = estado.extras.at(i);
        QAction *orden = extras.at(i);
        orden->setText(titulo);
        orden->setIcon(QIcon(icono));
        orden->setToolTip(Ayuda(titulo, orden->shortcut().toString(QKeySequence::NativeText)));
        orden->setVisible(juego == Pantalla && !titulo.isEmpty());
    }
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
    for (QAction *orden : {aceptar, cancelar})
        orden->setVisible(juego == Dialogo);
    Ofrecer(estado);
}

} // namespace toolbarQVX
