#include "controls/ModeloTabla.h"

#include "data/Texto.h"
#include "plan/Catalogos.h"

#include <algorithm>
#include <numeric>

namespace qvx
{

namespace
{

using Clase = ColumnaDeTabla::Clase;

const QString FormatoDinero = "$#,##0.00#######";
const QString FormatoNumero = "#,##0.########";

} // namespace

ModeloTabla::ModeloTabla(QList<ColumnaDeTabla> columnas_, int maximo_, QObject *padre)
    : QAbstractTableModel(padre), columnas(std::move(columnas_)), plegadas(columnas.size()), maximo(maximo_)
{
}

void ModeloTabla::Llenar(QList<QVariantList> filas_)
{
    beginResetModel();
    filas = std::move(filas_);
    plegadas = QList<QStringList>(columnas.size());
    orden.resize(filas.size());
    PlegarBuscadas();
    Ordenar();
    Elegir();
    endResetModel();
}

void ModeloTabla::Cambiar(int numero, const QVariantList &fila)
{
    filas[numero] = fila;
    if (const int visible = Visible(numero); visible >= 0)
        Q_EMIT dataChanged(index(visible, 0), index(visible, columnCount() - 1));
}

void ModeloTabla::Buscar(const QString &texto)
{
    palabras = Plegado(texto).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    PlegarBuscadas();
    beginResetModel();
    Elegir();
    endResetModel();
}

void ModeloTabla::Filtrar(std::function<bool(int)> admite_)
{
    admite = std::move(admite_);
    beginResetModel();
    Elegir();
    endResetModel();
}

bool ModeloTabla::Vale(int numero) const
{
    if (admite && !admite(numero))
        return false;
    return std::all_of(palabras.cbegin(), palabras.cend(), [&](const QString &palabra) {
        for (int columna = 0; columna < columnas.size(); ++columna)
            if (columnas.at(columna).seBusca && plegadas.at(columna).at(numero).contains(palabra))
                return true;
        return false;
    });
}

void ModeloTabla::PlegarBuscadas()
{
    for (int columna = 0; columna < columnas.size() && !palabras.isEmpty(); ++columna)
        if (columnas.at(columna).seBusca)
            Plegar(columna);
}

// When it is first asked for: most lists are looked at as they come.
void ModeloTabla::Plegar(int columna)
{
    QStringList &textos = plegadas[columna];
    if (!textos.isEmpty() || !EsTexto(columna))
        return;
    textos.reserve(filas.size());
    for (const QVariantList &fila : std::as_const(filas))
        textos.append(Plegado(fila.at(columna).toString()));
}

void ModeloTabla::Elegir()
{
    visibles.clear();
    cortado = false;
    for (const int numero : std::as_const(orden)) {
        if (!Vale(numero))
            continue;
        cortado = maximo > 0 && visibles.size() == maximo;
        if (cortado)
            return;
        visibles.append(numero);
    }
}

int ModeloTabla::VisibleConClave(const QString &clave) const
{
    const auto hallada = std::find_if(visibles.begin(), visibles.end(), [&](int numero) {
        return SinBlancosAlFinal(filas.at(numero).constFirst().toString()) == SinBlancosAlFinal(clave);
    });
    return hallada == visibles.end() ? -1 : static_cast<int>(hallada - visibles.begin());
}

int ModeloTabla::rowCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(visibles.size());
}

int ModeloTabla::columnCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(columnas.size());
}

QVariant ModeloTabla::data(const QModelIndex &indice, int papel) const
{
    const int columna = indice.column();
    if (papel == Qt::TextAlignmentRole && !EsTexto(columna))
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (papel != Qt::DisplayRole)
        return {};
    const QVariant &valor = filas.at(visibles.at(indice.row())).at(columna);
    if (EsTexto(columna) || !valor.isValid())
        return valor;
    if (columnas.at(columna).clase == Clase::Folio)
        return NumeroATexto(valor.toDouble());
    return NumeroConFormato(valor.toDouble(),
                            columnas.at(columna).clase == Clase::Dinero ? FormatoDinero : FormatoNumero);
}

QVariant ModeloTabla::headerData(int columna, Qt::Orientation orientacion, int papel) const
{
    if (orientacion != Qt::Horizontal || columna >= columnas.size())
        return {};
    if (papel == Qt::TextAlignmentRole)
        return QVariant::fromValue((EsTexto(columna) ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    return papel == Qt::DisplayRole ? QVariant(columnas.at(columna).titulo) : QVariant();
}

void ModeloTabla::sort(int columna, Qt::SortOrder sentido_)
{
    columnaDeOrden = columna;
    sentido = sentido_;
    beginResetModel();
    Ordenar();
    Elegir();
    endResetModel();
}

// Rows alike in the column stay as they were filled in.
void ModeloTabla::Ordenar()
{
    std::iota(orden.begin(), orden.end(), 0);
    if (columnaDeOrden < 0 || columnaDeOrden >= columnas.size())
        return;
    Plegar(columnaDeOrden);
    const QStringList &textos = plegadas.at(columnaDeOrden);
    const auto antes = [&](int una, int otra) {
        if (EsTexto(columnaDeOrden))
            return textos.at(una) < textos.at(otra);
        return filas.at(una).at(columnaDeOrden).toDouble() < filas.at(otra).at(columnaDeOrden).toDouble();
    };
    std::stable_sort(orden.begin(), orden.end(), [&](int una, int otra) {
        return sentido == Qt::AscendingOrder ? antes(una, otra) : antes(otra, una);
    });
}

} // namespace qvx
