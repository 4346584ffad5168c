#include "data/Versiones.h"

#include "data/Texto.h"

namespace qvx
{

namespace
{

QString Renglon(const QString &tabla, const QString &tipoEquipo, const QString &clave)
{
    return tabla.left(1) + QLatin1Char('|') + SinBlancosAlFinal(tipoEquipo) + QLatin1Char('|')
           + SinBlancosAlFinal(clave);
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
        leidas.insert(Renglon(tabla, filas.Texto(tipoEquipo), filas.Texto(clave)), filas.Texto(version));
}

QString Versiones::Leida(const QString &tabla, const QString &tipoEquipo, const QString &clave) const
{
    return leidas.value(Renglon(tabla, tipoEquipo, clave));
}

} // namespace qvx
