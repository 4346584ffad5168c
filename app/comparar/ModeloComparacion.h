#pragma once

#include "app/comparar/Comparacion.h"

#include <QAbstractItemModel>

// What differs between two plans as a tree: part, service, line, field. Of a comparison that its owner keeps.
class ModeloComparacion : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Columna { Que, Suerte, Antes, Despues, Columnas };

    using QAbstractItemModel::QAbstractItemModel;

    // soloDiferencias: what is the same on both sides is left out.
    void Mostrar(const comparar::Comparacion &comparacion, bool soloDiferencias);
    // How many rows the whole tree has.
    int Renglones() const { return static_cast<int>(renglones.size()); }

    QModelIndex index(int fila, int columna, const QModelIndex &padre = {}) const override;
    QModelIndex parent(const QModelIndex &indice) const override;
    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override;
    QVariant data(const QModelIndex &indice, int papel) const override;
    QVariant headerData(int columna, Qt::Orientation orientacion, int papel) const override;

private:
    // A node, or one of its fields.
    struct Renglon {
        const comparar::Nodo *nodo;
        const comparar::Campo *campo;
        int padre; // -1: none
        int fila;
        std::vector<int> hijos;
    };
    int Poner(const comparar::Nodo &nodo, const comparar::Campo *campo, int padre);
    void PonerNodo(const comparar::Nodo &nodo, int padre, bool soloDiferencias);
    const std::vector<int> &HijosDe(const QModelIndex &padre) const;

    std::vector<Renglon> renglones;
    std::vector<int> raices;
};
