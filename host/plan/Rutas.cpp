#include "plan/Rutas.h"

#include "data/Conexion.h"
#include "data/Texto.h"

namespace qvx
{

const QHash<QString, Rutas::Parte> &Rutas::PartesDe(const QString &tipoEquipo)
{
    const QString tipo = SinBlancosAlFinal(tipoEquipo);
    const auto leidas = partes.constFind(tipo);
    if (leidas != partes.constEnd())
        return *leidas;
    QHash<QString, Parte> suyas;
    for (auto filas = conexion.Execute("SELECT Tep_ID, Tep_Padre, Tep_Descripcion FROM Tipo_Equipo_Parte "
                                       "WHERE Te_Cve_Tipo_Equipo = ?",
                                       {tipo});
         !filas.Eof(); filas.MoveNext())
        suyas.insert(SinBlancosAlFinal(filas.Texto(0)), {SinBlancosAlFinal(filas.Texto(1)), filas.Texto(2)});
    return *partes.insert(tipo, suyas);
}

QString Rutas::De(const QString &tipoEquipo, const QString &parte)
{
    if (claves::EsRaiz(parte)) // is asked of no type
        return claves::TextoRaiz;
    const auto &suyas = PartesDe(tipoEquipo);
    return ComponerRuta(SinBlancosAlFinal(parte), [&](const QString &clave) {
        const auto hallada = suyas.constFind(clave);
        return hallada == suyas.constEnd() ? nullptr : &*hallada;
    });
}

} // namespace qvx
