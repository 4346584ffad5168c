#pragma once

#include "app/programa/PlanMedido.h"
#include "app/reportes/Hoja.h"

namespace programa
{

// The tables of a programme as a spreadsheet takes them. Hours and money are those of all machines, unrounded.

// One row per service and date. cuales: places of rows.
Hoja HojaDeFechas(const PlanMedido &medido, const Programa &programa, const QList<int> &cuales);
// Services without a row, with why.
Hoja HojaDeApartes(const PlanMedido &medido, const Programa &programa);
// By trade and month, what is measured in something else than hours below; with the capacity where there is one.
Hoja HojaDeCarga(const PlanMedido &medido, const Programa &programa);
// By expense type, product and unit, month by month; units are never mixed.
Hoja HojaDeRefacciones(const PlanMedido &medido, const Programa &programa);
// By month: labour, stop, cost, cost at today's, price.
Hoja HojaDeCostos(const PlanMedido &medido, const Programa &programa);
// By date, and what doing stops together that are so many days apart would save.
Hoja HojaDeParos(const PlanMedido &medido, const Programa &programa);
Hoja HojaDeParosJuntos(const PlanMedido &medido, const Programa &programa, int dias);
// Of services that are due by days and by a reading: from what use a day the reading comes first.
Hoja HojaDeUmbrales(const PlanMedido &medido, const Programa &programa);

// All rows of a programme.
QList<int> Todas(const Programa &programa);

} // namespace programa
