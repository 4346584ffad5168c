#pragma once

#include <QString>
#include <QStringList>

// The command line of the stand-alone host.
struct Argumentos {
    QString baseDatos;  // file; the user's data folder when not given
    QString tipoEquipo; // equipment type to open on, "" for none
    QString operador;   // the system's user when not given
    bool sinEjemplos = false;
    bool ayuda = false;
    bool version = false;
    QString error; // why the command line is wrong, "" when it is right

    static Argumentos Leer(const QStringList &linea);
    static QString Ayuda();
};
