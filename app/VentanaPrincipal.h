#pragma once

#include <QMainWindow>

// The window of the stand-alone host: docks the screen and is its parent object ("Transaccion", "iParametros").
class VentanaPrincipal : public QMainWindow
{
    Q_OBJECT
    Q_PROPERTY(QString Transaccion READ Transaccion)
    Q_PROPERTY(QString iParametros READ iParametros)

public:
    VentanaPrincipal(QWidget *pantalla, const QString &tipoEquipo, const QString &operador, const QString &baseDatos);

    QString Transaccion() const { return "KT580"; }
    QString iParametros() const { return tipoEquipo; }

protected:
    void closeEvent(QCloseEvent *evento) override;

private:
    void PonerAvance();
    void PonerMenu();
    void RevisarIntegridad();

    QString tipoEquipo;
};
