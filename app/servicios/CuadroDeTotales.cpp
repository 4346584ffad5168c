#include "app/servicios/CuadroDeTotales.h"

#include "app/Textos.h"

#include <cmath>

namespace totales
{

namespace
{

// Amounts of a year are no prices of anything: cents will do.
double EnCentavos(double importe)
{
    return std::round(importe * 100) / 100;
}

QVariantList Fila(const QString &de, double cuantos, const lectura::Totales::Importes &importes)
{
    return {de,
            EnCentavos(cuantos),
            EnCentavos(importes.horas),
            EnCentavos(importes.horasParo),
            EnCentavos(importes.manoObra),
            EnCentavos(importes.refacciones),
            EnCentavos(importes.herramientas),
            EnCentavos(importes.costo),
            EnCentavos(importes.precio),
            EnCentavos(importes.utilidad),
            EnCentavos(importes.porcentaje)};
}

} // namespace

QList<qvx::ColumnaDeTabla> Columnas()
{
    using Clase = qvx::ColumnaDeTabla::Clase;
    return {{"Totales de"},
            {"Servicios", Clase::Numero},
            {"Horas", Clase::Numero},
            {"Paro", Clase::Numero},
            {"Mano de obra", Clase::Dinero},
            {"Refacciones", Clase::Dinero},
            {"Herramientas", Clase::Dinero},
            {"Costo", Clase::Dinero},
            {"Precio", Clase::Dinero},
            {"Utilidad", Clase::Dinero},
            {"% utilidad", Clase::Numero}};
}

QList<QVariantList> Filas(const QString &de, const lectura::Totales &totales)
{
    return {Fila(de, totales.servicios, totales.unaVez), Fila(de + ", al año", totales.alAno.veces, totales.alAno)};
}

QString Nota(const lectura::Totales &totales)
{
    QStringList notas;
    if (totales.noActivos > 0)
        notas.append(Cuantos(totales.noActivos, "no activo", "no activos"));
    if (totales.soloPorLectura > 0)
        notas.append(Cuantos(totales.soloPorLectura, "solo por lectura", "solo por lectura"));
    if (totales.sinFrecuencia > 0)
        notas.append(Cuantos(totales.sinFrecuencia, "sin frecuencia", "sin frecuencia"));
    return notas.isEmpty() ? QString() : "De lo que se muestra, al año no cuentan: " + notas.join(", ") + ".";
}

} // namespace totales
