#include "controls/ssTbQvx.h"

#include "controls/EntradaPendiente.h"
#include "controls/Teclas.h"

#include <QKeyEvent>
#include <QPointer>
#include <QTabBar>

namespace ssTabQvx
{

ssTbQvx::ssTbQvx(QWidget *padre) : QTabWidget(padre)
{
    tabBar()->installEventFilter(this);
    connect(this, &QTabWidget::currentChanged, this, [this](int pagina) {
        qvx::EntradaPendiente::AcabarElFoco(); // the page before was left
        Q_EMIT Click(pagina);
    });
}

void ssTbQvx::IrA(int pagina)
{
    if (!DejarPagina())
        return;
    setTab(pagina);
    const QWidget *hoja = widget(pagina);
    for (QWidget *control = tabBar()->nextInFocusChain(); control != tabBar(); control = control->nextInFocusChain())
        if (hoja->isAncestorOf(control) && control->focusPolicy() & Qt::TabFocus && control->isVisibleTo(hoja)
            && control->isEnabled())
            return control->setFocus(Qt::ShortcutFocusReason);
    tabBar()->setFocus(Qt::ShortcutFocusReason);
}

// What is typed on the page is confirmed before the toolkit hides it, whose frames would not outlive a form that goes
// with a message. False when the page is not left, or nothing of it is there any more.
bool ssTbQvx::DejarPagina()
{
    const QPointer<ssTbQvx> viva = this;
    return qvx::EntradaPendiente::ConfirmarLaDelFoco() && viva;
}

void ssTbQvx::keyPressEvent(QKeyEvent *evento)
{
    const bool cambia = evento->matches(QKeySequence::NextChild) || evento->matches(QKeySequence::PreviousChild);
    if (!cambia || DejarPagina())
        QTabWidget::keyPressEvent(evento);
}

// Of the tab bar only: an Enter that a page left over is not the tab control's.
bool ssTbQvx::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == tabBar() && evento->type() == QEvent::MouseButtonPress) {
        const int otra = tabBar()->tabAt(static_cast<QMouseEvent *>(evento)->position().toPoint());
        if (otra >= 0 && otra != Tab() && !DejarPagina())
            return true;
    }
    if (objeto == tabBar() && evento->type() == QEvent::Wheel && !DejarPagina())
        return true;
    if (objeto == tabBar() && evento->type() == QEvent::KeyPress) {
        if (comunesQVX::CodigoTecla(static_cast<QKeyEvent *>(evento)->key()) == comunesQVX::tecla::Enter) {
            Q_EMIT KeyPress(comunesQVX::tecla::Enter);
            return true;
        }
    }
    return QTabWidget::eventFilter(objeto, evento);
}

} // namespace ssTabQvx
