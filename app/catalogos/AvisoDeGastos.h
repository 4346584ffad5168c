#pragma once

#include <QTimer>

// How many spare parts of the plan on the screen have no expense type, as a copy or an import leaves them: counted once
// after a tree was loaded, and while there are any again when the window comes back from another.
class AvisoDeGastos : public QObject
{
    Q_OBJECT

public:
    explicit AvisoDeGastos(QObject *ventana);

    // The plan is another, or was loaded anew; "" for none.
    void Mirar(const QString &tipoEquipo);
    // What the person may do about them, "" when there are none.
    QString Texto() const;

    bool eventFilter(QObject *objeto, QEvent *evento) override;

Q_SIGNALS:
    void Cambio();

private:
    void Contar();

    QString tipo;
    int cuantas = 0;
    QTimer espera;
};
