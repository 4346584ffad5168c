#pragma once

#include "app/Textos.h"
#include "plan/Costos.h"

// How costs are told, in the window and on the command line.

QString TextoDeCosto(double costo);
QString TextoDeImporte(double importe);
// With its sign: "+$339.995".
QString TextoDeCambio(double cambio);
// What is left as it is though it differs too, "" for nothing: a sentence with a blank before it.
QString TextoDeAparte(int lineas);
// What became of the plans.
QString TextoDeEscritos(const qvx::CostosEscritos &escritos);
