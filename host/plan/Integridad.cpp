#include "plan/Integridad.h"

#include "data/Cuantos.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "data/Transaccion.h"
#include "plan/Arbol.h"
#include "plan/Cambios.h"
#include "plan/Claves.h"
#include "plan/OperacionEnCurso.h"

#include <functional>
#include <map>
#include <set>
#include <utility>

namespace qvx
{

namespace
{

Arbol LeerArbol(Conexion &conexion, const QString &tipoEquipo)
{
    Arbol arbol;
    for (auto filas = conexion.Execute(
             "SELECT * FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = " + Literal(tipoEquipo) + " ORDER BY Tep_ID");
         !filas.Eof(); filas.MoveNext())
        arbol.Agregar(filas);
    arbol.Recorrer();
    return arbol;
}

QString Motivo(const Parte &parte)
{
    if (parte.alcance == Parte::Alcance::SinPadre)
        return "Su parte superior «" + parte.padre + "» no existe";
    if (parte.padre == parte.clave)
        return "Es su propia parte superior";
    return "Su parte superior «" + parte.padre + "» cuelga a su vez de ella";
}

QList<Suelto> PartesSueltas(Conexion &conexion, const QString &tipoEquipo)
{
    QList<Suelto> sueltas;
    const Arbol arbol = LeerArbol(conexion, tipoEquipo);
    for (const auto &[clave, parte] : arbol.Partes())
        if (parte.Suelta())
            sueltas.append({Suelto::Clase::Parte, tipoEquipo, clave, parte.descripcion, Motivo(parte)});
    return sueltas;
}

class Corrector
{
public:
    Corrector(Conexion &conexion, const Firmante &firmante_) : base(conexion), firmante(firmante_) {}

    // True when it changed something.
    bool CorregirParte(const Suelto &suelto)
    {
        const auto *parte = Tipo(suelto.tipoEquipo).Buscar(suelto.clave);
        if (!parte || !parte->Suelta())
            return false;
        if (parte->alcance == Parte::Alcance::EnAnillo
            && !anillosAbiertos.insert({SinBlancosAlFinal(suelto.tipoEquipo), parte->anillo}).second)
            return false;
        base.Execute("UPDATE Tipo_Equipo_Parte SET Tep_Padre = " + Literal(claves::Raiz) + ", " + Firmado()
                     + " WHERE Te_Cve_Tipo_Equipo = " + Literal(suelto.tipoEquipo)
                     + " AND Tep_ID = " + Literal(suelto.clave));
        Registrar("Tipo_Equipo_Parte", {suelto.clave, suelto.tipoEquipo});
        return true;
    }

    bool CorregirServicio(const Suelto &suelto, const QString &destino)
    {
        const QString tipo = "Te_Cve_Tipo_Equipo = " + Literal(suelto.tipoEquipo);
        const auto servicio =
            base.Execute("SELECT * FROM Plan_Mantenimiento WHERE " + tipo + " AND Pm_ID = " + Literal(suelto.clave));
        if (servicio.Eof() || Tipo(suelto.tipoEquipo).Buscar(servicio["Tep_ID"]))
            return false;
        const auto *parte = Tipo(suelto.tipoEquipo).Buscar(destino);
        if (!parte || !parte->activa)
            throw ErrorEjecucion(errores::Datos, "La parte " + destino + " ya no existe o está dada de baja.");
        const QString cuales =
            " WHERE " + tipo + " AND Tep_ID = " + Literal(servicio["Tep_ID"]) + " AND Pm_ID = " + Literal(suelto.clave);
        base.Execute("UPDATE Plan_Mantenimiento_Detalle SET Tep_ID = " + Literal(destino) + cuales);
        base.Execute("UPDATE Plan_Mantenimiento SET Tep_ID = " + Literal(destino) + ", " + Firmado() + cuales);
        Registrar("Plan_Mantenimiento", {suelto.tipoEquipo, suelto.clave});
        return true;
    }

private:
    const Arbol &Tipo(const QString &tipoEquipo)
    {
        const QString clave = SinBlancosAlFinal(tipoEquipo);
        const auto hallado = arboles.find(clave);
        return hallado != arboles.end() ? hallado->second
                                        : arboles.emplace(clave, LeerArbol(base, tipoEquipo)).first->second;
    }

