#include "controls/ModeloCatalogo.h"

#include "data/Texto.h"

#include <algorithm>
#include <numeric>

namespace qvx
{

namespace
{

const QString FormatoCosto = "$#,##0.00#######";

} // namespace

ModeloCatalogo::ModeloCatalogo(QList<EntradaCatalogo> entradas_, QStringList titulos_, int maximo_, QObject *padre)
    : QAbstractTableModel(padre)
    , entradas(std::move(entradas_))
    , orden(entradas.size())
    , titulos(std::move(titulos_))
    , maximo(maximo_)
{
    plegadas.reserve(entradas.size());
    for (const EntradaCatalogo &entrada : std::as_const(entradas))
        plegadas.append({Plegado(entrada.clave), Plegado(entrada.descripcion), Plegado(entrada.unidad)});
    std::iota(orden.begin(), orden.end(), 0);
    Elegir();
}

void ModeloCatalogo::Buscar(const QString &texto)
{
    palabras = Plegado(texto).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    beginResetModel();
    Elegir();
    endResetModel();
}

void ModeloCatalogo::Elegir()
{
    filas.clear();
    cortado = false;
    for (const int entrada : std::as_const(orden)) {
        const QStringList &textos = plegadas.at(entrada);
        const bool vale = std::all_of(palabras.cbegin(), palabras.cend(), [&](const QString &palabra) {
            return textos.at(Clave).contains(palabra) || textos.at(Descripcion).contains(palabra);
        });
        if (!vale)
            continue;
        cortado = maximo > 0 && filas.size() == maximo;
        if (cortado)
            return;
        filas.append(entrada);
    }
}

int ModeloCatalogo::FilaDe(const QString &clave) const
{
    const auto hallada = std::find_if(filas.begin(), filas.end(), [&](int entrada) {
        return SinBlancosAlFinal(entradas.at(entrada).clave) == SinBlancosAlFinal(clave);
    });
    return hallada == filas.end() ? -1 : static_cast<int>(hallada - filas.begin());
}

int ModeloCatalogo::rowCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(filas.size());
}

int ModeloCatalogo::columnCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(titulos.size());
}

QVariant ModeloCatalogo::data(const QModelIndex &indice, int papel) const
{
    if (papel == Qt::TextAlignmentRole && indice.column() == Costo)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (papel != Qt::DisplayRole)
        return {};
    const EntradaCatalogo &entrada = entradas.at(filas.at(indice.row()));
    switch (indice.column()) {
    case Clave:
        return entrada.clave;
    case Descripcion:
        return entrada.descripcion;
    case Medida:
        return entrada.unidad;
    default:
        return NumeroConFormato(entrada.costo, FormatoCosto);
    }
}

QVariant ModeloCatalogo::headerData(int columna, Qt::Orientation orientacion, int papel) const
{
    if (papel == Qt::TextAlignmentRole)
        return QVariant::fromValue((columna == Costo ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return orientacion == Qt::Horizontal && papel == Qt::DisplayRole ? QVariant(titulos.value(columna)) : QVariant();
}

// Entries alike in the column stay by key.
void ModeloCatalogo::sort(int columna, Qt::SortOrder sentido)
{
    const auto antes = [&](int una, int otra) {
        if (columna == Costo)
            return entradas.at(una).costo < entradas.at(otra).costo;
        return plegadas.at(una).at(columna) < plegadas.at(otra).at(columna);
    };
    std::iota(orden.begin(), orden.end(), 0);
    std::stable_sort(orden.begin(), orden.end(), [&](int una, int otra) {
        return sentido == Qt::AscendingOrder ? antes(una, otra) : antes(otra, una);
    });
    beginResetModel();
    Elegir();
    endResetModel();
}

} // namespace qvx
