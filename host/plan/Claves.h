#pragma once

#include "system/Exporta.h"

#include <QString>
#include <QStringList>

namespace QVX_EXPORTA qvx
{

class Conexion;

// The keys of the plan and their numbering.
namespace claves
{

// The root of every tree of parts, which never is a row.
inline const QString Raiz = "0000";
// Its text in the tree. A service that was dropped on it has it as its part's key.
inline const QString TextoRaiz = "RAIZ";
bool EsRaiz(const QString &parte);

// Whether a number follows the key's: true up to 2147483646, and for a key that begins with no digit.
bool DejaSiguiente(const QString &clave);

// The mask of a catalogue's keys; predeterminada where there is none. Raises data errors.
QString Mascara(Conexion &conexion, const QString &codigo, const QString &predeterminada);

// The next free number of a key: highest + 1 among the rows of the table whose columns have these values, seen from
// inside the running transaction. Raises data errors, and "Desbordamiento" past 2147483647.
qint32 Siguiente(Conexion &conexion, const QString &tabla, const QString &columna, const QStringList &columnas,
                 const QStringList &valores);

} // namespace claves

} // namespace qvx
