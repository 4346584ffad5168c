#include "app/catalogos/OrdenesDeCostos.h"

#include "app/Acceso.h"
#include "app/Argumentos.h"
#include "app/InteraccionDeConsola.h"
#include "app/Reporte.h"
#include "app/catalogos/TextosDeCostos.h"
#include "data/Conexion.h"
#include "data/Momento.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"
#include "plan/Claves.h"
#include "plan/Gastos.h"
#include "session/Sesion.h"

#include <functional>

namespace
{

// The keys that the line names, in their mask: equipment types on offer.
QStringList Tipos(qvx::Conexion &conexion, const QStringList &dadas)
{
    const QString mascara = qvx::claves::Mascara(conexion, "FTO_TIPO_EQUIPO", "");
    QStringList tipos;
    for (const QString &dada : dadas) {
        const QString clave = qvx::ClaveConFormato(dada, mascara);
        if (qvx::DescripcionDeCatalogo(conexion, "TIPO_EQUIPO", clave).isEmpty())
            throw qvx::ErrorEjecucion(qvx::errores::Datos,
                                      "El tipo de equipo " + clave + " no existe o está dado de baja.");
        tipos.append(clave);
    }
    return tipos;
}

int EnSesion(const Argumentos &argumentos, const std::function<int(qvx::Sesion &sesion)> &pasos)
{
    ExigirBase(argumentos);
    const auto sesion =
        IniciarSesion(argumentos, AbrirBase(argumentos), std::make_unique<InteraccionDeConsola>("", argumentos.si));
    return pasos(*sesion);
}

// What is told is of one moment, which ends before anything is written.
template <class Leido>
Leido LeerDeUnMomento(qvx::Conexion &conexion, const Argumentos &argumentos,
                      Leido (*leer)(qvx::Conexion &, const QStringList &))
{
    const qvx::Momento momento(conexion);
    return leer(conexion, Tipos(conexion, argumentos.claves));
}

QString Lugar(const qvx::ServicioDelPlan &servicio, const QString &linea, const QString &producto,
              const QString &descripcion)
{
    const qvx::ServicioLeido &leido = servicio.leido;
    return "Tipo de equipo " + leido.tipoEquipo + ", parte " + leido.parte + " " + servicio.ruta + ", servicio "
           + leido.folio + " " + servicio.tipoServicio + ", renglón " + linea + ", " + producto + " " + descripcion;
}

QString EnUnRenglon(const qvx::DiferenciasDeCostos &diferencias, const qvx::DiferenciaDeCosto &linea)
{
    return Lugar(diferencias.servicios.at(linea.servicio), linea.linea, linea.producto, linea.descripcion) + ", "
           + qvx::NumeroATexto(linea.cantidad) + " " + linea.unidad + ": costo " + TextoDeCosto(linea.costo) + " → "
           + TextoDeCosto(linea.costoNuevo) + ", importe " + TextoDeImporte(linea.importe) + " → "
           + TextoDeImporte(linea.importeNuevo)
           + (linea.reparo.isEmpty() ? QString(".") : ". Pide revisión: " + linea.reparo + ".");
}

QString Perdida(const qvx::DiferenciasDeCostos &diferencias, int servicio, const QList<bool> &marcadas)
{
    const qvx::ServicioLeido &leido = diferencias.servicios.at(servicio).leido;
    const qvx::Costeo antes = diferencias.Antes(servicio);
    const qvx::Costeo despues = diferencias.Despues(servicio, marcadas);
    return "PÉRDIDA NUEVA: tipo de equipo " + leido.tipoEquipo + ", servicio " + leido.folio + ": utilidad "
           + TextoDeImporte(antes.utilidad) + " → " + TextoDeImporte(despues.utilidad) + ".";
}

void Contar(const qvx::DiferenciasDeCostos &diferencias, const QList<bool> &marcadas)
{
    for (const qvx::DiferenciaDeCosto &linea : diferencias.lineas)
        Escribir(stdout, EnUnRenglon(diferencias, linea));
    for (int servicio = 0; servicio < diferencias.servicios.size(); ++servicio)
        if (diferencias.PerdidaNueva(servicio, marcadas))
            Escribir(stdout, Perdida(diferencias, servicio, marcadas));
    const qvx::ResumenDeCostos resumen = qvx::Resumir(diferencias, marcadas);
    const QString faltan = diferencias.lineas.size() == resumen.lineas
                               ? QString()
                               : " Piden revisión "
                                     + Cuantos(diferencias.lineas.size() - resumen.lineas, "renglón", "renglones")
                                     + ": márquelos en la ventana, Herramientas, Actualizar costos.";
    Escribir(stdout,
             (diferencias.lineas.isEmpty() ? QString("Todos los costos están al día.")
                                           : "Con --si cambian " + Cuantos(resumen.lineas, "renglón", "renglones")
                                                 + " de " + Cuantos(resumen.servicios, "servicio", "servicios")
                                                 + ", por " + TextoDeCambio(resumen.cambio) + " en total." + faltan)
                 + TextoDeAparte(diferencias.aparte));
}

} // namespace

