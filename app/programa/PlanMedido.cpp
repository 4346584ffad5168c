#include "app/programa/PlanMedido.h"

#include "data/Momento.h"

namespace programa
{

QStringList PlanMedido::Unidades() const
{
    QStringList unidades;
    for (const lectura::Servicio &servicio : plan.servicios)
        if (servicio.lectura > 0 && !servicio.unidad.isEmpty() && !unidades.contains(servicio.unidad))
            unidades.append(servicio.unidad);
    unidades.sort();
    return unidades;
}

PlanMedido LeerPlanMedido(qvx::Conexion &conexion, const QString &tipoEquipo)
{
    const qvx::Momento momento(conexion);
    PlanMedido medido;
    medido.plan = lectura::LeerPlan(conexion, tipoEquipo);
    medido.lineas = lectura::LeerLineasDe(conexion, medido.plan);
    medido.entradas = EntradasDe(medido.plan);
    medido.medidas = Medir(medido.plan, medido.lineas);
    return medido;
}

qvx::DatosDePrograma DatosDeInicio(const QString &tipoEquipo, QDate hoy)
{
    qvx::DatosDePrograma datos;
    datos.tipoEquipo = tipoEquipo;
    datos.diaCero = QDate(hoy.year(), 12, 31);
    return datos;
}

} // namespace programa
