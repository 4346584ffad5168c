#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

// Asks for the address of a server. Who he is there, and his password, are asked for afterwards, by the server.
class DialogoServidor : public QDialog
{
    Q_OBJECT

public:
    // "" when the person gave up.
    static QString Preguntar(QWidget *duena);

    explicit DialogoServidor(QWidget *duena);

protected:
    void accept() override;

private:
    QLineEdit *txtDireccion;
    QLabel *lblMotivo;
};
