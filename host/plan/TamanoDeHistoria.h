#pragma once

#include "system/Exporta.h"

#include <QtGlobal>

namespace QVX_EXPORTA qvx
{

class Conexion;

// How much room the history takes.
struct TamanoDeHistoria {
    qint64 operaciones = 0;
    qint64 octetos = 0;
    bool estimado = false; // the engine does not tell: its rows were counted
};

// With its indexes. Raises data errors.
TamanoDeHistoria LeerTamanoDeHistoria(Conexion &conexion);

} // namespace qvx
