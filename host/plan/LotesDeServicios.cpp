#include "plan/LotesDeServicios.h"

#include "plan/PlanTomado.h"

namespace qvx
{

void MoverServicios(Conexion &conexion, const Firmante &firmante, const QList<Traslado> &traslados)
{
    if (traslados.isEmpty())
        return;
    PlanTomado plan(conexion, firmante, traslados.constFirst().servicio.tipoEquipo);
    for (const auto &[servicio, destino] : traslados) {
        plan.RevisarDestino(destino);
        plan.Firmar(servicio);
        RevisarEscrito(conexion.Execute("UPDATE Plan_Mantenimiento SET Tep_ID = ?" + DelServicio,
                                        QVariantList{destino} + ClavesDe(servicio)),
                       servicio);
        conexion.Execute("UPDATE Plan_Mantenimiento_Detalle SET Tep_ID = ?" + DelServicio,
                         QVariantList{destino} + ClavesDe(servicio));
    }
    plan.Confirmar();
}

void EliminarServicios(Conexion &conexion, const Firmante &firmante, const QList<ServicioLeido> &servicios)
{
    if (servicios.isEmpty())
        return;
    PlanTomado plan(conexion, firmante, servicios.constFirst().tipoEquipo);
    for (const ServicioLeido &servicio : servicios) {
        plan.Firmar(servicio);
        conexion.Execute("DELETE FROM Plan_Mantenimiento_Detalle" + DelServicio, ClavesDe(servicio));
        RevisarEscrito(conexion.Execute("DELETE FROM Plan_Mantenimiento" + DelServicio, ClavesDe(servicio)), servicio);
    }
    plan.Confirmar();
}

} // namespace qvx
