#pragma once

#include "plan/FilasDelPlan.h"
#include "system/Exporta.h"

#include <QString>
#include <limits>

namespace QVX_EXPORTA qvx
{

class Conexion;

// What was done to plans in one transaction.
struct Operacion {
    qint64 numero = 0;
    QString operador; // "" where the database does not know him
    QString fecha;
    QString clase; // "Servicio cambiado"
    QString detalle;
    QString programa;
    QStringList tipos; // the equipment types whose plans it changed
    int partes = 0;
    int servicios = 0;
    int lineas = 0;
    QList<qint64> deshace;  // the operations that it takes back
    qint64 deshechaPor = 0; // the operation that took it back, 0 while it stands
};

// Which operations; empty texts choose all.
struct FiltroDeHistoria {
    QString tipoEquipo;
    QString operador;
    bool desconocido = false; // only those that nobody signed
    QString desde;            // days, "2026-03-14"
    QString hasta;
    QString parte; // a part, or what hangs from it; with its equipment type
    QString folio; // a service; with its equipment type
    qint64 numero = 0;
    qint64 anteriorA = std::numeric_limits<qint64>::max(); // only those with lower numbers
    int maximo = 10000;
};

// Operations, the newest first, in at most three statements. Raises data errors.
QList<Operacion> LeerOperaciones(Conexion &conexion, const FiltroDeHistoria &filtro);

// Of a person on a plan: his newest operation that stands and takes back none, and the newest that takes others back
// and stands; 0 for none. Raises data errors.
qint64 UltimaDeshacible(Conexion &conexion, const QString &tipoEquipo, const QString &operador);
qint64 UltimaRehacible(Conexion &conexion, const QString &tipoEquipo, const QString &operador);

// The rows of a plan that operations changed, as they were before the first of them and as the last one left them.
// Rows that are the same but for their signatures are left out. Raises data errors.
struct CambioDelPlan {
    FilasDelPlan antes;
    FilasDelPlan despues;
};
CambioDelPlan CambioEnElPlan(Conexion &conexion, const QString &tipoEquipo, const QList<qint64> &operaciones);

// The whole plan as it was before an operation; or at the end of a day, "2026-03-14". Raises data errors, and an
// ErrorEjecucion in Spanish when the history does not go back so far.
FilasDelPlan PlanAntesDe(Conexion &conexion, const QString &tipoEquipo, qint64 operacion);
FilasDelPlan PlanAlFinDe(Conexion &conexion, const QString &tipoEquipo, const QString &dia);

// The table where the history of a table's rows stands, and by which columns it tells a row from others of its plan: a
// service by its folio alone, which it keeps when it is moved.
const QString &TablaDeHistoria(DelPlan clase);
const QStringList &ClavesEnHistoria(DelPlan clase);

// Deletes the operations of before a day, the oldest first, in blocks of one transaction each; how many. For the owner
// of the database. Raises data errors.
int DepurarHistoria(Conexion &conexion, const QString &antesDe);

} // namespace qvx
