#pragma once

#include "plan/ServiciosDelPlan.h"
#include "system/Exporta.h"

#include <QPair>

// Spare-part lines that no expense type on offer pays for: their services cannot be saved.
namespace QVX_EXPORTA qvx
{

struct RefaccionSinGasto {
    int servicio = 0; // where it stands among services
    QString linea;
    QString producto;
    QString descripcion;
    QString gasto; // what it has, "" for none
    QString motivo;
    QString propuesto;  // the one that most lines of the product have, "" where no one is
    QString fundamento; // why it is proposed, or why none is
};

struct RefaccionesSinGasto {
    QList<ServicioDelPlan> servicios;
    QList<RefaccionSinGasto> lineas;       // by equipment type, service and line
    QList<QPair<QString, QString>> gastos; // the expense types on offer, key and description
    int aparte = 0;                        // such lines of services that a planner cannot change

    QStringList Propuestos() const; // for each line
};

// tipos: keys of equipment types, none for all; what other lines of a product have is looked for in all. Raises data
// errors.
RefaccionesSinGasto LeerSinGasto(Conexion &conexion, const QStringList &tipos);

// Writes the expense type chosen for each line, "" for a line that stays as it is, in one transaction, whose services
// are signed; gives how many it wrote. Raises an ErrorEjecucion in Spanish when something is not as it was read, and
// data errors; then nothing has changed.
int CompletarGastos(Conexion &conexion, const Firmante &firmante, const RefaccionesSinGasto &vistas,
                    const QStringList &elegidos);

// How many spare parts of active parts of a plan have no expense type at all. Raises data errors.
int ContarSinGasto(Conexion &conexion, const QString &tipoEquipo);

} // namespace qvx
