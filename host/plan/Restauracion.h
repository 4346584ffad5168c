#pragma once

#include "plan/ArchivoDeBase.h"
#include "plan/Cambios.h"
#include "plan/Respaldo.h"
#include "system/Exporta.h"

#include <memory>

namespace QVX_EXPORTA qvx
{

class Conexion;

struct PlanDeCopia {
    QString clave;
    QString descripcion;
    int partes = 0;
    int servicios = 0;
};

// The equipment types of a copy that have a plan, by key. base: the open database, which is no copy. Raises an
// ErrorEjecucion in Spanish.
QList<PlanDeCopia> PlanesDeCopia(const QString &copia, const QString &base);

// A copy that is to be restored from, as a temporary database beside the one that is restored: checked, and brought to
// this version. The copy itself is only read.
class CopiaLista
{
public:
    // Raises an ErrorEjecucion in Spanish for what is not this system's, is damaged, of a version that this program
    // does not know, or the database itself; and where there is no room for it.
    CopiaLista(const QString &copia, const QString &base);
    ~CopiaLista();

    const QString &Archivo() const { return copia; }
    // Until the whole of it was restored.
    Conexion &Base() const { return *conexion; }

    // The database holds from then on what the copy holds, and a line in its log says so. A copy of what it held is
    // made before, with others kept out from there on; gives its path. No connection of this program may be in a
    // transaction. Raises an ErrorEjecucion; then the database is as it was.
    QString RestaurarTodo(const LugarDeCopias &lugar, const Firmante &firmante, const QDateTime &ahora);

private:
    QString copia;
    archivo::Provisional provisional;
    std::unique_ptr<Conexion> conexion;
};

} // namespace qvx
