#include "plan/Arbol.h"

#include "data/Conexion.h"
#include "data/Texto.h"
#include "plan/Claves.h"
#include "plan/Rutas.h"

#include <QStringList>
#include <utility>

namespace qvx
{

void Arbol::Agregar(const Recordset &fila)
{
    const QString clave = SinBlancosAlFinal(fila["Tep_ID"]);
    Parte &parte = partes[clave];
    parte.clave = clave;
    parte.padre = SinBlancosAlFinal(fila["Tep_Padre"]);
    parte.descripcion = fila["Tep_Descripcion"];
    parte.activa = SinBlancosAlFinal(fila["Es_Cve_Estado"]) == "AC";
    if (const int sello = fila.Lugar("Sello"); sello >= 0)
        parte.sello = fila.Texto(sello);
}

void Arbol::Recorrer()
{
    for (const auto &[clave, parte] : partes)
        RecorrerDesde(clave);
}

const Parte *Arbol::Buscar(const QString &clave) const
{
    const auto hallada = partes.find(SinBlancosAlFinal(clave));
    return hallada == partes.end() ? nullptr : &hallada->second;
}

QString Arbol::Ruta(const QString &clave) const
{
    return ComponerRuta(clave, [this](const QString &cual) { return Buscar(cual); });
}

// From a part upwards, as far as nobody has been yet.
void Arbol::RecorrerDesde(const QString &desde)
{
    QStringList camino;
    QString clave = desde;
    for (auto actual = partes.find(clave);
         clave != claves::Raiz && actual != partes.end() && actual->second.alcance == Alcance::SinVer;
         actual = partes.find(clave)) {
        camino.append(clave);
        actual->second.alcance = Alcance::EnCamino;
        clave = actual->second.padre;
    }
    if (camino.isEmpty())
        return;
    const Parte *meta = Buscar(clave);
    const bool llega = clave == claves::Raiz || (meta && meta->alcance == Alcance::Llega);
    if (!llega && !meta)
        partes.at(camino.takeLast()).alcance = Alcance::SinPadre;
    else if (!llega && meta->alcance == Alcance::EnCamino)
        CerrarAnillo(camino, clave);
    for (const QString &vista : std::as_const(camino))
        partes.at(vista).alcance = llega ? Alcance::Llega : Alcance::NoLlega;
}

void Arbol::CerrarAnillo(QStringList &camino, const QString &clave)
{
    QString quitada;
    do {
        quitada = camino.takeLast();
        partes.at(quitada).alcance = Alcance::EnAnillo;
        partes.at(quitada).anillo = clave;
    } while (quitada != clave);
}

Arbol ArbolDelPlan(Conexion &conexion, const QString &tipoEquipo)
{
    Arbol arbol;
    for (auto filas = conexion.Execute("SELECT Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Version AS Sello "
                                       "FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = ?",
                                       {tipoEquipo});
         !filas.Eof(); filas.MoveNext())
        arbol.Agregar(filas);
    arbol.Recorrer();
    return arbol;
}

} // namespace qvx
