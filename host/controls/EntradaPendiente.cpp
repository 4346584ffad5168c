#include "controls/EntradaPendiente.h"

#include <QApplication>
#include <QWidget>
#include <algorithm>

namespace qvx
{

bool EntradaPendiente::EsSalida(Qt::FocusReason motivo)
{
    return motivo != Qt::PopupFocusReason && motivo != Qt::ActiveWindowFocusReason;
}

bool EntradaPendiente::ConfirmarLaDelFoco()
{
    for (QWidget *control = QApplication::focusWidget(); control; control = control->parentWidget())
        if (auto *entrada = dynamic_cast<EntradaPendiente *>(control))
            return entrada->ConfirmarEntrada();
    return true;
}

void EntradaPendiente::AlSalir(QWidget &control, bool seToma)
{
    if (seToma) {
        ConfirmarEntrada();
        return;
    }
    const auto volver = [this, &control] {
        if (control.window()->isVisible())
            ConfirmarEntrada();
    };
    QMetaObject::invokeMethod(&control, volver, Qt::QueuedConnection);
}

bool EntradaPendiente::ConfirmarLasDe(const QWidget &formulario)
{
    const auto controles = formulario.findChildren<QWidget *>();
    return std::all_of(controles.cbegin(), controles.cend(), [](QWidget *control) {
        auto *entrada = dynamic_cast<EntradaPendiente *>(control);
        return !entrada || entrada->ConfirmarEntrada();
    });
}

} // namespace qvx
