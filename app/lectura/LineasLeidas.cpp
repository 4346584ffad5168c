#include "app/lectura/LineasLeidas.h"

#include "data/Conexion.h"
#include "data/Momento.h"
#include "data/Texto.h"
#include "plan/RegistrosDeCatalogo.h"

#include <algorithm>
#include <tuple>

using qvx::SinBlancosAlFinal;

namespace lectura
{

namespace
{

// Of so many lines the catalogue is read whole: to look for theirs alone takes longer.
constexpr qsizetype MuchasLineas = 5000;

// Products in the order in which lines name them first.
class ProductosVistos
{
public:
    int Lugar(const QString &clave)
    {
        const auto visto = lugares.constFind(clave);
        if (visto != lugares.constEnd())
            return *visto;
        productos.append({clave, {}, 0, false, false});
        return *lugares.insert(clave, static_cast<int>(productos.size()) - 1);
    }

    // With what the catalogue says of them.
    QList<Producto> Leer(qvx::Conexion &conexion, const QString &tipoEquipo, qsizetype lineas)
    {
        const QString todos = "SELECT Pr_Cve_Producto, Pr_Descripcion, Pr_Costo_Estandar, Es_Cve_Estado FROM Producto";
        for (auto filas = lineas > MuchasLineas
                              ? conexion.Execute(todos, {})
                              : conexion.Execute(todos
                                                     + " WHERE Pr_Cve_Producto IN (SELECT Pr_Cve_Producto FROM "
                                                       "Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = ?)",
                                                 {tipoEquipo});
             !filas.Eof(); filas.MoveNext()) {
            const QString clave = SinBlancosAlFinal(filas.Texto(0));
            if (const auto visto = lugares.constFind(clave); visto != lugares.constEnd())
                productos[*visto] = {clave, filas.Texto(1), filas.Numero(2), true,
                                     SinBlancosAlFinal(filas.Texto(3)) == qvx::estado::Activo};
        }
        return std::move(productos);
    }

private:
    QList<Producto> productos;
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
    ProductosVistos productos;
    Lineas lineas;
    for (auto filas = conexion.Execute("SELECT Tg_Cve_Tipo_Gasto, Tg_Descripcion FROM Tipo_Gasto", {}); !filas.Eof();
         filas.MoveNext())
        lineas.gastos.insert(SinBlancosAlFinal(filas.Texto(0)), filas.Texto(1));
    for (auto filas = conexion.Execute(
             "SELECT Tep_ID, Pm_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe, "
             "Pmd_Tipo_Gasto FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = ? ORDER BY Tep_ID, Pm_ID, "
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
    // Read as the table keeps them, which the engine need not sort.
    std::stable_sort(lineas.lineas.begin(), lineas.lineas.end(), [](const Linea &una, const Linea &otra) {
        return std::tie(una.servicio, una.clase) < std::tie(otra.servicio, otra.clase);
    });
    lineas.productos = productos.Leer(conexion, plan.tipoEquipo, lineas.lineas.size());
    return lineas;
}

} // namespace lectura
