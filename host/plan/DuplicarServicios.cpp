// Copies of services under other parts, numbered as the editor numbers new ones: over all folios, and all lines, of the
// equipment type.

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/Claves.h"
#include "plan/LotesDeServicios.h"
#include "plan/PlanTomado.h"

#include <limits>

namespace qvx
{

namespace
{

// The free keys of a table that follow each other; the plan is held, so that nobody takes one.
class ClavesNuevas
{
public:
    ClavesNuevas(Conexion &conexion, const QString &tabla, const QString &columna, const QString &tipoEquipo)
        : mascara(claves::Mascara(conexion, "FTO_" + tabla.toUpper(), claves::Raiz))
        , siguiente(claves::Siguiente(conexion, tabla, columna, {"Te_Cve_Tipo_Equipo"}, {tipoEquipo}))
    {
    }
    QString Tomar()
    {
        if (siguiente > std::numeric_limits<qint32>::max())
            throw ErrorEjecucion(errores::Desbordamiento, "Desbordamiento");
        return ClaveConFormato(QString::number(siguiente++), mascara);
    }

private:
    QString mascara;
    qint64 siguiente;
};

void CopiarLineas(const PlanTomado &plan, const ServicioLeido &origen, const QString &destino, const QString &folio,
                  ClavesNuevas &claves)
{
    for (auto lineas = plan.Base().Execute("SELECT Pmd_ID FROM Plan_Mantenimiento_Detalle" + DelServicio
                                               + " ORDER BY Pmd_Numero, Pmd_ID",
                                           ClavesDe(origen));
         !lineas.Eof(); lineas.MoveNext())
        plan.Base().Execute("INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, "
                            "Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe, "
                            "Pmd_Tipo_Gasto) SELECT Te_Cve_Tipo_Equipo, ?, ?, ?, Pmd_Tipo, Pr_Cve_Producto, "
                            "Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto FROM "
                            "Plan_Mantenimiento_Detalle"
                                + DelServicio + " AND Pmd_ID = ?",
                            QVariantList{destino, folio, claves.Tomar()} + ClavesDe(origen)
                                + QVariantList{lineas.Texto(0)});
}

} // namespace

QStringList DuplicarServicios(Conexion &conexion, const Firmante &firmante, const QList<Traslado> &copias)
{
    if (copias.isEmpty())
        return {};
    PlanTomado plan(conexion, firmante, copias.constFirst().servicio.tipoEquipo);
    ClavesNuevas folios(conexion, "Plan_Mantenimiento", "Pm_ID", plan.Tipo());
    ClavesNuevas lineas(conexion, "Plan_Mantenimiento_Detalle", "Pmd_ID", plan.Tipo());
    const QString operador = plan.Quien().operador;
    const QString fecha = plan.Quien().fecha();
    QStringList nuevos;
    for (const auto &[origen, destino] : copias) {
        plan.RevisarDestino(destino);
        plan.Revisar(origen);
        RevisarServicio(conexion, origen);
        const QString folio = folios.Tomar();
        RevisarEscrito(
            conexion.Execute("INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, "
                             "Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, Pm_Tiempo_Estimado, "
                             "Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Oper_Alta, Fecha_Alta, Oper_Ult_Modif, "
                             "Fecha_Ult_Modif) SELECT Te_Cve_Tipo_Equipo, ?, ?, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, "
                             "Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, "
                             "Pm_Requiere_Paro, Pm_Tiempo_Paro, ?, ?, ?, ? FROM Plan_Mantenimiento"
                                 + DelServicio,
                             QVariantList{destino, folio, operador, fecha, operador, fecha} + ClavesDe(origen)),
            origen);
        CopiarLineas(plan, origen, destino, folio, lineas);
        AnotarCambio(conexion, plan.Quien(), "Plan_Mantenimiento", plan.Tipo() + "|" + folio + "|" + destino);
        nuevos.append(folio);
    }
    const bool uno = copias.size() == 1;
    plan.Confirmar(uno ? "Servicio duplicado" : "Servicios duplicados",
                   CuantosServicios(copias.size(), copias.constFirst().servicio)
                       + (uno ? ", copiado al folio " + nuevos.constFirst() : QString()));
    return nuevos;
}

} // namespace qvx
