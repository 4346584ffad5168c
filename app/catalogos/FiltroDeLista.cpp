#include "app/catalogos/FiltroDeLista.h"

#include "plan/Catalogos.h"

#include <algorithm>

FiltroDeLista::FiltroDeLista(QAbstractItemModel *modelo, int papelOrden, int papelBusqueda_, QObject *padre)
    : QSortFilterProxyModel(padre), papelBusqueda(papelBusqueda_)
{
    setDynamicSortFilter(false);
    setSortRole(papelOrden);
    setSourceModel(modelo);
}

void FiltroDeLista::Buscar(const QString &texto)
{
    palabras = qvx::Plegado(texto).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    invalidateFilter();
}

QList<int> FiltroDeLista::Mostradas() const
{
    QList<int> filas;
    for (int fila = 0; fila < rowCount(); ++fila)
        filas.append(mapToSource(index(fila, 0)).row());
    return filas;
}

bool FiltroDeLista::filterAcceptsRow(int fila, const QModelIndex &padre) const
{
    if (palabras.isEmpty())
        return true;
    const QString texto = sourceModel()->index(fila, 0, padre).data(papelBusqueda).toString();
    return std::all_of(palabras.cbegin(), palabras.cend(),
                       [&](const QString &palabra) { return texto.contains(palabra); });
}
