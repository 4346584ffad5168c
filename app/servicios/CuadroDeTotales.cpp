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

QVariantList Fila(const QString &de, double cuantos, const lectura::Totales::Importes &importes, const QString &nota)
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
            EnCentavos(importes.porcentaje),
            nota};
}

QString Notas(const QStringList &notas)
{
    QStringList dichas = notas;
    dichas.removeAll({});
    return dichas.join("; ");
}

QString Nota(int cuantos, const QString &uno, const QString &varios)
{
    return cuantos == 0 ? QString() : Cuantos(cuantos, uno, varios);
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
            {"% utilidad", Clase::Numero},
            {"Nota"}};
}

QList<QVariantList> Filas(const QString &de, const lectura::Totales &totales)
{
    return {Fila(de, totales.servicios, totales.unaVez,
                 Nota(totales.noActivos, "no está activo y se cuenta", "no están activos y se cuentan")),
            Fila(de + ", al año", totales.alAno.veces, totales.alAno,
                 Notas({Nota(totales.soloPorLectura, "solo por lectura, aparte", "solo por lectura, aparte"),
                        Nota(totales.sinFrecuencia, "sin frecuencia, aparte", "sin frecuencia, aparte")}))};
}

} // namespace totales
