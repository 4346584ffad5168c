#pragma once

#include "plan/Cambios.h"
#include "system/Exporta.h"

namespace QVX_EXPORTA qvx
{

// The plant's name, as it stands on reports; "" for none. Raises data errors.
QString NombreDePlanta(Conexion &conexion);

// Keeps another one, signed and logged. leido: the one that was read. Raises an ErrorEjecucion in Spanish for a name
// that is too long or of several lines, and when somebody else has kept another one since; and data errors.
void GuardarNombreDePlanta(Conexion &conexion, const Firmante &firmante, const QString &leido, const QString &nombre);

} // namespace qvx
