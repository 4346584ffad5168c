#pragma once

#include <QString>
#include <QStringList>

// The command line of the stand-alone host.
struct Argumentos {
    QString baseDatos;  // file; the user's data folder when not given
    QString tipoEquipo; // equipment type to open on, "" for none
    QString operador;   // the system's user when not given
    bool sinEjemplos = false;
    // Without a window: at most one of the three, and its file. exportar holds the equipment type's key.
    QString exportar;
    bool importar = false;
    bool validar = false;
    QString archivo;
    bool si = false;      // questions of the import are answered Yes
    bool revisar = false; // without a window: what the trees do not reach
    bool ayuda = false;
    bool version = false;
    QString error; // why the command line is wrong, "" when it is right

    static Argumentos Leer(const QStringList &linea);
    bool EsIntercambio() const { return !exportar.isEmpty() || importar || validar; }
    static QString Ayuda();
};
