#include "plan/Usos.h"

#include "data/Cuantos.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "data/Transaccion.h"
#include "plan/OperacionEnCurso.h"
#include "plan/Rutas.h"

#include <algorithm>

namespace qvx
{

namespace
{

using Clase = ColumnaDeCatalogo::Clase;

// What each table tells of the rows that hold a key, with places for the key's column.
const QString DeRenglones =
    "SELECT d.Te_Cve_Tipo_Equipo, d.Tep_ID, d.Pm_ID, s.Version AS Sello, d.Pmd_ID, d.Pmd_Tipo, t.Te_Descripcion, "
    "ts.Ts_Descripcion, d.Pmd_Cantidad, d.Pmd_Unidad, s.Es_Cve_Estado FROM Plan_Mantenimiento_Detalle d "
    "LEFT JOIN Plan_Mantenimiento s ON s.Te_Cve_Tipo_Equipo = d.Te_Cve_Tipo_Equipo AND s.Tep_ID = d.Tep_ID AND "
    "s.Pm_ID = d.Pm_ID LEFT JOIN Tipo_Equipo t ON t.Te_Cve_Tipo_Equipo = d.Te_Cve_Tipo_Equipo "
    "LEFT JOIN Tipo_Servicio ts ON ts.Ts_Cve_Tipo_Servicio = s.Ts_Cve_Tipo_Servicio WHERE d.%1 = ?";
const QString DeServicios =
    "SELECT s.Te_Cve_Tipo_Equipo, s.Tep_ID, s.Pm_ID, s.Version AS Sello, '' AS Renglon, '' AS Clase, t.Te_Descripcion, "
    "ts.Ts_Descripcion, 0 AS Cantidad, '' AS Unidad, s.Es_Cve_Estado FROM Plan_Mantenimiento s "
    "LEFT JOIN Tipo_Equipo t ON t.Te_Cve_Tipo_Equipo = s.Te_Cve_Tipo_Equipo "
    "LEFT JOIN Tipo_Servicio ts ON ts.Ts_Cve_Tipo_Servicio = s.Ts_Cve_Tipo_Servicio WHERE s.%1 = ?";
const QString DePartes =
    "SELECT p.Te_Cve_Tipo_Equipo, p.Tep_ID, '' AS Pm_ID, '' AS Sello, '' AS Renglon, '' AS Clase, t.Te_Descripcion, "
    "'' AS Servicio, 0 AS Cantidad, '' AS Unidad, p.Es_Cve_Estado FROM Tipo_Equipo_Parte p "
    "LEFT JOIN Tipo_Equipo t ON t.Te_Cve_Tipo_Equipo = p.Te_Cve_Tipo_Equipo WHERE p.%1 = ?";
const QString DeProductos =
    "SELECT '' AS Tipo, '' AS Parte, '' AS Folio, '' AS Sello, Pr_Cve_Producto, Pr_Clase, Pr_Descripcion, "
    "'' AS Servicio, 0 AS Cantidad, Pr_Unidad_Control_1, Es_Cve_Estado FROM Producto WHERE %1 = ?";

Uso::Donde Lugar(const QString &tabla)
{
    if (tabla == "Plan_Mantenimiento_Detalle")
        return Uso::Donde::Renglon;
    if (tabla == "Plan_Mantenimiento")
        return Uso::Donde::Servicio;
    return tabla == "Producto" ? Uso::Donde::Producto : Uso::Donde::Parte;
}

const QString &Consulta(Uso::Donde donde)
{
    switch (donde) {
    case Uso::Donde::Renglon:
        return DeRenglones;
    case Uso::Donde::Servicio:
        return DeServicios;
    case Uso::Donde::Producto:
        return DeProductos;
    default:
        return DePartes;
    }
}

Uso LeerUso(const Recordset &fila, Uso::Donde donde, const QString &columna, Rutas &rutas)
{
    const auto clave = [&](int i) { return SinBlancosAlFinal(fila.Texto(i)); };
    Uso uso;
    uso.donde = donde;
    uso.columna = columna;
    uso.servicio = {clave(0), clave(1), clave(2), fila.Texto(3)};
    uso.renglon = clave(4);
    uso.clase = clave(5);
    uso.nombreTipo = fila.Texto(6);
    uso.tipoServicio = fila.Texto(7);
    uso.cantidad = fila.Texto(8).toDouble();
    uso.unidad = clave(9);
    uso.estado = clave(10);
    if (donde != Uso::Donde::Producto)
        uso.ruta = rutas.De(uso.servicio.tipoEquipo, uso.servicio.parte);
    return uso;
}

auto Orden(const Uso &uso)
{
    return std::tie(uso.servicio.tipoEquipo, uso.servicio.parte, uso.servicio.folio, uso.renglon, uso.columna);
}

// Two rows of one product in a grid of the editor are refused, so that the service could not be saved any more.
void RevisarRepetidos(Conexion &conexion, const TablaDeCatalogo &tabla, const RegistroDeCatalogo &nuevo,
                      const QList<Uso> &usos)
{
    if (tabla.Lugar(Clase::ClaseDeProducto) < 0)
        return;
    QSet<QString> servicios;
    for (const Uso &otro : UsosDe(conexion, tabla, nuevo.clave))
        servicios.insert(otro.servicio.tipoEquipo + "|" + otro.servicio.folio + "|" + otro.clase);
    for (const Uso &uso : usos)
        if (servicios.contains(uso.servicio.tipoEquipo + "|" + uso.servicio.folio + "|" + uso.clase))
            throw ErrorEjecucion(errores::Datos,
                                 "El servicio " + uso.servicio.folio + " del tipo de equipo " + uso.servicio.tipoEquipo
                                     + " ya tiene un renglón con " + nuevo.clave + " " + nuevo.Descripcion()
                                     + ": quedaría dos veces. Quite uno de los dos en el servicio y repita el "
                                       "reemplazo. No se guardó nada.");
}

void ReemplazarUno(Conexion &conexion, const Uso &uso, const QString &vieja, const QString &nueva)
{
    const QString asignar = " SET " + uso.columna + " = ? WHERE ";
    const QString donde = " AND " + uso.columna + " = ?";
    const ServicioLeido &servicio = uso.servicio;
    int cambiadas = 0;
    if (uso.donde == Uso::Donde::Producto)
        cambiadas =
            conexion.Execute("UPDATE Producto" + asignar + "Pr_Cve_Producto = ?" + donde, {nueva, uso.renglon, vieja})
                .Afectadas();
    else if (uso.donde == Uso::Donde::Renglon)
        cambiadas = conexion
                        .Execute("UPDATE Plan_Mantenimiento_Detalle" + asignar
                                     + "Te_Cve_Tipo_Equipo = ? AND Tep_ID = ? AND Pm_ID = ? AND Pmd_ID = ?" + donde,
                                 {nueva, servicio.tipoEquipo, servicio.parte, servicio.folio, uso.renglon, vieja})
                        .Afectadas();
    else
        cambiadas = conexion
                        .Execute("UPDATE Plan_Mantenimiento" + asignar
                                     + "Te_Cve_Tipo_Equipo = ? AND Tep_ID = ? AND Pm_ID = ?" + donde,
                                 {nueva, servicio.tipoEquipo, servicio.parte, servicio.folio, vieja})
                        .Afectadas();
    if (cambiadas != 1)
        throw ErrorEjecucion(errores::Datos, "Un uso de " + vieja
                                                 + " cambió mientras se reemplazaba. No se guardó "
                                                   "nada: vuelva a hacer la lista.");
}

} // namespace

QList<Uso> UsosDe(Conexion &conexion, const TablaDeCatalogo &tabla, const QString &clave)
{
    QList<Uso> usos;
    Rutas rutas(conexion);
    const bool tipos = tabla.nombre == "Tipo_Equipo";
    for (const auto &[nombre, columna] : tabla.usos) {
        const Uso::Donde donde = Lugar(nombre);
        if (tipos && donde == Uso::Donde::Renglon)
            continue;
        for (auto filas = conexion.Execute(Consulta(donde).arg(columna), {clave}); !filas.Eof(); filas.MoveNext())
            usos.append(LeerUso(filas, donde, columna, rutas));
    }
    std::sort(usos.begin(), usos.end(), [](const Uso &uno, const Uso &otro) { return Orden(uno) < Orden(otro); });
    return usos;
}

QString ObjecionAlReemplazo(const TablaDeCatalogo &tabla, const RegistroDeCatalogo &viejo,
                            const RegistroDeCatalogo &nuevo)
{
    if (tabla.nombre == "Tipo_Equipo")
        return "Un tipo de equipo no se reemplaza por otro: copie su plan.";
    if (nuevo.clave == viejo.clave)
        return "Elija otra clave: es la misma.";
    if (nuevo.estado != estado::Activo)
        return nuevo.clave + " está dada de baja: elija una clave activa.";
    for (const Clase clase : {Clase::ClaseDeProducto, Clase::Unidad})
        if (const int lugar = tabla.Lugar(clase); lugar >= 0 && viejo.valores.at(lugar) != nuevo.valores.at(lugar))
            return "Elija un producto de la misma " + tabla.columnas.at(lugar).titulo.toLower() + " ("
                   + viejo.valores.at(lugar) + "): " + nuevo.clave + " es de " + nuevo.valores.at(lugar)
                   + ", y los importes quedarían mal.";
    return {};
}

void Reemplazar(Conexion &conexion, const Firmante &firmante, const TablaDeCatalogo &tabla,
                const RegistroDeCatalogo &viejo, const RegistroDeCatalogo &nuevo, const QList<Uso> &usos)
{
    if (const QString objecion = ObjecionAlReemplazo(tabla, viejo, nuevo); !objecion.isEmpty())
        throw ErrorEjecucion(errores::Datos, objecion);
    Transaccion transaccion(conexion);
    QSet<QString> firmados;
    for (const Uso &uso : usos) { // by type: whoever else locks several does so in this order
        const QString servicio = uso.servicio.tipoEquipo + "|" + uso.servicio.parte + "|" + uso.servicio.folio;
        if (!uso.servicio.sello.isEmpty() && !firmados.contains(servicio))
            FirmarServicio(conexion, firmante, uso.servicio);
        firmados.insert(servicio);
    }
    RevisarRepetidos(conexion, tabla, nuevo, usos);
    if (LeerSituacion(conexion, tabla, {nuevo.clave}).registros.value(nuevo.clave) != nuevo)
        throw ErrorEjecucion(errores::Datos, nuevo.clave + " " + nuevo.Descripcion()
                                                 + " cambió mientras tanto. No se guardó nada: vuelva a elegirla.");
    for (const Uso &uso : usos) {
        ReemplazarUno(conexion, uso, viejo.clave, nuevo.clave);
        if (uso.donde == Uso::Donde::Producto)
            AnotarCambio(conexion, firmante, "Producto", uso.renglon);
        else if (uso.servicio.sello.isEmpty()) // a line whose service is gone
            AnotarCambio(conexion, firmante, "Plan_Mantenimiento_Detalle",
                         uso.servicio.tipoEquipo + "|" + uso.servicio.folio + "|" + uso.renglon);
    }
    NombrarOperacion(conexion, "Clave reemplazada",
                     viejo.clave + " " + viejo.Descripcion() + " por " + nuevo.clave + " " + nuevo.Descripcion()
                         + ", en " + Cuantos(usos.size(), "uso", "usos"));
    transaccion.Confirmar();
}

} // namespace qvx
