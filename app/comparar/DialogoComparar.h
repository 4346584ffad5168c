#pragma once

#include "app/comparar/Fuentes.h"

#include <QDialog>

class SelectorDeFuente;
class VistaComparacion;

// "Comparar": two plans, a plan with itself at another time, a plan with a document.
class DialogoComparar : public QDialog
{
    Q_OBJECT

public:
    // actual: the equipment type on the screen, "" for none. Reads the equipment types; raises data errors.
    DialogoComparar(const QString &actual, QWidget *duena);

    // Chooses both sides and compares them.
    void Comparar(const comparar::Fuente &una, const comparar::Fuente &otra);

private:
    void Hacer();

    SelectorDeFuente *una;
    SelectorDeFuente *otra;
    VistaComparacion *vista;
};
