#pragma once

#include "app/comparar/Fuentes.h"

#include <QDialog>

class VistaComparacion;

// What a plan would become, before anybody consents to it.
class DialogoPrevia : public QDialog
{
    Q_OBJECT

public:
    struct Textos {
        QString titulo;
        QString explicacion;
        QString aceptar; // of the button
    };
    DialogoPrevia(const Textos &textos, comparar::Comparados comparados, QWidget *duena);

protected:
    void showEvent(QShowEvent *evento) override;

private:
    comparar::Comparados porMostrar; // until the columns can be laid out
    VistaComparacion *vista;
};
