#pragma once

#include "plan/Historia.h"

#include <QTimer>
#include <QWidget>

class QComboBox;
class QDateEdit;
class QLineEdit;

// Which operations the history shows: of a plan, a person, a time, a part or a service.
class FiltrosDeHistorial : public QWidget
{
    Q_OBJECT

public:
    explicit FiltrosDeHistorial(QWidget *padre = nullptr);

    // What there is to choose from; what was chosen stays. Raises data errors.
    void Ofrecer(qvx::Conexion &conexion);
    // Shows a plan, a part of it or a service of it alone, of all people and times; "" for any.
    void Limitar(const QString &tipo, const QString &parte, const QString &folio);
    qvx::FiltroDeHistoria Filtro(qvx::Conexion &conexion) const;
    QString Tipo() const;
    bool Vacios() const;

Q_SIGNALS:
    void Cambio();

private:
    QComboBox *Lista(const QString &nombre, const QString &titulo, const QString &todos);
    QLineEdit *Caja(const QString &nombre, const QString &titulo, const QString &sugerencia);
    QDateEdit *Fecha(const QString &nombre, const QString &titulo);
    void PonerEstado();

    QComboBox *cboPlan;
    QComboBox *cboPersona;
    QComboBox *cboPeriodo;
    QDateEdit *fecDesde;
    QDateEdit *fecHasta;
    QLineEdit *txtParte;
    QLineEdit *txtFolio;
    QTimer espera; // one reading for what is typed in a row
};
