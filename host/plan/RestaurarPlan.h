#pragma once

#include "plan/Cambios.h"
#include "plan/FilasDelPlan.h"
#include "system/Exporta.h"

namespace QVX_EXPORTA qvx
{

// How many rows are written or removed.
struct FilasCambiadas {
    int partes = 0;
    int servicios = 0;
    int lineas = 0;

    bool Ninguna() const { return partes + servicios + lineas == 0; }
};

// How many rows of a plan are not the same in another one.
FilasCambiadas Distintas(const FilasDelPlan &antes, const FilasDelPlan &despues);

// Writes the rows of a plan as despues has them, in one transaction that holds the plan: keys and values byte for byte,
// signed and logged by who restores, with new versions; a service is signed too when only its lines change. Rows that
// are the same already are not touched. antes: the plan as it was shown. Raises an ErrorEjecucion in Spanish when it is
// not so any more, for a type that is not on offer, and for rows of another plan; and data errors. Then nothing has
// changed. deDonde: what the rows are of, for the history.
FilasCambiadas RestaurarPlan(Conexion &conexion, const Firmante &firmante, const FilasDelPlan &antes,
                             const FilasDelPlan &despues, const QString &deDonde);

} // namespace qvx
