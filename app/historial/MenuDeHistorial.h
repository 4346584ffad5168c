#pragma once

#include "app/historial/DialogoDeshacer.h"

class QAction;
class QMenu;
class VentanaPrincipal;

// What the menu "Edición" does with the history: takes back what the operator did last to the plan that he looks at,
// does it again, and shows the history of what he has chosen on the screen.
class MenuDeHistorial : public QObject
{
    Q_OBJECT

public:
    MenuDeHistorial(QMenu &edicion, VentanaPrincipal &ventana);

protected:
    // In a text box the keys are the text's own.
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    void Ultima(historial::Peticion::Que que);
    void DeLoElegido(bool servicio);
    void PonerEstado();
    bool Puede();

    VentanaPrincipal &ventana;
    QAction *deshacer;
    QAction *rehacer;
};
