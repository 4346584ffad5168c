#pragma once

#include "plan/FilasDelPlan.h"

#include <QStringList>

namespace qvx
{
class Conexion;
}

namespace comparar
{

// What the import of a document would leave. The rows bear no signatures: those are of who imports, and when.
struct Previsto {
    qvx::FilasDelPlan filas;
    QStringList desconocidos; // products that no catalogue has, whose lines are left out; each once
    int renglonesFuera = 0;
};

// Reads the document and the catalogues as the screen's import does, and writes nothing. Raises an ErrorEjecucion in
// Spanish that says why the import would not be done, and data errors.
Previsto PreverImportacion(qvx::Conexion &conexion, const QString &archivo);

} // namespace comparar
