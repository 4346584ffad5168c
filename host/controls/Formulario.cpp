#include "controls/Formulario.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QScreen>
#include <algorithm>

namespace qvx
{

namespace
{

constexpr int TwipsPorPulgada = 1440;
constexpr QSize Marco(16, 48); // what a window manager puts around a window

} // namespace

Formulario::Formulario(const QWidget *duena)
    : QWidget(duena->window(), Qt::Dialog | Qt::WindowCloseButtonHint | Qt::WindowTitleHint)
{
    setWindowModality(Qt::ApplicationModal);
    if (const auto *formulario = qobject_cast<const Formulario *>(duena)) {
        connect(formulario, &Formulario::Descargado, this, &Formulario::Descargar);
        connect(formulario, &QObject::destroyed, this, &Formulario::Descargar);
    }
}

void Formulario::Cargar()
{
    if (cargado)
        return;
    cargado = true;
    Form_Load();
}

void Formulario::MostrarModal()
{
    const QPointer<Formulario> vivo = this;
    resize(Cabida(*this, size()));
    QEventLoop espera;
    connect(this, &Formulario::Oculto, &espera, &QEventLoop::quit);
    connect(this, &QObject::destroyed, &espera, &QEventLoop::quit);
    show();
    espera.exec(QEventLoop::DialogExec);
    if (!vivo)
        throw FormularioIdo();
}

void Formulario::Descargar()
{
    if (!cargado)
        return;
    cargado = false;
    Form_Unload();
    hide();
    Q_EMIT Descargado();
}

int Formulario::Twips(int pixeles) const
{
    return pixeles * TwipsPorPulgada / logicalDpiX();
}

int Formulario::Pixeles(int twips) const
{
    return std::max(0, twips * logicalDpiX() / TwipsPorPulgada);
}

QSize Formulario::Cabida(const QWidget &ventana, const QSize &deseada)
{
    return deseada.boundedTo(ventana.screen()->availableSize() - Marco);
}

bool Formulario::event(QEvent *evento)
{
    const bool resultado = QWidget::event(evento);
    if (evento->type() == QEvent::WindowActivate && cargado && isVisible())
        Form_Activate();
    return resultado;
}

void Formulario::showEvent(QShowEvent *evento)
{
    Cargar();
    QWidget::showEvent(evento);
    // A form shown inside a window that is active already gets no activation of its own.
    if (!isWindow() && window()->isActiveWindow())
        Form_Activate();
}

void Formulario::resizeEvent(QResizeEvent *evento)
{
    QWidget::resizeEvent(evento);
    Form_Resize();
}

void Formulario::closeEvent(QCloseEvent *evento)
{
    Descargar();
    evento->accept();
}

void Formulario::hideEvent(QHideEvent *evento)
{
    QWidget::hideEvent(evento);
    if (!evento->spontaneous())
        Q_EMIT Oculto();
}

} // namespace qvx
