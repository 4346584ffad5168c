#include "controls/ssTbQvx.h"

#include "controls/Comunes.h"

#include <QKeyEvent>
#include <QTabBar>

namespace ssTabQvx
{

ssTbQvx::ssTbQvx(QWidget *padre) : QTabWidget(padre)
{
    tabBar()->installEventFilter(this);
    connect(this, &QTabWidget::currentChanged, this, &ssTbQvx::Click);
}

// Of the tab bar only: an Enter that a page left over is not the tab control's.
bool ssTbQvx::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == tabBar() && evento->type() == QEvent::KeyPress) {
        const int codigo = comunesQVX::CodigoTecla(static_cast<QKeyEvent *>(evento)->key());
        if (codigo == 13) {
            Q_EMIT KeyPress(codigo);
            return true;
        }
    }
    return QTabWidget::eventFilter(objeto, evento);
}

} // namespace ssTabQvx
