#pragma once

#include "app/comparar/Fuentes.h"

namespace historial
{

// What operations did to a plan, or what becomes of it when they are taken back, to be shown: beside the rows that
// change also those that they hang from, as they are or last were. Raises data errors.
comparar::Comparados LoQueHicieron(qvx::Conexion &conexion, const QString &tipo, const QList<qint64> &operaciones);
comparar::Comparados LoQueVuelve(qvx::Conexion &conexion, const QString &tipo, const QList<qint64> &operaciones);

} // namespace historial
