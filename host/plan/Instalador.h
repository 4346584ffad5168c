#pragma once

#include "system/Exporta.h"

#include <QString>
#include <memory>

namespace QVX_EXPORTA qvx
{

class Conexion;

// Opens the embedded database in a file, which is made (mode 0600, with catalogues, and with example plans if asked)
// when it is not there. A file of an older version is copied beside itself ("plan.db.v2-2026-11-22_0931", mode 0600)
// and brought to this one. Raises an ErrorEjecucion in Spanish for the person: a file that is not this system's, is
// newer than the program, cannot be written, stands on a full disk, or is held by another program. Such a file is left
// as it was, and none is left half made.
std::unique_ptr<Conexion> AbrirBaseDeDatos(const QString &archivo, bool conEjemplos);

// Likewise a file that is nobody else's, in which an older version is upgraded without a copy. sujeto: what its errors
// are said of.
std::unique_ptr<Conexion> AbrirProvisional(const QString &archivo, const QString &sujeto);

} // namespace qvx
