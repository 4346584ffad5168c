#pragma once

#include "app/servicios/Propuestas.h"

#include <QWidget>
#include <optional>

class QComboBox;
class QLineEdit;

namespace qvx
{
class Conexion;
}

// What of the services is to change, and to what: a number, a share, or a key of a catalogue.
class PeticionDeCambio : public QWidget
{
    Q_OBJECT

public:
    explicit PeticionDeCambio(QWidget *padre = nullptr);
    // Reads what the catalogues offer. Raises data errors.
    void Ofrecer(qvx::Conexion &conexion);

    // What is asked, nothing as long as it is not complete.
    std::optional<propuestas::Peticion> Pedido() const;
    // What is missing or wrong.
    QString Falta() const;
    QString NombreElegido() const;

Q_SIGNALS:
    void Cambio();

private:
    using Que = propuestas::Peticion::Que;
    Que Elegido() const;
    bool DeCatalogo() const { return Elegido() == Que::Prioridad || Elegido() == Que::TipoServicio; }
    void AlElegir();

    QComboBox *cboQue;
    QComboBox *cboComo;
    QLineEdit *txtNumero;
    QComboBox *cboClave;
    QList<QPair<QString, QString>> prioridades;
    QList<QPair<QString, QString>> tipos;
    QList<QPair<QString, QString>> unidades;
};
