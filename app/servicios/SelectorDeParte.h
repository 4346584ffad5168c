#pragma once

#include "app/lectura/PlanLeido.h"

#include <QWidget>

class QLineEdit;

namespace qvx
{
class ModeloTabla;
class VistaTabla;
} // namespace qvx

// The parts that something can be put under, by their paths, searched by words: one is chosen.
class SelectorDeParte : public QWidget
{
    Q_OBJECT

public:
    // movida: a part that is to be moved, whose own kin is left out and which may hang from the root; "" for services.
    SelectorDeParte(const lectura::Plan &plan, const QString &movida, QWidget *padre = nullptr);

    // The key of the part chosen, "" for none.
    QString Elegida() const;
    void Elegir(const QString &parte);

Q_SIGNALS:
    void Cambio();

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    QLineEdit *txtBuscar;
    qvx::VistaTabla *lista;
    qvx::ModeloTabla *modelo;
};
