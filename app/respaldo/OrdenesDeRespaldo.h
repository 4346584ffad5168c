#pragma once

struct Argumentos;

// Copies of a database's file without a window. Each gives the exit code and raises an ErrorEjecucion in Spanish.

// Copies the file to another one, which is not there yet.
int RespaldarEnArchivo(const Argumentos &argumentos);
// Tells what restoring from a copy would change, of one plan or in all, and with --si does it.
int RestaurarDeArchivo(const Argumentos &argumentos);
