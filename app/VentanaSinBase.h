#pragma once

#include "app/Ventana.h"

#include <memory>

// The window while no database is open: it opens one, or ends.
class VentanaSinBase : public Ventana
{
    Q_OBJECT

public:
    VentanaSinBase();
    ~VentanaSinBase() override;

    qvx::Interaccion &Personas() const override { return *personas; }

protected:
    void closeEvent(QCloseEvent *evento) override;

private:
    QWidget *Invitacion();

    std::unique_ptr<qvx::Interaccion> personas; // there is no session to ask for it
};
