#pragma once

#include "system/Exporta.h"

#include <QString>

namespace QVX_EXPORTA qvx
{

// True of an installed system, false of one that runs from the folder that it was built in.
bool Instalado();

// The folder of the libraries that are loaded when they are needed: the component's, the server's. Installed, it is the
// private one below this library's; in a build it is this library's own.
QString CarpetaDeComponentes();

// The folder of what an installed system reads and is no program; its drive C: ("unidad_c") is in it. "" in a build.
QString CarpetaDeDatos();

// Sees to it that a folder is there, with those above it. Gives what hinders that, "" for nothing.
QString HacerCarpeta(const QString &carpeta);

} // namespace qvx
