#pragma once

#include <QByteArray>
#include <QString>

// From the bytes of a stranger's file, or of the clipboard, to text.
namespace csv
{

constexpr qint64 TamanoMaximo = 64LL * 1024 * 1024; // of a file

enum class Codificacion { Utf8, Windows1252 };

// The bytes of a regular file, links to it followed. Raises a data error for anything else, for one above
// TamanoMaximo, and for one that changes meanwhile.
QByteArray LeerArchivo(const QString &ruta);

// Utf8, unless the bytes are something else.
Codificacion ProponerCodificacion(const QByteArray &octetos);
// The text, without a byte order mark. Raises a data error when the bytes are no text, or not in this encoding.
QString Texto(const QByteArray &octetos, Codificacion codificacion);

} // namespace csv
