#pragma once

#include <QSortFilterProxyModel>

// The rows that have every word searched for, in the order of a column. A model gives under papelBusqueda of its first
// column what is searched, without accents and letter case, and under the sort role by what it is sorted. Rows keep
// their places while they are ticked.
class FiltroDeLista : public QSortFilterProxyModel
{
public:
    FiltroDeLista(QAbstractItemModel *modelo, int papelOrden, int papelBusqueda, QObject *padre);

    void Buscar(const QString &texto);
    // The rows of the model that are shown.
    QList<int> Mostradas() const;

protected:
    bool filterAcceptsRow(int fila, const QModelIndex &padre) const override;

private:
    int papelBusqueda;
    QStringList palabras;
};
