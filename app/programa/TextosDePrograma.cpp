#include "app/programa/TextosDePrograma.h"

#include "app/Textos.h"
#include "app/programa/PartesDeReporte.h"

namespace
{

using programa::Cantidad;
using programa::Pesos;

// The total of rows from one to before another, called as it is.
QVariantList FilaDeTotal(const Hoja &hoja, const QString &nombre, qsizetype desde, qsizetype hasta)
{
    QVariantList total(hoja.columnas.size());
    total[0] = nombre;
    for (qsizetype columna = 0; columna < hoja.columnas.size(); ++columna) {
        Cantidad suma;
        for (qsizetype fila = desde; fila < hasta; ++fila)
            suma += Cantidad::De(hoja.filas.at(fila).at(columna).toDouble());
        if (hoja.columnas.at(columna).seSuma)
            total[columna] = suma.Numero();
        else if (columna > 0 && hoja.columnas.at(columna).clase == ColumnaDeHoja::Clase::Texto)
            total[columna] = QString();
    }
    return total;
}

} // namespace

QString TextoDeDatos(const programa::Programa &programa)
{
    using Inicio = qvx::DatosDePrograma::Inicio;
    using Descanso = qvx::DatosDePrograma::Descanso;
    const qvx::DatosDePrograma &datos = programa.datos;
    QStringList partes{"Del " + programa::Escrita(programa.horizonte.Desde()) + " al "
                       + programa::Escrita(programa.horizonte.Hasta())};
    partes.append("día cero " + programa::Escrita(datos.diaCero) + ", "
                  + (datos.inicio == Inicio::Hecho      ? "todo recién hecho"
                     : datos.inicio == Inicio::Arranque ? "todo toca al arrancar"
                                                        : "según la lectura acumulada"));
    partes.append(Cuantos(datos.equipos, "equipo", "equipos"));
    for (auto uso = datos.usos.cbegin(); uso != datos.usos.cend(); ++uso)
        partes.append(uso->porDia > 0 ? qvx::NumeroATexto(uso->porDia) + " " + uso.key() + "/día"
                                      : "sin uso en " + uso.key());
    if (datos.diasSemana != 7)
        partes.append(qvx::NumeroATexto(datos.diasSemana) + " días de uso por semana");
    if (datos.descanso != Descanso::Ninguno)
        partes.append(datos.descanso == Descanso::Domingo ? "sin domingos" : "de lunes a viernes");
    if (!datos.festivos.isEmpty())
        partes.append(Cuantos(datos.festivos.size(), "día festivo", "días festivos"));
    return partes.join(" · ");
}

QString TextoDeLargoPlazo(const programa::PlanMedido &medido, const programa::Programa &programa,
                          const programa::Medida &ano)
{
    const programa::Medida largo = programa::ALargoPlazo(programa, medido.medidas);
    return "Este año: costo " + Pesos(ano.costo) + ", con los costos de hoy " + Pesos(ano.costoHoy) + ", precio "
           + Pesos(ano.precio) + ". A largo plazo, por año: costo " + Pesos(largo.costo) + ", con los costos de hoy "
           + Pesos(largo.costoHoy) + ", precio " + Pesos(largo.precio) + ", mano de obra " + largo.manoObra.Texto(2)
           + " HR. El largo plazo reparte cada servicio en 365 días, también los de más de un año, que con todo recién "
             "hecho no están en este, y no descuenta los incluidos en otros.";
}

QString TextoDeAhorro(const programa::PlanMedido &medido, const programa::Programa &programa, int dias)
{
    const auto grupos = programa::Juntar(programa::CalcularParos(programa, medido.medidas), dias);
    Cantidad ahorro;
    for (const programa::ParosJuntos &grupo : grupos)
        ahorro += grupo.Ahorro();
    return grupos.isEmpty() ? QString(": no hay paros tan cercanos.")
                            : ": se ahorran " + ahorro.Texto(2) + " HR de paro en "
                                  + Cuantos(grupos.size(), "grupo", "grupos") + ".";
}

Hoja ConTotal(Hoja hoja)
{
    if (!hoja.filas.isEmpty())
        hoja.filas.append(FilaDeTotal(hoja, "TOTAL", 0, hoja.filas.size()));
    // The total's name stands where there was a date.
    if (!hoja.columnas.isEmpty() && hoja.columnas.constFirst().clase == ColumnaDeHoja::Clase::Fecha) {
        hoja.columnas.first().clase = ColumnaDeHoja::Clase::Texto;
        for (QVariantList &fila : hoja.filas)
            if (fila.constFirst().typeId() == QMetaType::QDate)
                fila.first() = programa::Escrita(fila.constFirst().toDate());
    }
    return hoja;
}

Hoja ConSubtotales(const Hoja &hoja)
{
    Hoja junta = hoja;
    junta.filas.clear();
    qsizetype desde = 0;
    for (qsizetype fila = 0; fila < hoja.filas.size(); ++fila) {
        junta.filas.append(hoja.filas.at(fila));
        const QVariant &grupo = hoja.filas.at(fila).constFirst();
        if (fila + 1 < hoja.filas.size() && hoja.filas.at(fila + 1).constFirst() == grupo)
            continue;
        junta.filas.append(FilaDeTotal(hoja, "SUBTOTAL " + grupo.toString(), desde, fila + 1));
        desde = fila + 1;
    }
    if (!hoja.filas.isEmpty())
        junta.filas.append(FilaDeTotal(hoja, "TOTAL", 0, hoja.filas.size()));
    return junta;
}

int EstiradaDe(const Hoja &hoja)
{
    const QStringList preferidas{"Ruta", "Descripción", "Oficio", "Motivo"};
    for (const QString &titulo : preferidas)
        for (int columna = 0; columna < hoja.columnas.size(); ++columna)
            if (hoja.columnas.at(columna).titulo == titulo)
                return columna;
    return 0;
}
