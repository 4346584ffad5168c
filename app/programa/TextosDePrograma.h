#pragma once

#include "app/programa/HojasDePrograma.h"

// What the page says of a programme in words, and its tables as a list shows them.

// "Del 2027-01-01 al 2027-12-31 (día cero 2026-12-31, todo recién hecho) · 3 equipos · 8 HR/día …"
QString TextoDeDatos(const programa::Programa &programa);
// The year's own figures beside those of the long run.
QString TextoDeLargoPlazo(const programa::PlanMedido &medido, const programa::Programa &programa,
                          const programa::Medida &ano);
// What joining stops that are so many days apart would save.
QString TextoDeAhorro(const programa::PlanMedido &medido, const programa::Programa &programa, int dias);

// With a row below that adds up the columns that are added up.
Hoja ConTotal(Hoja hoja);
// Likewise behind each run of rows that are alike in the first column, and of all.
Hoja ConSubtotales(const Hoja &hoja);
// The column that takes the room: the first text that is no key.
int EstiradaDe(const Hoja &hoja);
