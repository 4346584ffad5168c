// Other prices, priorities, service types and frequencies for many services at once.

#include "data/ErrorEjecucion.h"
#include "plan/Catalogos.h"
#include "plan/LotesDeServicios.h"
#include "plan/PlanTomado.h"

#include <QSet>
#include <cmath>

namespace qvx
{

namespace
{

// A column with its value before and after, and the catalogue that its keys are of, "" for none.
struct Columna {
    const char *nombre; // for the history
    const char *asignar;
    QVariant antes;
    QVariant despues;
    const char *catalogo;
};

QList<Columna> Columnas(const CambioDeServicio &cambio)
{
    const auto &[servicio, antes, despues] = cambio;
    return {
        {"tipo de servicio", "UPDATE Plan_Mantenimiento SET Ts_Cve_Tipo_Servicio = ?", antes.tipoServicio,
         despues.tipoServicio, "TIPO_SERVICIO"},
        {"prioridad", "UPDATE Plan_Mantenimiento SET Pm_Prioridad = ?", antes.prioridad, despues.prioridad,
         "PRIORIDAD_SERVICIO"},
        {"días", "UPDATE Plan_Mantenimiento SET Pm_Frecuencia = ?", antes.dias, despues.dias, ""},
        {"lectura", "UPDATE Plan_Mantenimiento SET Pm_Lectura = ?", antes.lectura, despues.lectura, ""},
        {"unidad de la lectura", "UPDATE Plan_Mantenimiento SET Pm_Unidad_Lectura = ?", antes.unidad, despues.unidad,
         "UNIDAD"},
        {"precio", "UPDATE Plan_Mantenimiento SET Pm_Precio = ?", antes.precio, despues.precio, ""},
    };
}

// Somebody may have retired an entry since it was chosen.
void RevisarOferta(Conexion &conexion, const QString &catalogo, const QString &clave, QSet<QString> &vistas)
{
    const QString vista = catalogo + QLatin1Char('|') + clave;
    if (clave.isEmpty() || vistas.contains(vista))
        return;
    vistas.insert(vista);
    if (DescripcionDeCatalogo(conexion, catalogo, clave).isEmpty())
        Rechazar(CatalogoPorCodigo(catalogo).titulo + ": la clave " + clave
                 + " no existe o está dada de baja. No se guardó nada: elija otra.");
}

} // namespace

QString ObjecionAlCambio(const CambioDeServicio &cambio)
{
    const ValoresDeServicio &despues = cambio.despues;
    for (const double valor : {despues.dias, despues.lectura, despues.precio})
        if (!std::isfinite(valor) || valor < 0)
            return "El precio y las frecuencias son números desde 0.";
    if (despues.dias == 0 && despues.lectura == 0)
        return "Se quedaría sin frecuencia: debe tener días o lectura.";
    if (despues.lectura > 0 && despues.unidad.isEmpty())
        return "La lectura pide una unidad.";
    if (despues.tipoServicio.isEmpty() || despues.prioridad.isEmpty())
        return "Debe tener tipo de servicio y prioridad.";
    return despues == cambio.antes ? QString("No cambia nada.") : QString();
}

void CambiarServicios(Conexion &conexion, const Firmante &firmante, const QList<CambioDeServicio> &cambios)
{
    if (cambios.isEmpty())
        return;
    PlanTomado plan(conexion, firmante, cambios.constFirst().servicio.tipoEquipo);
    QSet<QString> vistas;
    QStringList cambiadas;
    for (const CambioDeServicio &cambio : cambios) {
        const ServicioLeido &servicio = cambio.servicio;
        if (const QString objecion = ObjecionAlCambio(cambio); !objecion.isEmpty())
            Rechazar("El servicio " + servicio.folio + ": " + objecion + " No se guardó nada.");
        plan.Firmar(servicio);
        for (const Columna &columna : Columnas(cambio)) {
            if (columna.antes == columna.despues)
                continue;
            if (*columna.catalogo)
                RevisarOferta(conexion, columna.catalogo, columna.despues.toString(), vistas);
            if (const QString nombre = QString::fromUtf8(columna.nombre); !cambiadas.contains(nombre))
                cambiadas.append(nombre);
            RevisarEscrito(conexion.Execute(QLatin1String(columna.asignar) + DelServicio,
                                            QVariantList{columna.despues} + ClavesDe(servicio)),
                           servicio);
        }
    }
    plan.Confirmar(cambios.size() == 1 ? "Servicio cambiado" : "Servicios cambiados",
                   CuantosServicios(cambios.size(), cambios.constFirst().servicio) + ": " + cambiadas.join(", "));
}

} // namespace qvx
