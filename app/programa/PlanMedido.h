#pragma once

#include "app/programa/Medidas.h"

namespace programa
{

// A plan with all that a programme needs of it, read once: another programme of it is then a matter of arithmetic.
struct PlanMedido {
    lectura::Plan plan;
    lectura::Lineas lineas;
    QList<Entrada> entradas;
    QList<Medida> medidas; // of each service, once, on one machine

    const lectura::Servicio &Servicio(const Fila &fila) const { return plan.servicios.at(fila.servicio); }
    // Keys of the units that its services are due by.
    QStringList Unidades() const;
};
// Raises data errors.
PlanMedido LeerPlanMedido(qvx::Conexion &conexion, const QString &tipoEquipo);

// What a type begins with that nothing is kept of: the year after this one, without use, one machine.
qvx::DatosDePrograma DatosDeInicio(const QString &tipoEquipo, QDate hoy);

} // namespace programa
