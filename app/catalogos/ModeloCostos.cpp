#include "app/catalogos/ModeloCostos.h"

#include "app/catalogos/Nombres.h"
#include "app/catalogos/TextosDeCostos.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"

#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QSet>

namespace
{

const QString FormatoCantidad = "#,##0.000######";
const QString FormatoPorcentaje = "#,##0.00";

QString Paso(const QString &antes, const QString &despues)
{
    return antes == despues ? antes : antes + " → " + despues;
}

QString TextoDePorcentaje(double porcentaje)
{
    return qvx::NumeroConFormato(porcentaje, FormatoPorcentaje) + " %";
}

bool EsDeNumeros(int columna)
{
    switch (columna) {
    case ModeloCostos::Cantidad:
    case ModeloCostos::Costo:
    case ModeloCostos::Importe:
    case ModeloCostos::CostoServicio:
    case ModeloCostos::Utilidad:
    case ModeloCostos::Porcentaje:
        return true;
    default:
        return false;
    }
}

// A red that can be read on the light list and on the dark one.
QColor Rojo()
{
    return QColor(QGuiApplication::palette().color(QPalette::Window).lightness() < 128 ? "#ff8a80" : "#b3261e");
}

} // namespace

void ModeloCostos::Poner(qvx::DiferenciasDeCostos nuevas)
{
    beginResetModel();
    diferencias = std::move(nuevas);
    buscables.clear();
    marcadas = diferencias.MarcadasDeInicio();
    for (int fila = 0; fila < marcadas.size(); ++fila)
        marcadas[fila] = decididas.value(Clave(fila), marcadas.at(fila));
    costeados.resize(diferencias.servicios.size());
    for (int servicio = 0; servicio < costeados.size(); ++servicio)
        Costear(servicio);
    endResetModel();
}

void ModeloCostos::Marcar(const QList<int> &filas, bool marcar)
{
    QSet<int> servicios;
    for (const int fila : filas) {
        marcadas[fila] = marcar;
        decididas.insert(Clave(fila), marcar);
        servicios.insert(diferencias.lineas.at(fila).servicio);
    }
    for (const int servicio : servicios)
        Costear(servicio);
    if (!filas.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, Columnas - 1));
}

QString ModeloCostos::Clave(int fila) const
{
    const qvx::DiferenciaDeCosto &linea = diferencias.lineas.at(fila);
    return diferencias.servicios.at(linea.servicio).leido.tipoEquipo + QLatin1Char('|') + linea.linea;
}

void ModeloCostos::Costear(int servicio)
{
    costeados[servicio] = {diferencias.Antes(servicio), diferencias.Despues(servicio, marcadas)};
}

int ModeloCostos::rowCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(diferencias.lineas.size());
}

int ModeloCostos::columnCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : Columnas;
}

QString ModeloCostos::Texto(int fila, int columna) const
{
    const qvx::DiferenciaDeCosto &linea = diferencias.lineas.at(fila);
    const qvx::ServicioDelPlan &servicio = diferencias.servicios.at(linea.servicio);
    const Costeado &costeado = costeados.at(linea.servicio);
    switch (columna) {
    case Folio:
        return servicio.leido.tipoEquipo + " / " + servicio.leido.folio;
    case Servicio:
        return servicio.tipoServicio;
    case Producto:
        return linea.producto + " " + linea.descripcion;
    case Cantidad:
        return qvx::NumeroConFormato(linea.cantidad, FormatoCantidad) + " " + Paso(linea.unidad, linea.unidadProducto);
    case Costo:
        return Paso(TextoDeCosto(linea.costo), TextoDeCosto(linea.costoNuevo));
    case Importe:
        return Paso(TextoDeImporte(linea.importe), TextoDeImporte(linea.importeNuevo));
    case Aviso:
        return (costeado.Pierde() ? QString("PÉRDIDA NUEVA") + (linea.reparo.isEmpty() ? "" : "; ") : QString())
               + linea.reparo;
    case CostoServicio:
        return Paso(TextoDeImporte(costeado.antes.costo), TextoDeImporte(costeado.despues.costo));
    case Utilidad:
        return Paso(TextoDeImporte(costeado.antes.utilidad), TextoDeImporte(costeado.despues.utilidad));
    case Porcentaje:
        return Paso(TextoDePorcentaje(costeado.antes.porcentaje), TextoDePorcentaje(costeado.despues.porcentaje));
    case Ruta:
        return servicio.leido.parte + " " + servicio.ruta;
    case Renglon:
        return linea.linea;
    default:
        return nombres::ClaseDeRenglon(linea.clase);
    }
}

