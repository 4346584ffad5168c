#include "app/catalogos/TextosDeCostos.h"

namespace
{

const QString FormatoCosto = "$#,##0.0000#####";
const QString FormatoImporte = "$#,##0.00#######";

} // namespace

QString TextoDeCosto(double costo)
{
    return qvx::NumeroConFormato(costo, FormatoCosto);
}

QString TextoDeImporte(double importe)
{
    return qvx::NumeroConFormato(importe, FormatoImporte);
}

QString TextoDeCambio(double cambio)
{
    return (cambio > 0 ? "+" : "") + TextoDeImporte(cambio);
}

QString TextoDeAparte(int lineas)
{
    if (lineas == 0)
        return {};
    return (lineas == 1 ? QString(" Otro renglón queda como está") : QString(" Otros %1 quedan como están").arg(lineas))
           + ": son de tipos de equipo, partes o servicios dados de baja, o que el árbol no muestra.";
}

QString TextoDeEscritos(const qvx::CostosEscritos &escritos)
{
    QString texto = escritos.hechos.isEmpty() ? QString("No se actualizó ningún plan.")
                                              : (escritos.lineas == 1 ? "Se actualizó " : "Se actualizaron ")
                                                    + Cuantos(escritos.lineas, "renglón", "renglones")
                                                    + " del plan de: " + escritos.hechos.join(", ") + ".";
    if (!escritos.fallido.isEmpty())
        texto += "\nEn el plan de " + escritos.fallido + " se detuvo: " + escritos.motivo;
    if (!escritos.pendientes.isEmpty())
        texto += "\nNo se empezaron los planes de: " + escritos.pendientes.join(", ") + ".";
    return texto;
}
