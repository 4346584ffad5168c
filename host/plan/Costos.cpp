#include "plan/Costos.h"

#include "data/Cuantos.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "data/Transaccion.h"
#include "plan/OperacionEnCurso.h"
#include "plan/RegistrosDeCatalogo.h"

#include <QSet>
#include <cmath>
#include <map>

namespace qvx
{

namespace
{

// A larger part of the old cost is more often a slip of the comma, or another package, than a price.
constexpr double CambioCreible = 0.25;
constexpr double Holgura = 1e-12; // part of a number that binary fractions may leave in a difference

const QString ConCosto = " d.Pmd_Tipo IN ('01', '02')";

struct Producto {
    QString descripcion;
    QString unidad;
    double costo = 0;
    bool activo = false;
};

QHash<QString, Producto> LeerProductos(Conexion &conexion)
{
    QHash<QString, Producto> productos;
    for (auto filas = conexion.Execute("SELECT Pr_Cve_Producto, Pr_Descripcion, Pr_Unidad_Control_1, Es_Cve_Estado, "
                                       "Pr_Costo_Estandar FROM Producto",
                                       {});
         !filas.Eof(); filas.MoveNext())
        productos.insert(SinBlancosAlFinal(filas.Texto(0)), {filas.Texto(1), SinBlancosAlFinal(filas.Texto(2)),
                                                             Redondeado(filas.Numero("Pr_Costo_Estandar")),
                                                             SinBlancosAlFinal(filas.Texto(3)) == estado::Activo});
    return productos;
}

QString Reparo(const DiferenciaDeCosto &linea, const Producto &producto)
{
    QStringList reparos;
    if (linea.unidad != linea.unidadProducto)
        reparos.append("la unidad del renglón es " + linea.unidad + " y la del producto " + linea.unidadProducto);
    if (linea.costoNuevo == 0)
        reparos.append("el costo nuevo es 0");
    if (!producto.activo)
        reparos.append("el producto está dado de baja");
    if (std::abs(linea.costoNuevo - linea.costo) > CambioCreible * std::abs(linea.costo) * (1 + Holgura))
        reparos.append("el costo cambia más de 25 %");
    if (!std::isfinite(linea.importeNuevo))
        reparos.append("el importe no cabe en un número");
    return reparos.join("; ");
}

void LeerCostos(Conexion &conexion, const QStringList &tipos, const ServiciosDelPlan &servicios,
                DiferenciasDeCostos &diferencias)
{
    diferencias.costos.fill(0, servicios.Todos().size());
    for (auto filas =
             conexion.Execute("SELECT d.Te_Cve_Tipo_Equipo, d.Tep_ID, d.Pm_ID, SUM(d.Pmd_Importe) AS Importe FROM "
                              "Plan_Mantenimiento_Detalle d WHERE"
                                  + ConCosto + YDeTipos("d.Te_Cve_Tipo_Equipo", tipos)
                                  + " GROUP BY d.Te_Cve_Tipo_Equipo, d.Tep_ID, d.Pm_ID",
                              ValoresDeTipos(tipos));
         !filas.Eof(); filas.MoveNext())
        if (const int servicio = servicios.LugarDe(filas); servicio >= 0)
            diferencias.costos[servicio] = Redondeado(filas.Numero("Importe"));
}

void LeerLineas(Conexion &conexion, const QStringList &tipos, const ServiciosDelPlan &servicios,
                DiferenciasDeCostos &diferencias)
{
    const QHash<QString, Producto> productos = LeerProductos(conexion);
    for (auto filas = conexion.Execute(
             "SELECT d.Te_Cve_Tipo_Equipo, d.Tep_ID, d.Pm_ID, d.Pmd_ID, d.Pmd_Tipo, d.Pr_Cve_Producto, d.Pmd_Cantidad, "
             "d.Pmd_Unidad, d.Pmd_Costo, d.Pmd_Importe FROM Plan_Mantenimiento_Detalle d JOIN Producto p ON "
             "p.Pr_Cve_Producto = d.Pr_Cve_Producto WHERE"
                 + ConCosto + " AND d.Pmd_Costo <> p.Pr_Costo_Estandar" + YDeTipos("d.Te_Cve_Tipo_Equipo", tipos)
                 + " ORDER BY d.Te_Cve_Tipo_Equipo, d.Pm_ID, d.Pmd_ID",
             ValoresDeTipos(tipos));
         !filas.Eof(); filas.MoveNext()) {
        const QString clave = SinBlancosAlFinal(filas.Texto(5));
        const Producto producto = productos.value(clave);
        const double costo = filas.Numero("Pmd_Costo");
        if (std::abs(costo - producto.costo) <= Holgura * std::abs(costo) && Redondeado(costo) == producto.costo)
            continue;
        const int servicio = servicios.LugarDe(filas);
        if (servicio < 0) {
            ++diferencias.aparte;
            continue;
        }
        const double cantidad = filas.Numero("Pmd_Cantidad");
        DiferenciaDeCosto linea{servicio,
                                SinBlancosAlFinal(filas.Texto(3)),
                                SinBlancosAlFinal(filas.Texto(4)),
                                clave,
                                producto.descripcion,
                                cantidad,
                                SinBlancosAlFinal(filas.Texto(7)),
                                producto.unidad,
                                costo,
                                producto.costo,
                                filas.Numero("Pmd_Importe"),
                                Redondeado(cantidad * producto.costo),
                                {}};
        linea.reparo = Reparo(linea, producto);
        diferencias.deServicio[servicio].append(static_cast<int>(diferencias.lineas.size()));
        diferencias.lineas.append(std::move(linea));
    }
}

// Everything of a line that a person saw and that is written, as one text.
QString Vista(const DiferenciasDeCostos &diferencias, const DiferenciaDeCosto &linea)
{
    const ServicioLeido &servicio = diferencias.servicios.at(linea.servicio).leido;
    return QStringList{servicio.parte,
                       servicio.folio,
                       linea.linea,
                       linea.producto,
                       linea.clase,
                       NumeroATexto(linea.cantidad),
                       NumeroATexto(linea.costo),
                       NumeroATexto(linea.importe),
                       NumeroATexto(linea.costoNuevo),
                       linea.reparo}
        .join(QLatin1Char('|'));
}

[[noreturn]] void RechazarLinea(Conexion &conexion, const DiferenciasDeCostos &diferencias,
                                const DiferenciaDeCosto &linea)
{
    const QString fin = " No se guardó nada de este plan: vuelva a hacer la lista.";
    const Producto actual = LeerProductos(conexion).value(linea.producto);
    if (actual.costo != linea.costoNuevo || actual.unidad != linea.unidadProducto)
        throw ErrorEjecucion(errores::Datos,
                             "El producto " + linea.producto + ": " + QuienCambio(conexion, "Producto", linea.producto)
                                 + ", después de que esta lista lo leyó. Su costo es " + NumeroATexto(actual.costo)
                                 + " y en la lista era " + NumeroATexto(linea.costoNuevo) + "." + fin);
    const ServicioLeido &servicio = diferencias.servicios.at(linea.servicio).leido;
    throw ErrorEjecucion(errores::Datos, "El renglón " + linea.linea + " del servicio " + servicio.folio
                                             + " ya no está como en la lista: alguien cambió el renglón, su producto o "
                                               "su parte después de que esta lista los leyó."
                                             + fin);
}

void EscribirLinea(Conexion &conexion, const ServicioLeido &servicio, const DiferenciaDeCosto &linea)
{
    if (!std::isfinite(linea.importeNuevo))
        throw ErrorEjecucion(errores::Desbordamiento, "El importe del renglón " + linea.linea + " del servicio "
                                                          + servicio.folio
                                                          + " no cabe en un número: corrija su cantidad.");
    const int escritas = conexion
                             .Execute("UPDATE Plan_Mantenimiento_Detalle SET Pmd_Costo = ?, Pmd_Importe = ? WHERE "
                                      "Te_Cve_Tipo_Equipo = ? AND Tep_ID = ? AND Pm_ID = ? AND Pmd_ID = ?",
                                      {linea.costoNuevo, linea.importeNuevo, servicio.tipoEquipo, servicio.parte,
                                       servicio.folio, linea.linea})
                             .Afectadas();
    if (escritas != 1)
        throw ErrorEjecucion(errores::Datos, "El renglón " + linea.linea + " del servicio " + servicio.folio
                                                 + " no se pudo escribir. No se guardó nada de este plan.");
}

// lineas: by service. The services are signed first, which keeps the plan to this transaction; only then is what was
// seen compared with what is there.
void EscribirPlan(Conexion &conexion, const Firmante &firmante, const DiferenciasDeCostos &diferencias,
                  const QString &tipo, const QList<int> &lineas)
{
    Transaccion transaccion(conexion);
    const Firmante ahora{firmante.operador, [fecha = firmante.fecha()] { return fecha; }};
    int firmado = -1;
    for (const int i : lineas)
        if (const int servicio = diferencias.lineas.at(i).servicio; servicio != firmado) {
            FirmarServicio(conexion, ahora, diferencias.servicios.at(servicio).leido);
            firmado = servicio;
        }
    const DiferenciasDeCostos actuales = LeerDiferencias(conexion, {tipo});
    QSet<QString> vistas;
    for (const DiferenciaDeCosto &actual : actuales.lineas)
        vistas.insert(Vista(actuales, actual));
    for (const int i : lineas) {
        const DiferenciaDeCosto &linea = diferencias.lineas.at(i);
        if (!vistas.contains(Vista(diferencias, linea)))
            RechazarLinea(conexion, diferencias, linea);
        EscribirLinea(conexion, diferencias.servicios.at(linea.servicio).leido, linea);
    }
    NombrarOperacion(conexion, "Costos actualizados", Cuantos(lineas.size(), "renglón", "renglones"));
    transaccion.Confirmar();
}

} // namespace

// Most amounts have few decimals, which are found without writing them out.
double Redondeado(double numero)
{
    constexpr double Escala = 1e6;
    constexpr double MayorEscalado = 1e15;
    const double escalado = std::round(numero * Escala);
    const double corto = escalado / Escala;
    if (std::abs(escalado) < MayorEscalado && std::abs(corto - numero) <= std::abs(numero) * 1e-15)
        return corto;
    return NumeroATexto(numero).toDouble();
}

Costeo Costear(double precio, double costo)
{
    const double utilidad = Redondeado(precio - costo);
    return {costo, utilidad, precio == 0 ? 0 : utilidad / precio * 100};
}

QList<bool> DiferenciasDeCostos::MarcadasDeInicio() const
{
    QList<bool> marcadas;
    marcadas.reserve(lineas.size());
    for (const DiferenciaDeCosto &linea : lineas)
        marcadas.append(linea.reparo.isEmpty());
    return marcadas;
}

Costeo DiferenciasDeCostos::Antes(int servicio) const
{
    return Costear(servicios.at(servicio).precio, costos.at(servicio));
}

Costeo DiferenciasDeCostos::Despues(int servicio, const QList<bool> &marcadas) const
{
    double costo = costos.at(servicio);
    for (const int i : deServicio.at(servicio))
        if (marcadas.at(i))
            costo += lineas.at(i).importeNuevo - lineas.at(i).importe;
    return Costear(servicios.at(servicio).precio, Redondeado(costo));
}

bool DiferenciasDeCostos::PerdidaNueva(int servicio, const QList<bool> &marcadas) const
{
    return !Antes(servicio).Pierde() && Despues(servicio, marcadas).Pierde();
}

ResumenDeCostos Resumir(const DiferenciasDeCostos &diferencias, const QList<bool> &marcadas)
{
    ResumenDeCostos resumen;
    QSet<QString> planes;
    long double importe = 0; // what thousands of sums leave behind would be seen in their difference
    long double importeNuevo = 0;
    for (int servicio = 0; servicio < diferencias.servicios.size(); ++servicio) {
        const int antes = resumen.lineas;
        for (const int i : diferencias.deServicio.at(servicio)) {
            const DiferenciaDeCosto &linea = diferencias.lineas.at(i);
            if (!marcadas.at(i))
                continue;
            ++resumen.lineas;
            resumen.conReparo += linea.reparo.isEmpty() ? 0 : 1;
            importe += linea.importe;
            importeNuevo += linea.importeNuevo;
        }
        if (resumen.lineas == antes)
            continue;
        ++resumen.servicios;
        resumen.perdidas += diferencias.PerdidaNueva(servicio, marcadas) ? 1 : 0;
        planes.insert(diferencias.servicios.at(servicio).leido.tipoEquipo);
    }
    resumen.planes = static_cast<int>(planes.size());
    resumen.importe = static_cast<double>(importe);
    resumen.importeNuevo = static_cast<double>(importeNuevo);
    resumen.cambio = Redondeado(static_cast<double>(importeNuevo - importe));
    return resumen;
}

DiferenciasDeCostos LeerDiferencias(Conexion &conexion, const QStringList &tipos)
{
    const ServiciosDelPlan servicios(conexion, tipos);
    DiferenciasDeCostos diferencias;
    diferencias.servicios = servicios.Todos();
    diferencias.deServicio.resize(servicios.Todos().size());
    LeerLineas(conexion, tipos, servicios, diferencias);
    LeerCostos(conexion, tipos, servicios, diferencias);
    return diferencias;
}

CostosEscritos ActualizarCostos(Conexion &conexion, const Firmante &firmante, const DiferenciasDeCostos &diferencias,
                                const QList<bool> &marcadas)
{
    std::map<QString, QList<int>> planes;
    for (const QList<int> &deServicio : diferencias.deServicio)
        for (const int i : deServicio)
            if (marcadas.at(i))
                planes[diferencias.servicios.at(diferencias.lineas.at(i).servicio).leido.tipoEquipo].append(i);
    CostosEscritos escritos;
    for (const auto &[tipo, lineas] : planes) {
        if (!escritos.fallido.isEmpty()) {
            escritos.pendientes.append(tipo);
            continue;
        }
        try {
            EscribirPlan(conexion, firmante, diferencias, tipo, lineas);
            escritos.hechos.append(tipo);
            escritos.lineas += static_cast<int>(lineas.size());
        } catch (const ErrorEjecucion &error) {
            escritos.fallido = tipo;
            escritos.motivo = error.Descripcion();
            escritos.aclaracion = error.Aclaracion();
        }
    }
    return escritos;
}

} // namespace qvx