    QString Firmado() const
    {
        return "Oper_Ult_Modif = " + Literal(firmante.operador) + ", Fecha_Ult_Modif = " + Literal(firmante.fecha());
    }

    void Registrar(const QString &tabla, const QStringList &claves) const
    {
        if (const QString impedimento = RegistrarCambio(base, firmante, tabla, claves); !impedimento.isEmpty())
            throw ErrorEjecucion(errores::Datos, impedimento);
    }

    Conexion &base;
    const Firmante &firmante;
    std::map<QString, Arbol> arboles;
    std::set<std::pair<QString, QString>> anillosAbiertos; // equipment type and ring
};

// With the service that the lines are of: its folio, its part and its description.
const QString DelRenglon =
    " FROM Plan_Mantenimiento_Detalle d LEFT JOIN Plan_Mantenimiento s ON s.Te_Cve_Tipo_Equipo = d.Te_Cve_Tipo_Equipo "
    "AND s.Pm_ID = d.Pm_ID LEFT JOIN Tipo_Servicio t ON t.Ts_Cve_Tipo_Servicio = s.Ts_Cve_Tipo_Servicio WHERE ";
const QString Servicio = "d.Te_Cve_Tipo_Equipo, d.Pm_ID, d.Tep_ID, t.Ts_Descripcion";

void AgregarRenglones(std::map<QString, QList<Suelto>> &porTipo, Recordset filas,
                      const std::function<QString(const Recordset &)> &motivo)
{
    for (; !filas.Eof(); filas.MoveNext()) {
        const QString tipo = SinBlancosAlFinal(filas["Te_Cve_Tipo_Equipo"]);
        porTipo[tipo].append(
            {Suelto::Clase::Renglones, tipo, SinBlancosAlFinal(filas["Pm_ID"]), filas["Ts_Descripcion"],
             motivo(filas) + ": corríjalo en el servicio, parte " + SinBlancosAlFinal(filas["Tep_ID"])});
    }
}

// Keys that no catalogue has, by column and catalogue, and spare parts that no expense type pays for.
void BuscarRenglones(Conexion &conexion, std::map<QString, QList<Suelto>> &porTipo)
{
    const auto ajenos = [&](const QString &columna, const QString &tabla, const QString &clave, const QString &que) {
        auto filas =
            conexion.Execute("SELECT " + Servicio + ", d.Pmd_ID, d." + columna + " AS Clave" + DelRenglon + "d."
                             + columna + " <> '' AND NOT EXISTS (SELECT 1 FROM " + tabla + " c WHERE c." + clave
                             + " = d." + columna + ") ORDER BY d.Te_Cve_Tipo_Equipo, d.Pm_ID, d.Pmd_ID");
        AgregarRenglones(porTipo, std::move(filas), [&](const Recordset &fila) {
            return que + " «" + SinBlancosAlFinal(fila["Clave"]) + "» de su renglón "
                   + SinBlancosAlFinal(fila["Pmd_ID"]) + " no está en el catálogo";
        });
    };
    ajenos("Pr_Cve_Producto", "Producto", "Pr_Cve_Producto", "El producto");
    ajenos("Pmd_Tipo_Gasto", "Tipo_Gasto", "Tg_Cve_Tipo_Gasto", "El tipo de gasto");
    AgregarRenglones(porTipo,
                     conexion.Execute("SELECT " + Servicio + ", COUNT(*) AS Cuantas" + DelRenglon
                                      + "d.Pmd_Tipo = '02' AND d.Pmd_Tipo_Gasto = '' GROUP BY " + Servicio
                                      + " ORDER BY d.Te_Cve_Tipo_Equipo, d.Pm_ID"),
                     [](const Recordset &fila) {
                         return "Tiene " + fila["Cuantas"] + (fila["Cuantas"] == "1" ? " refacción" : " refacciones")
                                + " sin tipo de gasto";
                     });
}

} // namespace

QList<Suelto> BuscarSueltos(Conexion &conexion)
{
    std::map<QString, QList<Suelto>> porTipo;
    auto tipos = conexion.Execute("SELECT DISTINCT Te_Cve_Tipo_Equipo AS Tipo FROM Tipo_Equipo_Parte");
    for (; !tipos.Eof(); tipos.MoveNext())
        porTipo[SinBlancosAlFinal(tipos["Tipo"])] = PartesSueltas(conexion, tipos["Tipo"]);

    auto servicios = conexion.Execute(
        "SELECT s.Te_Cve_Tipo_Equipo AS Tipo, s.Pm_ID AS Folio, s.Tep_ID AS Parte, t.Ts_Descripcion AS Descripcion "
        "FROM Plan_Mantenimiento s LEFT JOIN Tipo_Servicio t ON t.Ts_Cve_Tipo_Servicio = s.Ts_Cve_Tipo_Servicio "
        "WHERE NOT EXISTS (SELECT 1 FROM Tipo_Equipo_Parte p WHERE p.Te_Cve_Tipo_Equipo = s.Te_Cve_Tipo_Equipo AND "
        "p.Tep_ID = s.Tep_ID) ORDER BY s.Te_Cve_Tipo_Equipo, s.Pm_ID");
    for (; !servicios.Eof(); servicios.MoveNext()) {
        const QString tipo = SinBlancosAlFinal(servicios["Tipo"]);
        porTipo[tipo].append({Suelto::Clase::Servicio, tipo, SinBlancosAlFinal(servicios["Folio"]),
                              servicios["Descripcion"],
                              "Su parte «" + SinBlancosAlFinal(servicios["Parte"]) + "» no existe"});
    }
    BuscarRenglones(conexion, porTipo);

    QList<Suelto> sueltos;
    for (const auto &[tipo, delTipo] : porTipo)
        sueltos += delTipo;
    return sueltos;
}

QList<QPair<QString, QString>> PartesParaServicios(Conexion &conexion, const QString &tipoEquipo)
{
    QList<QPair<QString, QString>> elegibles;
    const Arbol arbol = LeerArbol(conexion, tipoEquipo);
    for (const auto &[clave, parte] : arbol.Partes())
        if (parte.Sirve())
            elegibles.append({clave, parte.descripcion});
    return elegibles;
}

Corregidos CorregirSueltos(Conexion &conexion, const Firmante &firmante, const QList<Correccion> &correcciones)
{
    Corregidos corregidos;
    Transaccion transaccion(conexion);
    Corrector corrector(conexion, firmante);
    for (const Correccion &correccion : correcciones) {
        if (correccion.suelto.clase == Suelto::Clase::Parte)
            corregidos.partes += corrector.CorregirParte(correccion.suelto) ? 1 : 0;
        else if (correccion.suelto.clase == Suelto::Clase::Servicio)
            corregidos.servicios += corrector.CorregirServicio(correccion.suelto, correccion.destino) ? 1 : 0;
    }
    QStringList cuantos;
    if (corregidos.partes > 0)
        cuantos.append(Cuantos(corregidos.partes, "parte", "partes"));
    if (corregidos.servicios > 0)
        cuantos.append(Cuantos(corregidos.servicios, "servicio", "servicios"));
    NombrarOperacion(conexion, "Integridad corregida", cuantos.join(" y "));
    transaccion.Confirmar();
    return corregidos;
}

} // namespace qvx
