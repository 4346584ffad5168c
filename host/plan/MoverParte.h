#pragma once

#include "plan/Cambios.h"
#include "system/Exporta.h"

namespace QVX_EXPORTA qvx
{

// A part with all below it, as it was read, and the part that it is to hang from, or the root.
struct TrasladoDeParte {
    QString tipoEquipo;
    QString parte;
    QString sello; // its version
    QString nuevoPadre;
};

// Puts the part under another one in one transaction that holds the plan: signed, logged, and what is below it comes
// along. Raises an ErrorEjecucion in Spanish for a part that was changed since it was read (who and when), for what the
// rules refuse (plan/ReglasDeLote.h), and data errors; then nothing has changed.
void MoverParte(Conexion &conexion, const Firmante &firmante, const TrasladoDeParte &traslado);

} // namespace qvx
