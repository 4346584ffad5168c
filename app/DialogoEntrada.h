#pragma once

#include "data/Servidor.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class DialogoEntrada;
}

// Signs in at a server: asks for user and password until the server lets the person in or the person gives up.
class DialogoEntrada : public QDialog
{
    Q_OBJECT

public:
    // servidor: is given user and password; motivo: what the server said against those it was tried with, "" for
    // nothing.
    DialogoEntrada(qvx::Servidor &servidor, const QString &motivo, QWidget *duena = nullptr);
    ~DialogoEntrada() override;

private:
    void Entrar();
    void Rechazar(const QString &motivo, QWidget *campo);

    std::unique_ptr<Ui::DialogoEntrada> ui;
    qvx::Servidor &servidor;
};

// Tries to sign in with the cursor busy.
qvx::Servidor::Prueba ProbarEnEspera(const qvx::Servidor &servidor);
