#include "app/historial/MenuDeHistorial.h"

#include "app/ModoLectura.h"
#include "app/OrdenDeMenu.h"
#include "app/Trampas.h"
#include "app/VentanaPrincipal.h"
#include "controls/DeAmbos.h"
#include "plan/Historia.h"
#include "plan/RegistrosDeCatalogo.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

namespace
{

using Que = historial::Peticion::Que;

const QKeySequence TeclaDeRehacer("Ctrl+Y");

bool EsCajaDeTexto(const QWidget *control)
{
    return control && control->metaObject()->indexOfSlot("redo()") >= 0 && !control->property("readOnly").toBool();
}

// A cell or a label that is being written is no change yet.
bool HayCeldaAbierta()
{
    const QWidget *foco = QApplication::focusWidget();
    const QWidget *padre = foco ? foco->parentWidget() : nullptr;
    return EsCajaDeTexto(foco) && padre && qobject_cast<const QAbstractItemView *>(padre->parentWidget());
}

void Decir(const QWidget &ventana, int identificador, const QString &que)
{
    qvx::Sistema().Mensaje(que, qvx::mensaje::Informacion, "Quorvex", ventana.winId(), "QVX",
                           "ERR-ID:" + QString::number(identificador));
}

} // namespace

MenuDeHistorial::MenuDeHistorial(QMenu &edicion, VentanaPrincipal &ventana_) : QObject(&edicion), ventana(ventana_)
{
    QAction *const primera = edicion.actions().value(0);
    deshacer = AgregarOrden(edicion, ventana, "mnuDeshacerOperacion", "&Deshacer…", QKeySequence("Ctrl+Z"),
                            [this] { Ultima(Que::Deshacer); });
    rehacer = AgregarOrden(edicion, ventana, "mnuRehacerOperacion", "&Rehacer…", TeclaDeRehacer,
                           [this] { Ultima(Que::Rehacer); });
    rehacer->setShortcuts({TeclaDeRehacer, QKeySequence("Ctrl+Shift+Z")});
    edicion.insertActions(primera, {deshacer, rehacer, edicion.addSeparator()});
    edicion.addSeparator();
    AgregarOrden(edicion, ventana, "mnuHistorialDeParte", "&Historial de esta parte", QKeySequence("Ctrl+H"),
                 [this] { DeLoElegido(false); });
    AgregarOrden(edicion, ventana, "mnuHistorialDeServicio", "Historial de este ser&vicio",
                 QKeySequence("Ctrl+Shift+H"), [this] { DeLoElegido(true); });
    connect(&edicion, &QMenu::aboutToShow, this, &MenuDeHistorial::PonerEstado);
    ventana.installEventFilter(this);
}

bool MenuDeHistorial::eventFilter(QObject *objeto, QEvent *evento)
{
    const auto tipo = evento->type();
    if ((tipo == QEvent::ShortcutOverride || tipo == QEvent::KeyPress) && EsCajaDeTexto(QApplication::focusWidget())
        && QKeySequence(static_cast<QKeyEvent *>(evento)->keyCombination()) == TeclaDeRehacer) {
        evento->accept();
        if (tipo == QEvent::KeyPress)
            QMetaObject::invokeMethod(QApplication::focusWidget(), "redo");
        return true;
    }
    return QObject::eventFilter(objeto, evento);
}

// Nobody gives and takes rights while he works: off once is off.
bool MenuDeHistorial::Puede()
{
    const bool puede = qvx::LeerDerechos(Base()).planes;
    deshacer->setEnabled(puede);
    rehacer->setEnabled(puede);
    return puede;
}

void MenuDeHistorial::PonerEstado()
{
    if (!ventana.Ocupada())
        ConTrampa(ventana, 1000161, [this] { Puede(); });
}

void MenuDeHistorial::Ultima(Que que)
{
    if (HayCeldaAbierta())
        return;
    ConTrampa(ventana, 1000162, [&] {
        const QString tipo = ventana.TipoDeLaPagina();
        if (!Puede())
            return Decir(ventana, 1000163, QuienMira() + " puede mirar los planes, no cambiarlos.");
        if (tipo.isEmpty())
            return Decir(ventana, 1000164,
                         "Se deshace lo último que usted hizo a un plan: elija primero un tipo de equipo.");
        const QString operador = qvx::Sesion::Actual().Operador();
        const qint64 numero = que == Que::Rehacer ? qvx::UltimaRehacible(Base(), tipo, operador)
                                                  : qvx::UltimaDeshacible(Base(), tipo, operador);
        if (numero == 0)
            return Decir(ventana, 1000165,
                         "No hay nada suyo que " + QString(que == Que::Rehacer ? "rehacer" : "deshacer")
                             + " en el plan del tipo de equipo " + tipo
                             + ". Lo que hicieron otros está en la página Historial.");
        const qvx::DeAmbos<DialogoDeshacer> dialogo(new DialogoDeshacer({que, numero, tipo}, &ventana));
        if (dialogo->Preguntar())
            ventana.PlanDeshecho();
    });
}

void MenuDeHistorial::DeLoElegido(bool servicio)
{
    const auto [tipo, parte, folio] = ventana.LoElegido();
    if (servicio ? folio.isEmpty() : parte.isEmpty())
        return Decir(ventana, 1000166,
                     servicio ? "Elija primero un servicio en la página Plan o en la página Servicios."
                              : "Elija primero una parte en la página Plan o en la página Servicios.");
    ventana.MostrarHistorial(tipo, servicio ? QString() : parte, servicio ? folio : QString());
}
