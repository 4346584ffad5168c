#include "app/lectura/LineasLeidas.h"

#include "data/Conexion.h"
#include "data/Momento.h"
#include "data/Texto.h"
#include "plan/RegistrosDeCatalogo.h"

#include <algorithm>

using qvx::SinBlancosAlFinal;

namespace lectura
{

namespace
{

// Products in the order in which lines name them first.
class ProductosVistos
{
public:
    ProductosVistos(qvx::Conexion &conexion, const QString &tipoEquipo)
    {
        for (auto filas =
                 conexion.Execute("SELECT Pr_Cve_Producto, Pr_Descripcion, Pr_Costo_Estandar, Es_Cve_Estado FROM "
                                  "Producto WHERE Pr_Cve_Producto IN (SELECT Pr_Cve_Producto FROM "
                                  "Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = ?)",
                                  {tipoEquipo});
             !filas.Eof(); filas.MoveNext()) {
            const QString clave = SinBlancosAlFinal(filas.Texto(0));
            lugares.insert(clave, static_cast<int>(productos.size()));
            productos.append({clave, filas.Texto(1), filas.Numero(2), true,
                              SinBlancosAlFinal(filas.Texto(3)) == qvx::estado::Activo});
        }
    }
    int Lugar(const QString &clave)
    {
        const auto visto = lugares.constFind(clave);
        if (visto != lugares.constEnd())
            return *visto;
        productos.append({clave, {}, 0, false, false});
        return *lugares.insert(clave, static_cast<int>(productos.size()) - 1);
    }

    QList<Producto> productos;

private:
    QHash<QString, int> lugares;
};

} // namespace

QString Lineas::NombreDeGasto(const QString &clave) const
{
    return clave.isEmpty() ? QString("SIN TIPO DE GASTO") : gastos.value(clave, clave);
}

Lineas LeerLineasDe(qvx::Conexion &conexion, const Plan &plan)
{
    const qvx::Momento momento(conexion);
    QHash<QString, int> servicios; // folios are one plan's own
    for (int i = 0; i < plan.servicios.size(); ++i)
        servicios.insert(plan.servicios.at(i).leido.folio, i);
    ProductosVistos productos(conexion, plan.tipoEquipo);
    Lineas lineas;
    for (auto filas = conexion.Execute("SELECT Tg_Cve_Tipo_Gasto, Tg_Descripcion FROM Tipo_Gasto", {}); !filas.Eof();
         filas.MoveNext())
        lineas.gastos.insert(SinBlancosAlFinal(filas.Texto(0)), filas.Texto(1));
    for (auto filas = conexion.Execute(
             "SELECT Tep_ID, Pm_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe, "
             "Pmd_Tipo_Gasto FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = ? ORDER BY Pm_ID, Pmd_Tipo, "
             "Pmd_ID",
             {plan.tipoEquipo});
         !filas.Eof(); filas.MoveNext()) {
        const int servicio = servicios.value(SinBlancosAlFinal(filas.Texto(1)), -1);
        // A line whose service is elsewhere is nobody's.
        if (servicio < 0 || plan.servicios.at(servicio).leido.parte != SinBlancosAlFinal(filas.Texto(0)))
            continue;
        const QString tipo = SinBlancosAlFinal(filas.Texto(2));
        lineas.lineas.append({servicio,
                              tipo == "01"   ? Linea::Clase::ManoDeObra
                              : tipo == "02" ? Linea::Clase::Refaccion
                                             : Linea::Clase::Herramienta,
                              productos.Lugar(SinBlancosAlFinal(filas.Texto(3))), filas.Numero(4),
                              SinBlancosAlFinal(filas.Texto(5)), filas.Numero(6), filas.Numero(7),
                              SinBlancosAlFinal(filas.Texto(8))});
    }
    std::stable_sort(lineas.lineas.begin(), lineas.lineas.end(),
                     [](const Linea &una, const Linea &otra) { return una.servicio < otra.servicio; });
    lineas.productos = std::move(productos.productos);
    return lineas;
}

} // namespace lectura
