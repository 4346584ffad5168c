#pragma once

#include <QStatusBar>

class QLabel;

// Who works here, what he does next or how far a long job is, and in which database.
class BarraDeEstado : public QStatusBar
{
    Q_OBJECT

public:
    BarraDeEstado(const QString &operador, const QString &baseDatos, QWidget *padre = nullptr);

    void Sugerir(const QString &que);

private:
    QLabel *Entre(const QString &nombre);
    void PonerAvance();

    QLabel *sugerencia;
};
