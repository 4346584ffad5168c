#pragma once

#include <QFile>

// The whole of a file, "" when there is none.
inline QByteArray Contenido(const QString &ruta)
{
    QFile archivo(ruta);
    return archivo.open(QIODevice::ReadOnly) ? archivo.readAll() : QByteArray();
}

// A new file, in the place of another; gives its path.
inline QString Poner(const QString &ruta, const QByteArray &contenido)
{
    QFile archivo(ruta);
    archivo.remove(); // a file that is cut short waits for the disk
    if (!archivo.open(QIODevice::WriteOnly) || archivo.write(contenido) != contenido.size())
        qFatal("%s", qPrintable(archivo.errorString()));
    return ruta;
}