int ActualizarLosCostos(const Argumentos &argumentos)
{
    return EnSesion(argumentos, [&](qvx::Sesion &sesion) {
        const auto diferencias = LeerDeUnMomento(sesion.Conexion(), argumentos, &qvx::LeerDiferencias);
        const QList<bool> marcadas = diferencias.MarcadasDeInicio();
        Contar(diferencias, marcadas);
        const int codigo = marcadas.contains(false) ? salida::Fallido : salida::Hecho;
        if (!argumentos.si || !marcadas.contains(true))
            return codigo;
        const auto escritos = qvx::ActualizarCostos(sesion.Conexion(), sesion.Firmante(), diferencias, marcadas);
        Escribir(escritos.fallido.isEmpty() ? stdout : stderr, TextoDeEscritos(escritos));
        if (!escritos.aclaracion.isEmpty())
            Escribir(stderr, escritos.aclaracion);
        return escritos.fallido.isEmpty() ? codigo : salida::Fallido;
    });
}

int CompletarLosGastos(const Argumentos &argumentos)
{
    return EnSesion(argumentos, [&](qvx::Sesion &sesion) {
        const auto refacciones = LeerDeUnMomento(sesion.Conexion(), argumentos, &qvx::LeerSinGasto);
        for (const qvx::RefaccionSinGasto &linea : refacciones.lineas)
            Escribir(stdout,
                     Lugar(refacciones.servicios.at(linea.servicio), linea.linea, linea.producto, linea.descripcion)
                         + ": " + linea.motivo + ". "
                         + (linea.propuesto.isEmpty() ? "Hay que elegirlo: " : "Se propone " + linea.propuesto + ": ")
                         + linea.fundamento + ".");
        const QStringList propuestos = refacciones.Propuestos();
        const auto faltan = propuestos.count(QString());
        const auto conPropuesta = propuestos.size() - faltan;
        Escribir(stdout, (propuestos.isEmpty() ? QString("Todas las refacciones tienen tipo de gasto.")
                                               : "Con --si reciben tipo de gasto "
                                                     + Cuantos(conPropuesta, "refacción", "refacciones") + "."
                                                     + (faltan == 0 ? QString()
                                                                    : " Sin propuesta: " + QString::number(faltan)
                                                                          + ", elíjalo en la ventana, Herramientas, "
                                                                            "Completar tipos de gasto."))
                             + TextoDeAparte(refacciones.aparte));
        if (argumentos.si && conPropuesta > 0) {
            const int escritas = qvx::CompletarGastos(sesion.Conexion(), sesion.Firmante(), refacciones, propuestos);
            Escribir(stdout, "Recibieron tipo de gasto " + Cuantos(escritas, "refacción", "refacciones") + ".");
        }
        return faltan == 0 ? salida::Hecho : salida::Fallido;
    });
}
