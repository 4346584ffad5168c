#pragma once

#include "app/comparar/Fuentes.h"

#include <QWidget>

class QComboBox;
class QLineEdit;
class QPushButton;

// One side of a comparison: an equipment type and when, or a document.
class SelectorDeFuente : public QWidget
{
    Q_OBJECT

public:
    // nombre: of this side, a part of the controls' names; tipos: keys and descriptions.
    SelectorDeFuente(const QString &nombre, const QString &titulo, const QList<QPair<QString, QString>> &tipos,
                     QWidget *padre = nullptr);

    void Elegir(const comparar::Fuente &fuente);
    // Raises an ErrorEjecucion in Spanish for what was not filled in.
    comparar::Fuente Elegida() const;

private:
    bool EsDocumento() const;
    void AlCambiar();
    void BuscarArchivo();

    QComboBox *cboPlan;
    QComboBox *cboCuando;
    QLineEdit *txtCual; // an operation's number, a day, or a file
    QPushButton *cmdArchivo;
};
