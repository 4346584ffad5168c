#pragma once

#include <QMenu>

class Ventana;

// The menu "Archivo": which database is open.
class MenuArchivo : public QMenu
{
    Q_OBJECT

public:
    // hayBase: a database is open, and can be closed.
    MenuArchivo(Ventana &ventana, bool hayBase);

Q_SIGNALS:
    // A file, or the address of a server.
    void BasePedida(const QString &direccion);
    void CierrePedido();

private:
    void AbrirArchivo();
    void EntrarAServidor();
    void LlenarRecientes();

    Ventana &ventana;
    QMenu *recientes;
};
