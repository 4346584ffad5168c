#pragma once

struct Argumentos;

// What the command line may order besides the exchange of documents. Each gives the exit code and raises an
// ErrorEjecucion in Spanish.

// The window, until it is closed.
int Mostrar(const Argumentos &argumentos);
// What the trees do not reach, without a window. Finding nothing is the good end.
int Revisar(const Argumentos &argumentos);
// The schema on a server, made or brought to this program's version, without a window.
int CambiarElEsquema(const Argumentos &argumentos);
