#pragma once

#include "system/Exporta.h"

#include <QString>

namespace QVX_EXPORTA qvx
{

// Where a path of the host's drive C: ("C:\inetpub\...") lies on this machine: below the folder "unidad_c" beside the
// program; where there is none, below the installed one. Any other path is itself.
QString RutaEnUnidadC(const QString &ruta);

} // namespace qvx
