#pragma once

struct Argumentos;

// "--actualizar-costos" and "--completar-gastos": tell each line and, with "--si", write what nobody has to decide.
// Give the exit code, 1 when something is left that a person has to decide; raise an ErrorEjecucion.
int ActualizarLosCostos(const Argumentos &argumentos);
int CompletarLosGastos(const Argumentos &argumentos);
