#pragma once

#include "system/Exporta.h"

#include <QFunctionPointer>
#include <QString>

namespace QVX_EXPORTA qvx
{

// Loads a library of the folder of components, whatever the working folder is, and gives what it is asked for. It stays
// loaded. Raises an ErrorEjecucion that begins with what is missing when there is none.
QFunctionPointer ResolverAparte(const QString &archivo, const char *entrada, const QString &falta);

template <class Funcion>
Funcion EntradaAparte(const QString &archivo, const char *entrada, const QString &falta)
{
    return reinterpret_cast<Funcion>(ResolverAparte(archivo, entrada, falta));
}

} // namespace qvx
