#pragma once

#include "plan/RegistrosDeCatalogo.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;

// A row of a catalogue, new or known, in a form: what is refused stays as it was typed, with a word on what is
// expected.
class DialogoRegistro : public QDialog
{
    Q_OBJECT

public:
    struct Hecho {
        QString clave;    // of what was written, "" when the person gave up
        QString copiarDe; // of a new equipment type: whose plan it is to get, "" for none
    };

    // registro: the row to change; without a key a new one with these values. Raises data errors.
    static Hecho Preguntar(QWidget *duena, const qvx::TablaDeCatalogo &tabla, const qvx::RegistroDeCatalogo &registro);

private:
    DialogoRegistro(QWidget *duena, const qvx::TablaDeCatalogo &tabla, const qvx::RegistroDeCatalogo &registro);
    void PonerCampos();
    QWidget *Campo(int columna);
    void PonerCopia(QFormLayout &campos);
    void PonerBotones();
    qvx::RegistroDeCatalogo Escrito() const;
    QWidget *CampoDe(int columna) const;
    void Aceptar();
    void Objetar(const qvx::Objecion &objecion);

    const qvx::TablaDeCatalogo &tabla;
    const qvx::RegistroDeCatalogo antes;
    const bool nuevo;
    const qvx::SituacionDeCatalogo situacion;
    QLineEdit *txtClave;
    QList<QWidget *> controles; // one for each column
    QLabel *lblObjecion;
    QCheckBox *chkCopiar = nullptr;
    QComboBox *cboOrigen = nullptr;
};
