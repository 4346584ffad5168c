#pragma once

#include "plan/Catalogos.h"

#include <QAbstractTableModel>

namespace qvx
{

// The entries of a catalogue, of which those are shown that have every word searched for, in the order of a column.
class ModeloCatalogo : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Columna { Clave, Descripcion, Medida, Costo };

    // titulos: of the columns shown; maximo: rows shown at once, 0 for all.
    ModeloCatalogo(QList<EntradaCatalogo> entradas, QStringList titulos, int maximo, QObject *padre);

    // Words in any order, letter case and accents, each anywhere in the key or the description; "" shows all.
    void Buscar(const QString &texto);
    // More entries match than are shown.
    bool Cortado() const { return cortado; }
    // The row of a key, -1 when it is not shown.
    int FilaDe(const QString &clave) const;
    QString ClaveDe(int fila) const { return entradas.at(filas.at(fila)).clave; }

    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override;
    QVariant data(const QModelIndex &indice, int papel) const override;
    QVariant headerData(int columna, Qt::Orientation orientacion, int papel) const override;
    void sort(int columna, Qt::SortOrder orden) override;

private:
    void Elegir();

    QList<EntradaCatalogo> entradas;
    QList<QStringList> plegadas; // of each entry: key, description and unit as they are compared
    QList<int> orden;            // all entries as they are sorted
    QList<int> filas;            // those shown
    QStringList palabras;
    QStringList titulos;
    int maximo;
    bool cortado = false;
};

} // namespace qvx
