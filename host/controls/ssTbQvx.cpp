#include "controls/ssTbQvx.h"

#include "controls/Teclas.h"

#include <QKeyEvent>
#include <QTabBar>

namespace ssTabQvx
{

ssTbQvx::ssTbQvx(QWidget *padre) : QTabWidget(padre)
{
    tabBar()->installEventFilter(this);
    connect(this, &QTabWidget::currentChanged, this, &ssTbQvx::Click);
}

void ssTbQvx::IrA(int pagina)
{
    setTab(pagina);
    const QWidget *hoja = widget(pagina);
    for (QWidget *control = tabBar()->nextInFocusChain(); control != tabBar(); control = control->nextInFocusChain())
        if (hoja->isAncestorOf(control) && control->focusPolicy() & Qt::TabFocus && control->isVisibleTo(hoja)
            && control->isEnabled())
            return control->setFocus(Qt::ShortcutFocusReason);
    tabBar()->setFocus(Qt::ShortcutFocusReason);
}

// Of the tab bar only: an Enter that a page left over is not the tab control's.
bool ssTbQvx::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == tabBar() && evento->type() == QEvent::KeyPress) {
        if (comunesQVX::CodigoTecla(static_cast<QKeyEvent *>(evento)->key()) == comunesQVX::tecla::Enter) {
            Q_EMIT KeyPress(comunesQVX::tecla::Enter);
            return true;
        }
    }
    return QTabWidget::eventFilter(objeto, evento);
}

} // namespace ssTabQvx
