#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

class QLabel;

namespace comunesQVX
{
class TreeView;
}

namespace textoQVX
{
class txtQVX;
}

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
    QLabel *Entre(const QString &nombre);
    void PonerAvance();
    void PonerSugerencia();
    QString Sugerencia() const;
    void PonerMenu();
    void RevisarIntegridad();

    QString tipoEquipo;
    // Controls of the screen; gone with it.
    QPointer<textoQVX::txtQVX> tipo;
    QPointer<textoQVX::txtQVX> nombreTipo;
    QPointer<comunesQVX::TreeView> partes;
    QLabel *sugerencia = nullptr;
    QTimer cambio;             // one look at the screen for any number of its changes
    bool tipoResuelto = false; // the key in the box was looked up
};
