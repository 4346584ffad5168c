#pragma once

#include <QObject>

class VentanaPrincipal;

// The commands of the menu "Archivo" that copy and restore the open database. On a server they say who does it there.
class MenuDeRespaldo : public QObject
{
    Q_OBJECT

public:
    // base: the open database's file, "" on a server.
    MenuDeRespaldo(VentanaPrincipal &ventana, const QString &base);

Q_SIGNALS:
    // The whole database is to be restored from this copy.
    void TodoPedido(const QString &copia);

private:
    void Copiar();
    void Restaurar();
    bool EnServidor();

    VentanaPrincipal &ventana;
    QString base;
};
