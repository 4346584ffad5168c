#include "plan/Gastos.h"

#include "data/Cuantos.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "data/Transaccion.h"
#include "plan/OperacionEnCurso.h"
#include "plan/RegistrosDeCatalogo.h"

#include <QSet>
#include <algorithm>
#include <map>

namespace qvx
{

namespace
{

using Gasto = RegistroDeCatalogo;

const QString SinGasto = "d.Pmd_Tipo = '02' AND NOT EXISTS (SELECT 1 FROM Tipo_Gasto g WHERE g.Tg_Cve_Tipo_Gasto = "
                         "d.Pmd_Tipo_Gasto AND g.Es_Cve_Estado = 'AC')";

QHash<QString, Gasto> LeerGastos(Conexion &conexion)
{
    QHash<QString, Gasto> gastos;
    for (const Gasto &gasto : LeerRegistros(conexion, *TablaDeCatalogoPorNombre("Tipo_Gasto")))
        gastos.insert(gasto.clave, gasto);
    return gastos;
}

QString Motivo(const QString &clave, const QHash<QString, Gasto> &gastos)
{
    if (clave.isEmpty())
        return "No tiene tipo de gasto";
    const auto gasto = gastos.constFind(clave);
    return gasto == gastos.constEnd() ? "El tipo de gasto " + clave + " no está en el catálogo"
                                      : "El tipo de gasto " + clave + " " + gasto->Descripcion() + " está dado de baja";
}

// How many lines of a product have an expense type that is on offer.
using Usos = std::map<QString, int>;

QHash<QString, Usos> LeerUsos(Conexion &conexion)
{
    QHash<QString, Usos> usos;
    for (auto filas = conexion.Execute(
             "SELECT d.Pr_Cve_Producto, d.Pmd_Tipo_Gasto, COUNT(*) AS Cuantas FROM Plan_Mantenimiento_Detalle d JOIN "
             "Tipo_Gasto g ON g.Tg_Cve_Tipo_Gasto = d.Pmd_Tipo_Gasto WHERE d.Pmd_Tipo = '02' AND g.Es_Cve_Estado = ? "
             "GROUP BY d.Pr_Cve_Producto, d.Pmd_Tipo_Gasto",
             {estado::Activo});
         !filas.Eof(); filas.MoveNext())
        usos[SinBlancosAlFinal(filas.Texto(0))][SinBlancosAlFinal(filas.Texto(1))] =
            static_cast<int>(filas.Numero("Cuantas"));
    return usos;
}

void Proponer(RefaccionSinGasto &linea, const Usos &usos)
{
    if (usos.empty()) {
        linea.fundamento = "Ningún otro renglón del producto tiene uno";
        return;
    }
    int mayor = 0;
    int todos = 0;
    QStringList primeros;
    for (const auto &[gasto, cuantos] : usos) {
        todos += cuantos;
        if (cuantos > mayor)
            primeros.clear();
        if (cuantos >= mayor)
            primeros.append(gasto);
        mayor = std::max(mayor, cuantos);
    }
    if (primeros.size() > 1) {
        linea.fundamento = "Empate entre los renglones del producto: " + primeros.join(", ");
        return;
    }
    linea.propuesto = primeros.constFirst();
    linea.fundamento = QString("Lo tienen %1 de %2 renglones del producto").arg(mayor).arg(todos);
}

// Everything of a line that a person saw, as one text.
QString Vista(const RefaccionesSinGasto &refacciones, const RefaccionSinGasto &linea)
{
    const ServicioLeido &servicio = refacciones.servicios.at(linea.servicio).leido;
    return QStringList{servicio.tipoEquipo, servicio.parte, servicio.folio, linea.linea, linea.producto, linea.gasto}
        .join(QLatin1Char('|'));
}

QString Nombre(const ServicioLeido &servicio, const RefaccionSinGasto &linea)
{
    return "El renglón " + linea.linea + " del servicio " + servicio.folio + " del tipo de equipo "
           + servicio.tipoEquipo;
}

void EscribirGasto(Conexion &conexion, const ServicioLeido &servicio, const RefaccionSinGasto &linea,
                   const QString &gasto)
{
    const int escritas = conexion
                             .Execute("UPDATE Plan_Mantenimiento_Detalle SET Pmd_Tipo_Gasto = ? WHERE "
                                      "Te_Cve_Tipo_Equipo = ? AND Tep_ID = ? AND Pm_ID = ? AND Pmd_ID = ?",
                                      {gasto, servicio.tipoEquipo, servicio.parte, servicio.folio, linea.linea})
                             .Afectadas();
    if (escritas != 1)
        throw ErrorEjecucion(errores::Datos, Nombre(servicio, linea) + " no se pudo escribir. No se guardó nada.");
}

// What was seen must be there still, and what was chosen on offer.
void Revisar(Conexion &conexion, const RefaccionesSinGasto &vistas, const QStringList &elegidos,
             const QStringList &tipos)
{
    const RefaccionesSinGasto actuales = LeerSinGasto(conexion, tipos);
    QSet<QString> presentes;
    for (const RefaccionSinGasto &linea : actuales.lineas)
        presentes.insert(Vista(actuales, linea));
    QSet<QString> ofrecidos;
    for (const auto &[clave, descripcion] : actuales.gastos)
        ofrecidos.insert(clave);
    for (int i = 0; i < vistas.lineas.size(); ++i) {
        const QString &gasto = elegidos.at(i);
        const RefaccionSinGasto &linea = vistas.lineas.at(i);
        if (gasto.isEmpty())
            continue;
        if (!presentes.contains(Vista(vistas, linea)))
            throw ErrorEjecucion(errores::Datos, Nombre(vistas.servicios.at(linea.servicio).leido, linea)
                                                     + " ya no está como en la lista: alguien cambió el renglón o su "
                                                       "parte después de que esta lista los leyó. No se guardó nada: "
                                                       "vuelva a hacer la lista.");
        if (!ofrecidos.contains(gasto))
            throw ErrorEjecucion(errores::Datos, "El tipo de gasto " + gasto + ": "
                                                     + QuienCambio(conexion, "Tipo_Gasto", gasto)
                                                     + " y ya no está activo. No se guardó nada: vuelva a hacer la "
                                                       "lista y elija otro.");
    }
}

} // namespace

QStringList RefaccionesSinGasto::Propuestos() const
{
    QStringList propuestos;
    for (const RefaccionSinGasto &linea : lineas)
        propuestos.append(linea.propuesto);
    return propuestos;
}

RefaccionesSinGasto LeerSinGasto(Conexion &conexion, const QStringList &tipos)
{
    const ServiciosDelPlan servicios(conexion, tipos);
    const QHash<QString, Gasto> gastos = LeerGastos(conexion);
    RefaccionesSinGasto refacciones;
    refacciones.servicios = servicios.Todos();
    for (const Gasto &gasto : gastos)
        if (gasto.estado == estado::Activo)
            refacciones.gastos.append({gasto.clave, gasto.Descripcion()});
    std::sort(refacciones.gastos.begin(), refacciones.gastos.end());
    for (auto filas = conexion.Execute(
             "SELECT d.Te_Cve_Tipo_Equipo, d.Tep_ID, d.Pm_ID, d.Pmd_ID, d.Pr_Cve_Producto, d.Pmd_Tipo_Gasto, "
             "p.Pr_Descripcion FROM Plan_Mantenimiento_Detalle d LEFT JOIN Producto p ON p.Pr_Cve_Producto = "
             "d.Pr_Cve_Producto WHERE "
                 + SinGasto + YDeTipos("d.Te_Cve_Tipo_Equipo", tipos)
                 + " ORDER BY d.Te_Cve_Tipo_Equipo, d.Pm_ID, d.Pmd_ID",
             ValoresDeTipos(tipos));
         !filas.Eof(); filas.MoveNext()) {
        const int servicio = servicios.LugarDe(filas);
        const QString gasto = SinBlancosAlFinal(filas.Texto(5));
        if (servicio >= 0)
            refacciones.lineas.append({servicio,
                                       SinBlancosAlFinal(filas.Texto(3)),
                                       SinBlancosAlFinal(filas.Texto(4)),
                                       filas.Texto(6),
                                       gasto,
                                       Motivo(gasto, gastos),
                                       {},
                                       {}});
        else
            ++refacciones.aparte;
    }
    if (refacciones.lineas.isEmpty())
        return refacciones;
    const QHash<QString, Usos> usos = LeerUsos(conexion);
    for (RefaccionSinGasto &linea : refacciones.lineas)
        Proponer(linea, usos.value(linea.producto));
    return refacciones;
}

int CompletarGastos(Conexion &conexion, const Firmante &firmante, const RefaccionesSinGasto &vistas,
                    const QStringList &elegidos)
{
    std::map<std::pair<QString, QString>, QList<int>>
        porServicio; // plans are kept in the order of their keys, so that two never cross
    QStringList tipos;
    for (int i = 0; i < vistas.lineas.size(); ++i) {
        const ServicioLeido &servicio = vistas.servicios.at(vistas.lineas.at(i).servicio).leido;
        if (!elegidos.at(i).isEmpty())
            porServicio[{servicio.tipoEquipo, servicio.folio}].append(i);
        if (!elegidos.at(i).isEmpty() && !tipos.contains(servicio.tipoEquipo))
            tipos.append(servicio.tipoEquipo);
    }
    if (porServicio.empty())
        return 0;
    Transaccion transaccion(conexion);
    const Firmante ahora{firmante.operador, [fecha = firmante.fecha()] { return fecha; }};
    for (const auto &[clave, lineas] : porServicio)
        FirmarServicio(conexion, ahora, vistas.servicios.at(vistas.lineas.at(lineas.constFirst()).servicio).leido);
    Revisar(conexion, vistas, elegidos, tipos);
    int escritas = 0;
    for (int i = 0; i < vistas.lineas.size(); ++i) {
        const RefaccionSinGasto &linea = vistas.lineas.at(i);
        if (elegidos.at(i).isEmpty())
            continue;
        EscribirGasto(conexion, vistas.servicios.at(linea.servicio).leido, linea, elegidos.at(i));
        ++escritas;
    }
    NombrarOperacion(conexion, "Tipos de gasto completados", Cuantos(escritas, "refacción", "refacciones"));
    transaccion.Confirmar();
    return escritas;
}

int ContarSinGasto(Conexion &conexion, const QString &tipoEquipo)
{
    return static_cast<int>(
        conexion
            .Execute("SELECT COUNT(*) AS Cuantas FROM Plan_Mantenimiento_Detalle d JOIN Tipo_Equipo_Parte p ON "
                     "p.Te_Cve_Tipo_Equipo = d.Te_Cve_Tipo_Equipo AND p.Tep_ID = d.Tep_ID WHERE d.Te_Cve_Tipo_Equipo = "
                     "? AND d.Pmd_Tipo = '02' AND d.Pmd_Tipo_Gasto = '' AND p.Es_Cve_Estado = ?",
                     {tipoEquipo, estado::Activo})
            .Numero("Cuantas"));
}

} // namespace qvx
