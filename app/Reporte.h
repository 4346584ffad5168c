#pragma once

#include "app/Acceso.h"

#include <QString>

// Exit codes of the program.
namespace salida
{
constexpr int Hecho = 0;
constexpr int Fallido = 1;
constexpr int MalUso = 2;
} // namespace salida

// A line for whoever started the program.
void Escribir(FILE *archivo, const QString &texto);

// Tells an error on the standard error, and in a box to whoever started the program from a menu. Gives the exit code.
int Reportar(const QString &error, const QString &detalles = {});

// Does what was ordered and gives the exit code; an ErrorEjecucion is reported.
template <class Pasos>
int ConReporte(Pasos &&pasos)
{
    try {
        return pasos();
    } catch (const SinAcceso &error) {
        return Reportar(error.Descripcion(), error.Detalles());
    } catch (const qvx::ErrorEjecucion &error) {
        return Reportar(error.Descripcion(), error.Aclaracion());
    }
}
