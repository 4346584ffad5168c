#pragma once

#include "system/Exporta.h"

#include <QString>

namespace QVX_EXPORTA qvx
{

class Conexion;

// The query text that the database keeps under a name. Raises ElementoNoEncontrado when there is none, and data errors.
QString ConsultaGuardada(Conexion &conexion, const QString &nombre);

} // namespace qvx
