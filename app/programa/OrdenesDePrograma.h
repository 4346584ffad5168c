#pragma once

struct Argumentos;

// Writes the programme of an equipment type as CSV, and its calendar where the line asks for it; tells what is not in
// it, and that all services are in one place. Gives the exit code; raises an ErrorEjecucion.
int EscribirPrograma(const Argumentos &argumentos);

// Writes a report as PDF. Needs a toolkit that knows letters. Likewise.
int EscribirReporte(const Argumentos &argumentos);
