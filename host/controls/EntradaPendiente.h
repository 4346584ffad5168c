#pragma once

#include <Qt>

namespace qvx
{

// A control whose entry counts only when it is left: a form's command confirms it first, so that accepting by key or
// by a button that takes no focus works on what was typed.
class EntradaPendiente
{
public:
    virtual ~EntradaPendiente() = default;
    virtual void ConfirmarEntrada() = 0;

    // Whether a control that lost the focus was left: a menu over it, or another window over the form, does not leave
    // it.
    static bool EsSalida(Qt::FocusReason motivo);
    // Confirms the entry of the control that has the focus, if it or a control around it has one pending.
    static void ConfirmarLaDelFoco();
};

} // namespace qvx
