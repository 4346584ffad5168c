#include "app/comparar/ModeloComparacion.h"

#include "app/comparar/TextoDeComparacion.h"

void ModeloComparacion::Mostrar(const comparar::Comparacion &comparacion, bool soloDiferencias)
{
    beginResetModel();
    renglones.clear();
    raices.clear();
    for (const comparar::Nodo &nodo : comparacion.partes)
        PonerNodo(nodo, -1, soloDiferencias);
    endResetModel();
}

int ModeloComparacion::Poner(const comparar::Nodo &nodo, const comparar::Campo *campo, int padre)
{
    const int lugar = static_cast<int>(renglones.size());
    auto &hermanos = padre < 0 ? raices : renglones.at(static_cast<std::size_t>(padre)).hijos;
    const int fila = static_cast<int>(hermanos.size());
    hermanos.push_back(lugar);
    renglones.push_back({&nodo, campo, padre, fila, {}});
    return lugar;
}

void ModeloComparacion::PonerNodo(const comparar::Nodo &nodo, int padre, bool soloDiferencias)
{
    if (soloDiferencias && !nodo.difiere)
        return;
    const int lugar = Poner(nodo, nullptr, padre);
    for (const comparar::Campo &campo : nodo.campos)
        Poner(nodo, &campo, lugar);
    for (const comparar::Nodo &hijo : nodo.hijos)
        PonerNodo(hijo, lugar, soloDiferencias);
}

const std::vector<int> &ModeloComparacion::HijosDe(const QModelIndex &padre) const
{
    return padre.isValid() ? renglones.at(padre.internalId()).hijos : raices;
}

QModelIndex ModeloComparacion::index(int fila, int columna, const QModelIndex &padre) const
{
    const auto &hijos = HijosDe(padre);
    if (fila < 0 || columna < 0 || columna >= Columnas || static_cast<std::size_t>(fila) >= hijos.size())
        return {};
    return createIndex(fila, columna, static_cast<quintptr>(hijos.at(static_cast<std::size_t>(fila))));
}

QModelIndex ModeloComparacion::parent(const QModelIndex &indice) const
{
    const int padre = indice.isValid() ? renglones.at(indice.internalId()).padre : -1;
    if (padre < 0)
        return {};
    return createIndex(renglones.at(static_cast<std::size_t>(padre)).fila, 0, static_cast<quintptr>(padre));
}

int ModeloComparacion::rowCount(const QModelIndex &padre) const
{
    return padre.column() > 0 ? 0 : static_cast<int>(HijosDe(padre).size());
}

int ModeloComparacion::columnCount(const QModelIndex & /*padre*/) const
{
    return Columnas;
}

QVariant ModeloComparacion::data(const QModelIndex &indice, int papel) const
{
    if (!indice.isValid() || (papel != Qt::DisplayRole && papel != Qt::ToolTipRole))
        return {};
    const Renglon &renglon = renglones.at(indice.internalId());
    switch (indice.column()) {
    case Que:
        return renglon.campo ? renglon.campo->titulo : comparar::Nombrado(*renglon.nodo);
    case Suerte:
        if (renglon.campo)
            return {};
        return renglon.nodo->suerte == comparar::Suerte::Igual && renglon.nodo->difiere
                   ? QString("con cambios")
                   : comparar::Dicho(renglon.nodo->suerte);
    case Antes:
        return renglon.campo ? renglon.campo->antes : QString();
    case Despues:
        return renglon.campo ? renglon.campo->despues : QString();
    default:
        return {};
    }
}

QVariant ModeloComparacion::headerData(int columna, Qt::Orientation orientacion, int papel) const
{
    static const QStringList titulos{"Parte, servicio, renglón y campo", "Qué pasa", "Antes", "Después"};
    return orientacion == Qt::Horizontal && papel == Qt::DisplayRole ? QVariant(titulos.value(columna)) : QVariant();
}
