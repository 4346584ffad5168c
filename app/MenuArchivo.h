#pragma once

#include <QMenu>

class VentanaPrincipal;

// The menu "Archivo": which database is open.
class MenuArchivo : public QMenu
{
    Q_OBJECT

public:
    explicit MenuArchivo(VentanaPrincipal &ventana);

Q_SIGNALS:
    // A file, or the address of a server.
    void BasePedida(const QString &direccion);

private:
    void AbrirArchivo();
    void EntrarAServidor();
    void LlenarRecientes();

    VentanaPrincipal &ventana;
    QMenu *recientes;
};
