#pragma once

#include <QTime>

#include "data/Cuantos.h"

using qvx::Cuantos;

// Of what stays on a page that could not be read anew.
inline QString NoEsActual(const QTime &leida, const QString &de = {})
{
    return "NO ES ACTUAL: esto se leyó a las " + leida.toString("HH:mm:ss") + de
           + " y puede haber cambiado. Pulse F5 para leerlo de nuevo.";
}
