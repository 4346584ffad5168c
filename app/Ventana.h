#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>

class VentanaDelManual;

namespace qvx
{
class Interaccion;
}

// What the program's windows share, with a database or without: commands in menus, the manual, the way to another
// database.
class Ventana : public QMainWindow
{
    Q_OBJECT

public:
    using QMainWindow::QMainWindow;

    // A form is open, or a transaction: commands wait.
    virtual bool Ocupada() const;
    virtual qvx::Interaccion &Personas() const = 0;

Q_SIGNALS:
    // Another database is to be opened: a file, or the address of a server.
    void BasePedida(const QString &direccion);
    // The one that is open is to be closed.
    void CierrePedido();

protected:
    // The menu of which database is open. hayBase: one is.
    void PonerArchivo(bool hayBase);
    // Adds manual and keys. capitulo: gives the heading that the manual opens at.
    QMenu *PonerAyuda(const std::function<QString()> &capitulo);

private:
    void AbrirManual(const QString &capitulo);

    QPointer<VentanaDelManual> manual;
};
