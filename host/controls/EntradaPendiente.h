#pragma once

#include "system/Exporta.h"

#include <Qt>
#include <functional>

class QWidget;

namespace QVX_EXPORTA qvx
{

// A control whose entry counts only when it is left: a form's command confirms it first, so that accepting by key or
// by a button that takes no focus works on what was typed.
class EntradaPendiente
{
public:
    virtual ~EntradaPendiente() = default;
    // False when what was typed cannot be taken: it stays, with the cursor, and the person knows what is expected.
    virtual bool ConfirmarEntrada() = 0;

    // Whether a control that lost the focus was left: a menu over it, or another window over the form, does not leave
    // it.
    static bool EsSalida(Qt::FocusReason motivo);
    // Confirms the entry of the control that has the focus, if it or a control around it has one pending.
    static bool ConfirmarLaDelFoco();
    // Confirms the entries of all controls of a form, up to the first that cannot be taken.
    static bool ConfirmarLasDe(const QWidget &formulario);
    // Runs now what waits for the end of a change of focus (TrasElFoco).
    static void AcabarElFoco();

protected:
    // The control is left with an entry that can be taken or not; then the focus comes back, when it has arrived where
    // it was going.
    void AlSalir(QWidget &control, bool seToma);
    // Runs steps that may ask the person something when the toolkit has ended its change of focus, which would not
    // outlive a host that destroys the window meanwhile: before any key or click after it reaches a control, the click
    // that changed the focus among them. Not for a control that is gone by then.
    static void TrasElFoco(QWidget &control, const std::function<void()> &pasos);
};

} // namespace qvx
