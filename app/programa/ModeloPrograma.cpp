#include "app/programa/ModeloPrograma.h"

#include "plan/Catalogos.h"

#include <QSet>
#include <algorithm>
#include <numeric>

namespace
{

constexpr int Decimales = 2;

const QStringList Titulos{"Fecha", "Fecha teórica", "Parte", "Folio", "Servicio",     "Prioridad", "Motivo",
                          "Veces", "Mano de obra",  "Paro",  "Costo", "Costo de hoy", "Precio"};

bool EsNumero(int columna)
{
    return columna >= ModeloPrograma::Veces;
}

const programa::Cantidad &CantidadEn(const programa::Medida &medida, int columna)
{
    switch (columna) {
    case ModeloPrograma::ManoObra:
        return medida.manoObra;
    case ModeloPrograma::Paro:
        return medida.paro;
    case ModeloPrograma::Costo:
        return medida.costo;
    case ModeloPrograma::CostoHoy:
        return medida.costoHoy;
    default:
        return medida.precio;
    }
}

} // namespace

void ModeloPrograma::Poner(const programa::PlanMedido *medido_, const programa::Programa *programa_)
{
    beginResetModel();
    medido = medido_;
    programado = programa_;
    plegados.clear();
    Elegir();
    endResetModel();
}

void ModeloPrograma::Buscar(const QString &texto)
{
    beginResetModel();
    palabras = qvx::Plegado(texto).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    Elegir();
    endResetModel();
}

void ModeloPrograma::Limitar(int mes_, int oficio_)
{
    if (mes == mes_ && oficio == oficio_)
        return;
    beginResetModel();
    mes = mes_;
    oficio = oficio_;
    Elegir();
    endResetModel();
}

// Whether a service is shown is asked once, not for each of its dates.
void ModeloPrograma::Elegir()
{
    mostradas.clear();
    if (!programado)
        return;
    if (!palabras.isEmpty() && plegados.isEmpty())
        for (int i = 0; i < medido->plan.servicios.size(); ++i) {
            const lectura::Servicio &servicio = medido->plan.servicios.at(i);
            plegados.append(qvx::Plegado(QStringList{servicio.ruta, servicio.leido.parte, servicio.leido.folio,
                                                     servicio.nombreServicio, servicio.nombrePrioridad,
                                                     programado->periodos.at(i).motivo}
                                             .join(QLatin1Char('\n'))));
        }
    QList<bool> admitidos(medido->plan.servicios.size(), oficio < 0);
    for (const lectura::Linea &linea : medido->lineas.lineas)
        if (linea.producto == oficio && linea.clase == lectura::Linea::Clase::ManoDeObra)
            admitidos[linea.servicio] = true;
    for (int i = 0; i < admitidos.size(); ++i)
        for (const QString &palabra : std::as_const(palabras))
            admitidos[i] = admitidos.at(i) && plegados.at(i).contains(palabra);
    for (int i = 0; i < programado->filas.size(); ++i) {
        const programa::Fila &fila = programado->filas.at(i);
        if (!admitidos.at(fila.servicio) || (mes >= 0 && programado->Mes(fila) != mes))
            continue;
        mostradas.append(i);
    }
    Ordenar();
}

// Of each service its place by a column's text, so that rows compare as numbers.
QList<int> ModeloPrograma::Rangos() const
{
    QStringList textos;
    for (int i = 0; i < medido->plan.servicios.size(); ++i) {
        programa::Fila fila;
        fila.servicio = i;
        textos.append(qvx::Plegado(Texto(fila, columnaDeOrden)));
    }
    QList<int> orden(textos.size());
    std::iota(orden.begin(), orden.end(), 0);
    std::stable_sort(orden.begin(), orden.end(), [&](int una, int otra) { return textos.at(una) < textos.at(otra); });
    QList<int> rangos(orden.size());
    int rango = -1;
    for (int lugar = 0; lugar < orden.size(); ++lugar) {
        if (lugar == 0 || textos.at(orden.at(lugar)) != textos.at(orden.at(lugar - 1)))
            ++rango;
        rangos[orden.at(lugar)] = rango;
    }
    return rangos;
}

// Rows alike in the column stay by date, as the programme has them all.
void ModeloPrograma::Ordenar()
{
    std::sort(mostradas.begin(), mostradas.end());
    if (columnaDeOrden == Programada && sentido == Qt::AscendingOrder)
        return;
    const auto ordenar = [&](const auto &valor) {
        std::stable_sort(mostradas.begin(), mostradas.end(), [&](int una, int otra) {
            const auto &primera = programado->filas.at(una);
            const auto &segunda = programado->filas.at(otra);
            return sentido == Qt::AscendingOrder ? valor(primera) < valor(segunda) : valor(segunda) < valor(primera);
        });
    };
    if (columnaDeOrden == Programada)
        return ordenar([](const programa::Fila &fila) { return fila.programado; });
    if (columnaDeOrden == Teorica)
        return ordenar([](const programa::Fila &fila) { return fila.teorico; });
    if (columnaDeOrden == Veces)
        return ordenar([](const programa::Fila &fila) { return fila.Cuentan(); });
    if (EsNumero(columnaDeOrden))
        return ordenar([&](const programa::Fila &fila) {
            return CantidadEn(programa::MedidaDe(*programado, fila, medido->medidas), columnaDeOrden);
        });
    const QList<int> rangos = Rangos();
    ordenar([&](const programa::Fila &fila) { return rangos.at(fila.servicio); });
}

QString ModeloPrograma::Texto(const programa::Fila &fila, int columna) const
{
    const lectura::Servicio &servicio = medido->Servicio(fila);
    switch (columna) {
    case Programada:
        return programa::Escrita(programado->Fecha(fila.programado));
    case Teorica:
        return programa::Escrita(programado->Fecha(fila.teorico));
    case Ruta:
        return servicio.ruta;
    case Folio:
        return servicio.leido.folio;
    case Servicio:
        return servicio.nombreServicio;
    case Prioridad:
        return servicio.nombrePrioridad.isEmpty() ? servicio.prioridad : servicio.nombrePrioridad;
    case Motivo:
        return programado->Motivo(fila, medido->entradas);
    case Veces:
        return QString("%1 × %2").arg(fila.Cuentan()).arg(programado->datos.equipos);
    default:
        break;
    }
    const QString cifra = CantidadEn(programa::MedidaDe(*programado, fila, medido->medidas), columna).Texto(Decimales);
    return columna >= Costo ? "$" + cifra : cifra;
}

int ModeloPrograma::rowCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(mostradas.size());
}

QVariant ModeloPrograma::data(const QModelIndex &indice, int papel) const
{
    if (papel == Qt::TextAlignmentRole && EsNumero(indice.column()))
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (papel != Qt::DisplayRole && !(papel == Qt::ToolTipRole && !EsNumero(indice.column())))
        return {};
    return Texto(programado->filas.at(mostradas.at(indice.row())), indice.column());
}

QVariant ModeloPrograma::headerData(int columna, Qt::Orientation orientacion, int papel) const
{
    if (orientacion != Qt::Horizontal || columna >= Columnas)
        return {};
    if (papel == Qt::TextAlignmentRole)
        return QVariant::fromValue((EsNumero(columna) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return papel == Qt::DisplayRole ? QVariant(Titulos.at(columna)) : QVariant();
}

void ModeloPrograma::sort(int columna, Qt::SortOrder sentido_)
{
    columnaDeOrden = columna;
    sentido = sentido_;
    beginResetModel();
    if (programado)
        Ordenar();
    endResetModel();
}
