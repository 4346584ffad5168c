#pragma once

struct Argumentos;

namespace qvx
{
class Conexion;
}

// Tells without a window in what two plans differ. Gives 0 when in nothing, 1 when in something, and 2 when they cannot
// be compared, whose reason is told.
int CompararPlanes(const Argumentos &argumentos);

// Tells what the import of a document would change, or why it would not be done.
void MostrarImportacion(qvx::Conexion &conexion, const Argumentos &argumentos);
