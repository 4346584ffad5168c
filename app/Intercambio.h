#pragma once

struct Argumentos;

// Exports, imports or validates a plan's document as the command line says, through the screen's own commands and
// without a window. True when it was done; a refusal is told on the standard error. Raises an ErrorEjecucion.
bool Intercambiar(const Argumentos &argumentos);
