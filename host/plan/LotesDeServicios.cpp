#include "plan/LotesDeServicios.h"

#include "data/Cuantos.h"
#include "plan/PlanTomado.h"

#include <algorithm>

namespace qvx
{

namespace
{

// "a la parte 0005 MOTOR", where all are of one part.
template <class Lista, class ParteDe>
QString EnUnaParte(const PlanTomado &plan, const QString &preposicion, const Lista &lista, const ParteDe &parteDe)
{
    const QString primera = parteDe(lista.constFirst());
    const bool una = std::all_of(lista.begin(), lista.end(), [&](const auto &uno) { return parteDe(uno) == primera; });
    return preposicion + (una ? plan.NombreDe(primera) : QString("varias partes"));
}

} // namespace

QString CuantosServicios(qsizetype cuantos, const ServicioLeido &primero)
{
    return cuantos == 1 ? "Servicio " + primero.folio : Cuantos(cuantos, "servicio", "servicios");
}

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
    plan.Confirmar(traslados.size() == 1 ? "Servicio movido" : "Servicios movidos",
                   CuantosServicios(traslados.size(), traslados.constFirst().servicio)
                       + EnUnaParte(plan, " a ", traslados, [](const Traslado &uno) { return uno.destino; }));
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
    plan.Confirmar(servicios.size() == 1 ? "Servicio eliminado" : "Servicios eliminados",
                   CuantosServicios(servicios.size(), servicios.constFirst())
                       + EnUnaParte(plan, " de ", servicios, [](const ServicioLeido &uno) { return uno.parte; }));
}

} // namespace qvx
