#pragma once

#include "system/Exporta.h"

#include <QWidget>

namespace QVX_EXPORTA coloresQVX
{

// The host's colour scheme, placed invisibly on a form.
class colorQVX : public QWidget
{
    Q_OBJECT

public:
    explicit colorQVX(QWidget *padre = nullptr) : QWidget(padre) { hide(); }

    // Applies the scheme to the form that the control stands on, before it is first shown.
    void Aplicar();
    // Likewise at once, to a window that has no such control.
    static void AplicarA(QWidget &ventana);

    bool eventFilter(QObject *objeto, QEvent *evento) override;
};

} // namespace coloresQVX
