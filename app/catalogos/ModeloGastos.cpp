#include "app/catalogos/ModeloGastos.h"

#include "plan/Catalogos.h"

void ModeloGastos::Poner(qvx::RefaccionesSinGasto nuevas)
{
    beginResetModel();
    refacciones = std::move(nuevas);
    nombres.clear();
    for (const auto &[clave, descripcion] : refacciones.gastos)
        nombres.insert(clave, descripcion);
    elegidos = refacciones.Propuestos();
    for (int fila = 0; fila < elegidos.size(); ++fila) {
        const QString decidido = decididos.value(Clave(fila), elegidos.at(fila));
        if (decidido.isEmpty() || nombres.contains(decidido))
            elegidos[fila] = decidido;
    }
    endResetModel();
}

void ModeloGastos::Elegir(const QList<int> &filas, const QString &gasto)
{
    for (const int fila : filas) {
        elegidos[fila] = gasto;
        decididos.insert(Clave(fila), gasto);
    }
    if (!filas.isEmpty())
        Q_EMIT dataChanged(index(0, Elegido), index(rowCount() - 1, Elegido));
}

QString ModeloGastos::Clave(int fila) const
{
    const qvx::RefaccionSinGasto &linea = refacciones.lineas.at(fila);
    return refacciones.servicios.at(linea.servicio).leido.tipoEquipo + QLatin1Char('|') + linea.linea;
}

int ModeloGastos::rowCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(refacciones.lineas.size());
}

int ModeloGastos::columnCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : Columnas;
}

QString ModeloGastos::Texto(int fila, int columna) const
{
    const qvx::RefaccionSinGasto &linea = refacciones.lineas.at(fila);
    const qvx::ServicioDelPlan &servicio = refacciones.servicios.at(linea.servicio);
    switch (columna) {
    case Folio:
        return servicio.leido.tipoEquipo + " / " + servicio.leido.folio;
    case Servicio:
        return servicio.tipoServicio;
    case Producto:
        return linea.producto + " " + linea.descripcion;
    case Motivo:
        return linea.motivo;
    case Elegido:
        return elegidos.at(fila).isEmpty() ? QString("(elija uno)") : NombreDe(elegidos.at(fila));
    case Fundamento:
        return linea.fundamento;
    case Ruta:
        return servicio.leido.parte + " " + servicio.ruta;
    default:
        return linea.linea;
    }
}

QVariant ModeloGastos::data(const QModelIndex &indice, int papel) const
{
    const int fila = indice.row();
    switch (papel) {
    case Qt::DisplayRole:
        return Texto(fila, indice.column());
    case Qt::ToolTipRole:
        return indice.column() == Folio ? refacciones.servicios.at(refacciones.lineas.at(fila).servicio).nombreTipo
                                        : Texto(fila, indice.column());
    case PapelOrden:
        return indice.column() == Folio ? QVariant(fila) : QVariant(Texto(fila, indice.column()));
    case PapelBusqueda: {
        QString texto;
        for (int columna = 0; columna < Columnas; ++columna)
            texto += Texto(fila, columna) + " ";
        return qvx::Plegado(texto);
    }
    default:
        return {};
    }
}

QVariant ModeloGastos::headerData(int columna, Qt::Orientation orientacion, int papel) const
{
    static const QStringList titulos{"Tipo / folio", "Producto", "Tipo de gasto", "Por qué",
                                     "Qué pasa",     "Servicio", "Parte",         "Renglón"};
    if (papel == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    return orientacion == Qt::Horizontal && papel == Qt::DisplayRole ? QVariant(titulos.at(columna)) : QVariant();
}
