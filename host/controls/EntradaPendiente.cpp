#include "controls/EntradaPendiente.h"

#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <deque>

namespace qvx
{

namespace
{

// By a timer, since those wait while a job draws the windows.
class Cola : public QObject
{
public:
    static Cola &Unica()
    {
        static QPointer<Cola> cola;
        if (!cola)
            cola = new Cola;
        return *cola;
    }

    void Agregar(QWidget &control, const std::function<void()> &pasos)
    {
        if (pendientes.empty())
            qApp->installEventFilter(this);
        pendientes.emplace_back(&control, pasos);
        reloj.start(0);
    }

    void Vaciar()
    {
        qApp->removeEventFilter(this);
        while (!pendientes.empty()) {
            const auto [control, pasos] = pendientes.front();
            pendientes.pop_front();
            if (control)
                pasos();
        }
    }

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override
    {
        if (!objeto->isWidgetType() || !EsDePersona(evento->type()))
            return false;
        const QPointer<QObject> vivo = objeto;
        Vaciar();
        if (!vivo)
            evento->accept(); // there is nobody left to give it to
        return !vivo;
    }

private:
    Cola() : QObject(qApp)
    {
        reloj.setSingleShot(true);
        connect(&reloj, &QTimer::timeout, this, &Cola::Vaciar);
    }

    static bool EsDePersona(QEvent::Type tipo)
    {
        return (tipo >= QEvent::MouseButtonPress && tipo <= QEvent::MouseButtonDblClick)
               || (tipo >= QEvent::KeyPress && tipo <= QEvent::KeyRelease) || tipo == QEvent::Wheel;
    }

    std::deque<std::pair<QPointer<QWidget>, std::function<void()>>> pendientes;
    QTimer reloj;
};

} // namespace

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
    const auto confirmar = [this, &control] {
        if (control.window()->isVisible())
            ConfirmarEntrada();
    };
    if (seToma)
        TrasElFoco(control, confirmar);
    else
        QMetaObject::invokeMethod(&control, confirmar, Qt::QueuedConnection);
}

void EntradaPendiente::TrasElFoco(QWidget &control, const std::function<void()> &pasos)
{
    Cola::Unica().Agregar(control, pasos);
}

void EntradaPendiente::AcabarElFoco()
{
    Cola::Unica().Vaciar();
}

bool EntradaPendiente::ConfirmarLasDe(const QWidget &formulario)
{
    QList<QPointer<QWidget>> controles; // a message of one may end the form
    for (QWidget *control : formulario.findChildren<QWidget *>())
        controles.append(control);
    return std::all_of(controles.cbegin(), controles.cend(), [](const QPointer<QWidget> &control) {
        auto *entrada = dynamic_cast<EntradaPendiente *>(control.data());
        return !entrada || entrada->ConfirmarEntrada();
    });
}

} // namespace qvx
