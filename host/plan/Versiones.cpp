#include "plan/Versiones.h"

#include "data/Texto.h"

namespace qvx
{

namespace
{

QString Plan(const QString &tabla, const QString &tipoEquipo)
{
    return tabla + QLatin1Char('|') + SinBlancosAlFinal(tipoEquipo);
}

} // namespace

void Versiones::Anotar(Recordset filas)
{
    if (filas.Eof())
        return;
    const int version = filas.Lugar("Version");
    const int tipoEquipo = filas.Lugar("Te_Cve_Tipo_Equipo");
    const int folio = filas.Lugar("Pm_ID");
    const int clave = folio >= 0 ? folio : filas.Lugar("Tep_ID");
    if (version < 0 || tipoEquipo < 0 || clave < 0) // a stored query may choose any columns
        return;
    const QString tabla = folio >= 0 ? "Plan_Mantenimiento" : "Tipo_Equipo_Parte";
    for (; !filas.Eof(); filas.MoveNext())
        leidas[Plan(tabla, filas.Texto(tipoEquipo))].insert(SinBlancosAlFinal(filas.Texto(clave)),
                                                            filas.Texto(version));
}

QString Versiones::Leida(const QString &tabla, const QString &tipoEquipo, const QString &clave) const
{
    return leidas.value(Plan(tabla, tipoEquipo)).value(SinBlancosAlFinal(clave));
}

} // namespace qvx