// Amounts and costs by what they change, so that the largest changes are found; the first column as the lines were
// read. Nothing is composed here: a list may be long.
QVariant ModeloCostos::Orden(int fila, int columna) const
{
    const qvx::DiferenciaDeCosto &linea = diferencias.lineas.at(fila);
    const qvx::ServicioDelPlan &servicio = diferencias.servicios.at(linea.servicio);
    const Costeado &costeado = costeados.at(linea.servicio);
    switch (columna) {
    case Folio:
        return fila;
    case Servicio:
        return servicio.tipoServicio;
    case Producto:
        return linea.producto;
    case Cantidad:
        return linea.cantidad;
    case Costo:
        return linea.costoNuevo - linea.costo;
    case Importe:
        return linea.importeNuevo - linea.importe;
    case Aviso:
        return costeado.Pierde() ? Texto(fila, Aviso) : linea.reparo;
    case CostoServicio:
        return costeado.despues.costo;
    case Utilidad:
        return costeado.despues.utilidad;
    case Porcentaje:
        return costeado.despues.porcentaje;
    case Ruta:
        return servicio.ruta;
    case Renglon:
        return linea.linea;
    default:
        return linea.clase;
    }
}

// What does not follow the ticks is folded once: it is asked again with every letter.
QString ModeloCostos::Buscable(int fila) const
{
    if (buscables.isEmpty())
        for (int i = 0; i < rowCount(); ++i)
            buscables.append(qvx::Plegado(Texto(i, Folio) + " " + Texto(i, Servicio) + " " + Texto(i, Producto) + " "
                                          + diferencias.lineas.at(i).reparo + " " + Texto(i, Ruta) + " "
                                          + Texto(i, Renglon) + " " + Texto(i, Clase)));
    return buscables.at(fila) + (costeados.at(diferencias.lineas.at(fila).servicio).Pierde() ? " perdida nueva" : "");
}

QVariant ModeloCostos::data(const QModelIndex &indice, int papel) const
{
    const int fila = indice.row();
    const int columna = indice.column();
    const bool perdida = costeados.at(diferencias.lineas.at(fila).servicio).Pierde()
                         && (columna == Aviso || columna == Utilidad || columna == Porcentaje);
    switch (papel) {
    case Qt::DisplayRole:
        return Texto(fila, columna);
    case Qt::ToolTipRole:
        return columna == Folio ? diferencias.servicios.at(diferencias.lineas.at(fila).servicio).nombreTipo
                                : Texto(fila, columna);
    case Qt::CheckStateRole:
        return columna == Folio ? QVariant(marcadas.at(fila) ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue((EsDeNumeros(columna) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    case Qt::ForegroundRole:
        return perdida ? QVariant(Rojo()) : QVariant();
    case Qt::AccessibleTextRole:
        return columna == Folio ? Texto(fila, Folio) + (marcadas.at(fila) ? ", marcado" : ", sin marcar")
                                : Texto(fila, columna);
    case PapelOrden:
        return Orden(fila, columna);
    case PapelBusqueda:
        return Buscable(fila);
    default:
        return {};
    }
}

bool ModeloCostos::setData(const QModelIndex &indice, const QVariant &valor, int papel)
{
    if (papel != Qt::CheckStateRole || indice.column() != Folio)
        return false;
    Marcar({indice.row()}, valor.toInt() == Qt::Checked);
    return true;
}

Qt::ItemFlags ModeloCostos::flags(const QModelIndex &indice) const
{
    return QAbstractTableModel::flags(indice) | (indice.column() == Folio ? Qt::ItemIsUserCheckable : Qt::ItemFlags());
}

QVariant ModeloCostos::headerData(int columna, Qt::Orientation orientacion, int papel) const
{
    static const QStringList titulos{
        "Tipo / folio",       "Producto", "Cantidad",   "Costo", "Importe", "Aviso", "Servicio",
        "Costo del servicio", "Utilidad", "% utilidad", "Parte", "Renglón", "Clase"};
    if (orientacion != Qt::Horizontal)
        return {};
    if (papel == Qt::TextAlignmentRole)
        return QVariant::fromValue((EsDeNumeros(columna) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return papel == Qt::DisplayRole ? QVariant(titulos.at(columna)) : QVariant();
}
