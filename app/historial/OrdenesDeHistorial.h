#pragma once

struct Argumentos;

// "--historial", "--deshacer", "--rehacer" and "--historial-depurar". Gives the exit code, 1 when an operation cannot
// be taken back; raises an ErrorEjecucion.
int OrdenarHistorial(const Argumentos &argumentos);
