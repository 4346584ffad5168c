#include "plan/Cambios.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/Claves.h"
#include "plan/Formas.h"
#include "plan/RegistrosDeCatalogo.h"

#include <QHash>

namespace qvx
{

namespace
{

// The keys of a table, in the order in which the screens pass them.
QStringList ColumnasDeClave(const QString &tabla)
{
    static const QHash<QString, QStringList> columnas{
        {"Tipo_Equipo_Parte", {"Tep_ID", "Te_Cve_Tipo_Equipo"}},
        {"Plan_Mantenimiento", {"Te_Cve_Tipo_Equipo", "Pm_ID", "Tep_ID"}},
    };
    const QStringList halladas = columnas.value(tabla);
    if (halladas.isEmpty())
        throw ErrorEjecucion(errores::ElementoNoEncontrado, "No se registran cambios de la tabla " + tabla);
    return halladas;
}

// Whether a part is there to hang something from.
bool HayParte(Conexion &conexion, const QString &tipoEquipo, const QString &parte)
{
    return claves::EsRaiz(parte)
           || !conexion
                   .Execute("SELECT 1 AS Hay FROM Tipo_Equipo_Parte WHERE "
                            + Condicion({"Te_Cve_Tipo_Equipo", "Tep_ID"}, {tipoEquipo, parte}))
                   .Eof();
}

QString CambioAjeno(const Recordset &fila, const QString &operador)
{
    const QString quien = fila["Oper_Anterior"];
    return (quien == operador ? "Usted mismo (" + quien + ")" : quien) + " cambió este registro el "
           + fila["Fecha_Anterior"]
           + ", después de que esta pantalla lo leyó. No se guardó nada, y lo escrito sigue en "
             "la pantalla. Para ver cómo quedó, ábralo de nuevo o actualice el árbol con F5.";
}

// Another's change of a row since this program read it would be lost, and what hangs from a part that is gone would be
// out of the tree's reach.
QString Impedimento(Conexion &conexion, const QString &operador, const QString &tabla, const QStringList &claves)
{
    const bool servicio = tabla == "Plan_Mantenimiento";
    // Without its version, which would count as read from then on.
    const auto fila =
        conexion.Execute(QString("SELECT Te_Cve_Tipo_Equipo, Tep_ID, ") + (servicio ? "Pm_ID" : "Tep_Padre")
                         + ", Version_Anterior, Oper_Anterior, Fecha_Anterior FROM " + tabla + " WHERE "
                         + Condicion(ColumnasDeClave(tabla).mid(0, claves.size()), claves));
    if (fila.Eof())
        return "El registro ya no existe: otra persona lo eliminó o lo cambió de lugar.";
    const QString tipoEquipo = fila["Te_Cve_Tipo_Equipo"];
    const QString anterior = fila["Version_Anterior"];
    const QString leida = Formas::Leidas(conexion).Leida(tabla, tipoEquipo, fila[servicio ? "Pm_ID" : "Tep_ID"]);
    if (!anterior.isEmpty() && !leida.isEmpty() && anterior != leida)
        return CambioAjeno(fila, operador);
    // A service that is moved is given without its part: dropped on the root, it is left under the root's text, no
    // part.
    const bool enLaRaiz = claves.size() == 2 && fila["Tep_ID"].trimmed() == claves::TextoRaiz;
    if (servicio && !enLaRaiz && !HayParte(conexion, tipoEquipo, fila["Tep_ID"]))
        return "La parte del servicio ya no existe: otra persona la eliminó.";
    if (!servicio && anterior.isEmpty() && !claves::DejaSiguiente(fila["Tep_ID"])) // a new part
        return "Después de la clave " + fila["Tep_ID"] + " no queda número para otra parte: escriba una menor.";
    if (!servicio && !HayParte(conexion, tipoEquipo, fila["Tep_Padre"]))
        return "La parte superior ya no existe: otra persona la eliminó.";
    return {};
}

} // namespace

QString RegistrarCambio(Conexion &conexion, const Firmante &firmante, const QString &tabla, const QStringList &claves)
{
    if (tabla == "Tipo_Equipo_Parte" && claves::EsRaiz(claves.value(0))) // a row that were the root would hide the tree
        return "La clave " + claves::Raiz + " está reservada para la raíz del árbol.";
    const QString impedimento = Impedimento(conexion, firmante.operador, tabla, claves);
    if (impedimento.isEmpty())
        AnotarCambio(conexion, firmante, tabla, claves.join(QLatin1Char('|')));
    return impedimento;
}

void AnotarCambio(Conexion &conexion, const Firmante &firmante, const QString &tabla, const QString &clave)
{
    conexion.Execute("INSERT INTO Registro_Cambio (Rc_Tabla, Rc_Clave, Rc_Oper, Rc_Fecha) VALUES (" + Literal(tabla)
                     + ", " + Literal(clave) + ", " + Literal(firmante.operador) + ", " + Literal(firmante.fecha())
                     + ")");
}

QString QuienCambio(Conexion &conexion, const QString &tabla, const QString &clave, const QString &verbo)
{
    if (!LeerDerechos(conexion).catalogos) // planners of a server write the log, and do not read it
        return "Otra persona o programa " + verbo;
    const auto fila =
        conexion.Execute("SELECT Rc_Oper, Rc_Fecha FROM Registro_Cambio WHERE Rc_Tabla = ? AND Rc_Clave = "
                         "? ORDER BY Rc_ID DESC LIMIT 1",
                         {tabla, clave});
    return fila.Eof() ? "Otro programa " + verbo : fila["Rc_Oper"] + " " + verbo + " el " + fila["Rc_Fecha"];
}

void RevisarServicio(Conexion &conexion, const ServicioLeido &servicio)
{
    const QString nombre = "El servicio " + servicio.folio + " del tipo de equipo " + servicio.tipoEquipo;
    const auto fila = conexion.Execute(
        "SELECT Version AS Sello, Oper_Ult_Modif, Fecha_Ult_Modif FROM Plan_Mantenimiento" + DelServicio,
        ClavesDe(servicio));
    if (fila.Eof())
        throw ErrorEjecucion(errores::Datos, nombre
                                                 + " ya no existe: otra persona lo eliminó o lo cambió de lugar. No se "
                                                   "guardó nada.");
    if (fila["Sello"] != servicio.sello)
        throw ErrorEjecucion(errores::Datos, nombre + ": " + fila["Oper_Ult_Modif"] + " lo cambió el "
                                                 + fila["Fecha_Ult_Modif"]
                                                 + ", después de que esta lista lo leyó. No se guardó nada: vuelva a "
                                                   "hacer la lista.");
}

void FirmarServicio(Conexion &conexion, const Firmante &firmante, const ServicioLeido &servicio)
{
    RevisarServicio(conexion, servicio);
    conexion.Execute("UPDATE Plan_Mantenimiento SET Oper_Ult_Modif = ?, Fecha_Ult_Modif = ?" + DelServicio,
                     QVariantList{firmante.operador, firmante.fecha()} + ClavesDe(servicio));
    AnotarCambio(conexion, firmante, "Plan_Mantenimiento",
                 servicio.tipoEquipo + "|" + servicio.folio + "|" + servicio.parte);
}

void AnotarEstado(Conexion &conexion, const Firmante &firmante, const QString &tabla, const QString &clave,
                  const QString &accion)
{
    conexion.Execute("INSERT INTO Bitacora (Bi_Tabla, Bi_Clave, Bi_Accion, Bi_Oper, Bi_Fecha) VALUES (" + Literal(tabla)
                     + ", " + Literal(clave) + ", " + Literal(accion) + ", " + Literal(firmante.operador) + ", "
                     + Literal(firmante.fecha()) + ")");
}

QList<QPair<QString, QString>> Autoria(Conexion &conexion, const QString &tabla, const QStringList &columnas,
                                       const QStringList &valores)
{
    const auto fila = conexion.Execute("SELECT * FROM " + tabla + " WHERE " + Condicion(columnas, valores));
    if (fila.Eof())
        throw ErrorEjecucion(errores::SinRegistroActual, "El registro ya no existe");
    return {{"Creado por", fila["Oper_Alta"]},
            {"Fecha de creación", fila["Fecha_Alta"]},
            {"Último cambio por", fila["Oper_Ult_Modif"]},
            {"Fecha del último cambio", fila["Fecha_Ult_Modif"]},
            {"Dado de baja por", fila["Oper_Baja"]},
            {"Fecha de baja", fila["Fecha_Baja"]}};
}

} // namespace qvx
