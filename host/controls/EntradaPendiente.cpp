#include "controls/EntradaPendiente.h"

#include <QApplication>
#include <QWidget>

namespace qvx
{

bool EntradaPendiente::EsSalida(Qt::FocusReason motivo)
{
    return motivo != Qt::PopupFocusReason && motivo != Qt::ActiveWindowFocusReason;
}

void EntradaPendiente::ConfirmarLaDelFoco()
{
    for (QWidget *control = QApplication::focusWidget(); control; control = control->parentWidget()) {
        if (auto *entrada = dynamic_cast<EntradaPendiente *>(control)) {
            entrada->ConfirmarEntrada();
            return;
        }
    }
}

} // namespace qvx
