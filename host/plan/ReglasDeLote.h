#pragma once

#include "plan/Arbol.h"
#include "system/Exporta.h"

// What the screen lets a planner do with one service or part holds for many at once: why something must not be, as a
// sentence; "" when it may be. Asked for the preview, and again inside the transaction that writes.
namespace QVX_EXPORTA qvx
{

// estado: the service's own.
QString ObjecionAlServicio(const Arbol &arbol, const QString &parte, const QString &estado);
// Of a part that services are to hang from.
QString ObjecionAlDestino(const Arbol &arbol, const QString &parte);
// Of putting a part with all below it under another one, or under the root.
QString ObjecionAlTraslado(const Arbol &arbol, const QString &parte, const QString &nuevoPadre);

} // namespace qvx
