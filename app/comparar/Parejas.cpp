#include "app/comparar/Parejas.h"

#include <QHash>
#include <QSet>
#include <algorithm>

namespace comparar
{

namespace
{

using qvx::ClaveDe;
using qvx::FilaDelPlan;
using Filas = QList<const FilaDelPlan *>;

// Rows that may be the same one, of both sides in their order.
struct Grupo {
    Filas antes;
    Filas despues;
};

QString ClaveDeGrupo(const FilaDelPlan &fila, const QList<int> &lugares)
{
    QString clave;
    for (const int lugar : lugares)
        clave += ClaveDe(fila, lugar) + QLatin1Char('|');
    return clave;
}

// How many of these columns say the same.
int EnComun(const FilaDelPlan &una, const FilaDelPlan &otra, int desde, int hasta)
{
    int iguales = 0;
    for (int lugar = desde; lugar <= hasta; ++lugar)
        iguales += una.at(lugar) == otra.at(lugar) ? 1 : 0;
    return iguales;
}

constexpr qsizetype MaximoDeCotejos = 10000; // in one group; beyond that the order counts

// The best two first, then the best two of the rest.
void Aparear(const Grupo &grupo, int desde, int hasta, QHash<const FilaDelPlan *, const FilaDelPlan *> &deAntes)
{
    struct Cotejo {
        int comunes;
        qsizetype antes;
        qsizetype despues;
    };
    const bool cotejar = grupo.antes.size() * grupo.despues.size() <= MaximoDeCotejos;
    std::vector<Cotejo> cotejos;
    for (qsizetype i = 0; i < grupo.despues.size(); ++i)
        for (qsizetype j = cotejar ? 0 : i; j < (cotejar ? grupo.antes.size() : qMin(i + 1, grupo.antes.size())); ++j)
            cotejos.push_back({EnComun(*grupo.antes.at(j), *grupo.despues.at(i), desde, hasta), j, i});
    std::stable_sort(cotejos.begin(), cotejos.end(),
                     [](const Cotejo &uno, const Cotejo &otro) { return uno.comunes > otro.comunes; });
    QSet<qsizetype> tomadosAntes;
    QSet<qsizetype> tomadosDespues;
    for (const Cotejo &cotejo : cotejos) {
        if (tomadosAntes.contains(cotejo.antes) || tomadosDespues.contains(cotejo.despues))
            continue;
        tomadosAntes.insert(cotejo.antes);
        tomadosDespues.insert(cotejo.despues);
        deAntes.insert(grupo.despues.at(cotejo.despues), grupo.antes.at(cotejo.antes));
    }
}

// lugares: the columns that must be the same; the others from one to another are compared.
QList<Pareja> EnParejas(const Filas &antes, const Filas &despues, const QList<int> &lugares, int desde, int hasta,
                        QHash<const FilaDelPlan *, const FilaDelPlan *> deAntes)
{
    const QSet<const FilaDelPlan *> yaTomadas(deAntes.cbegin(), deAntes.cend());
    QHash<QString, Grupo> grupos;
    for (const FilaDelPlan *fila : antes)
        if (!yaTomadas.contains(fila))
            grupos[ClaveDeGrupo(*fila, lugares)].antes.append(fila);
    for (const FilaDelPlan *fila : despues)
        if (!deAntes.contains(fila))
            grupos[ClaveDeGrupo(*fila, lugares)].despues.append(fila);
    for (const Grupo &grupo : std::as_const(grupos))
        Aparear(grupo, desde, hasta, deAntes);
    QList<Pareja> parejas;
    for (const FilaDelPlan *fila : despues)
        parejas.append(Pareja{deAntes.value(fila), fila});
    const QSet<const FilaDelPlan *> tomadas(deAntes.cbegin(), deAntes.cend());
    for (const FilaDelPlan *fila : antes)
        if (!tomadas.contains(fila))
            parejas.append(Pareja{fila, nullptr});
    return parejas;
}

Filas Punteros(const QList<FilaDelPlan> &filas)
{
    Filas punteros;
    for (const FilaDelPlan &fila : filas)
        punteros.append(&fila);
    return punteros;
}

} // namespace

QList<Pareja> ParejasDeServicios(const QList<FilaDelPlan> &antes, const QList<FilaDelPlan> &despues, bool porFolio)
{
    QHash<const FilaDelPlan *, const FilaDelPlan *> deAntes;
    if (porFolio) {
        QHash<QString, const FilaDelPlan *> estaban;
        for (const FilaDelPlan &fila : antes)
            estaban.insert(ClaveDe(fila, qvx::servicio::Folio), &fila);
        // One that was made anew, as an import does, is another one under the same folio.
        for (const FilaDelPlan &fila : despues)
            if (const FilaDelPlan *anterior = estaban.take(ClaveDe(fila, qvx::servicio::Folio));
                anterior && EnComun(*anterior, fila, qvx::servicio::OperAlta, qvx::servicio::FechaAlta) == 2)
                deAntes.insert(&fila, anterior);
    }
    return EnParejas(Punteros(antes), Punteros(despues), {qvx::servicio::Parte, qvx::servicio::TipoServicio},
                     qvx::servicio::Dias, qvx::servicio::Estado, deAntes);
}

QList<Pareja> ParejasDeLineas(const Filas &antes, const Filas &despues)
{
    return EnParejas(antes, despues, {qvx::linea::Clase, qvx::linea::Producto}, qvx::linea::Cantidad,
                     qvx::linea::TipoGasto, {});
}

} // namespace comparar
