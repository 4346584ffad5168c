#include "plan/ServiciosDelPlan.h"

#include "data/Conexion.h"
#include "data/Texto.h"
#include "plan/Arbol.h"
#include "plan/RegistrosDeCatalogo.h"
#include "plan/Rutas.h"

namespace qvx
{

namespace
{

QString Clave(const QString &tipoEquipo, const QString &parte, const QString &folio)
{
    return SinBlancosAlFinal(tipoEquipo) + QLatin1Char('|') + SinBlancosAlFinal(parte) + QLatin1Char('|')
           + SinBlancosAlFinal(folio);
}

// Descriptions of the equipment types on offer, by key.
QHash<QString, QString> LeerTipos(Conexion &conexion, const QStringList &tipos)
{
    QHash<QString, QString> nombres;
    for (auto filas = conexion.Execute("SELECT Te_Cve_Tipo_Equipo, Te_Descripcion FROM Tipo_Equipo WHERE "
                                       "Es_Cve_Estado NOT IN ('BA', 'CA')"
                                           + YDeTipos("Te_Cve_Tipo_Equipo", tipos),
                                       ValoresDeTipos(tipos));
         !filas.Eof(); filas.MoveNext())
        nombres.insert(SinBlancosAlFinal(filas.Texto(0)), filas.Texto(1));
    return nombres;
}

QHash<QString, Arbol> LeerArboles(Conexion &conexion, const QStringList &tipos)
{
    QHash<QString, Arbol> arboles;
    for (auto filas = conexion.Execute("SELECT Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado "
                                       "FROM Tipo_Equipo_Parte WHERE 1 = 1"
                                           + YDeTipos("Te_Cve_Tipo_Equipo", tipos),
                                       ValoresDeTipos(tipos));
         !filas.Eof(); filas.MoveNext())
        arboles[SinBlancosAlFinal(filas.Texto(0))].Agregar(filas);
    for (Arbol &arbol : arboles)
        arbol.Recorrer();
    return arboles;
}

} // namespace

QString YDeTipos(const QString &columna, const QStringList &tipos)
{
    return tipos.isEmpty() ? QString() : " AND " + columna + " IN (?" + QString(", ?").repeated(tipos.size() - 1) + ")";
}

QVariantList ValoresDeTipos(const QStringList &tipos)
{
    return {tipos.cbegin(), tipos.cend()};
}

ServiciosDelPlan::ServiciosDelPlan(Conexion &conexion, const QStringList &tipos)
{
    const QHash<QString, QString> nombres = LeerTipos(conexion, tipos);
    const QHash<QString, Arbol> arboles = LeerArboles(conexion, tipos);
    Rutas rutas(conexion);
    for (auto filas = conexion.Execute(
             "SELECT s.Te_Cve_Tipo_Equipo, s.Tep_ID, s.Pm_ID, s.Version AS Sello, s.Pm_Precio, t.Ts_Descripcion FROM "
             "Plan_Mantenimiento s LEFT JOIN Tipo_Servicio t ON t.Ts_Cve_Tipo_Servicio = s.Ts_Cve_Tipo_Servicio WHERE "
             "s.Es_Cve_Estado = ?"
                 + YDeTipos("s.Te_Cve_Tipo_Equipo", tipos) + " ORDER BY s.Te_Cve_Tipo_Equipo, s.Pm_ID",
             QVariantList{estado::Activo} + ValoresDeTipos(tipos));
         !filas.Eof(); filas.MoveNext()) {
        const ServicioLeido leido{SinBlancosAlFinal(filas.Texto(0)), SinBlancosAlFinal(filas.Texto(1)),
                                  SinBlancosAlFinal(filas.Texto(2)), filas.Texto(3)};
        const auto nombre = nombres.constFind(leido.tipoEquipo);
        const auto arbol = arboles.constFind(leido.tipoEquipo);
        const Parte *parte = arbol == arboles.constEnd() ? nullptr : arbol->Buscar(leido.parte);
        if (nombre == nombres.constEnd() || !parte || !parte->Sirve())
            continue;
        lugares.insert(Clave(leido.tipoEquipo, leido.parte, leido.folio), static_cast<int>(servicios.size()));
        servicios.append(
            {leido, *nombre, rutas.De(leido.tipoEquipo, leido.parte), filas.Texto(5), filas.Numero("Pm_Precio")});
    }
}

int ServiciosDelPlan::LugarDe(const Recordset &fila) const
{
    return lugares.value(Clave(fila.Texto(0), fila.Texto(1), fila.Texto(2)), -1);
}

} // namespace qvx
