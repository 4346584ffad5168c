#pragma once

struct Argumentos;

// Catalogues on the command line, without a window. Each gives the exit code and raises an ErrorEjecucion in Spanish;
// what a person would be asked and the command line does not say is one, which names the option.

// Tells what a spreadsheet would make of a catalogue and, where it says so, writes it: all of it or nothing.
int ImportarCatalogo(const Argumentos &argumentos);
// Writes a catalogue, all of its rows, into a file.
int ExportarCatalogo(const Argumentos &argumentos);
