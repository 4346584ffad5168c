#pragma once

#include "session/Sesion.h"

#include <QWidget>
#include <functional>

// Does the steps; an error that they raise is told once, in the name of the window, and leaves all as it is.
// identificador: of the place in the code, from 1000000.
void ConTrampa(const QWidget &ventana, int identificador, const std::function<void()> &pasos);

// The database of whoever is signed in.
inline qvx::Conexion &Base()
{
    return qvx::Sesion::Actual().Conexion();
}
