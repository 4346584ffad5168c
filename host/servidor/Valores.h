#pragma once

#include "servidor/Enlace.h"

namespace qvx
{

// A value on its way to a parameter of that type, a null array for an absent one. A number becomes what the server
// would assign to the type: whole where that is, and never with an exponent.
QByteArray ComoParametro(const QVariant &valor, Oid tipo);
// A field of an answer as a value of its type; an absent one is null, and of that type still.
QVariant ComoValor(const PGresult *respuesta, int fila, int columna);
QMetaType TipoDe(Oid tipo);
// What an answer of failure says: text and SQLSTATE.
Enlace::Fallo FalloDe(const PGresult *respuesta);

} // namespace qvx
