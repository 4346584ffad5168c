#pragma once

#include "system/Exporta.h"

#include <QTabWidget>

namespace QVX_EXPORTA ssTabQvx
{

// The host's tab control; pages are numbered from 0. Enter moves on as Tab does, through KeyPress(13).
class ssTbQvx : public QTabWidget
{
    Q_OBJECT

public:
    explicit ssTbQvx(QWidget *padre = nullptr);

    int Tab() const { return currentIndex(); }
    void setTab(int pagina) { setCurrentIndex(pagina); }
    // Opens a page to work in it: the focus goes to its first field. Nothing on it takes the focus: to its tab.
    void IrA(int pagina);

Q_SIGNALS:
    void Click(int pagina); // another page was chosen, by the person or in code
    void KeyPress(int codigo);

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void keyPressEvent(QKeyEvent *evento) override;

private:
    bool DejarPagina();
};

} // namespace ssTabQvx
