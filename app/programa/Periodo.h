#pragma once

#include "app/programa/Fraccion.h"
#include "plan/DatosDePrograma.h"

#include <optional>

namespace programa
{

// How often a service is due, by its own words: days, a reading in a unit, 0 for none.
struct Frecuencia {
    double dias = 0;
    double lectura = 0;
    QString unidad;
};

// How often it comes under the use that a programme assumes, in days, and why. Nothing where no date can be known.
struct Periodo {
    std::optional<Fraccion> dias;
    QString motivo; // "cada 500 HR a 8 HR/día = 62.5 días; antes que 90 días"; or why there is no date
    bool mandaLectura = false;
    std::optional<Fraccion> umbral; // of a double service: from what use a day on the reading comes first
};
// Raises "Desbordamiento".
Periodo CalcularPeriodo(const Frecuencia &frecuencia, const qvx::DatosDePrograma &datos);

// Days from day zero to the first date: a period, 0, or what the meter leaves of it.
Fraccion PrimerDia(const Frecuencia &frecuencia, const Periodo &periodo, const qvx::DatosDePrograma &datos);

} // namespace programa
