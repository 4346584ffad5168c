#include "data/Versiones.h"

#include "data/Texto.h"

namespace qvx
{

namespace
{

QString Renglon(const QString &tabla, const QString &tipoEquipo, const QString &clave)
{
    return tabla + QLatin1Char('|') + SinBlancosAlFinal(tipoEquipo) + QLatin1Char('|') + SinBlancosAlFinal(clave);
}

} // namespace

void Versiones::Anotar(Recordset filas)
{
    if (!filas.Tiene("Version") || !filas.Tiene("Te_Cve_Tipo_Equipo"))
        return;
    const bool servicio = filas.Tiene("Pm_ID");
    const QString tabla = servicio ? "Plan_Mantenimiento" : "Tipo_Equipo_Parte";
    const QString columna = servicio ? "Pm_ID" : "Tep_ID";
    for (; !filas.Eof(); filas.MoveNext())
        leidas.insert(Renglon(tabla, filas["Te_Cve_Tipo_Equipo"], filas[columna]), filas["Version"]);
}

QString Versiones::Leida(const QString &tabla, const QString &tipoEquipo, const QString &clave) const
{
    return leidas.value(Renglon(tabla, tipoEquipo, clave));
}

} // namespace qvx
