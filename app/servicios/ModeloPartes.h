#pragma once

#include "app/lectura/Totales.h"

#include <QAbstractItemModel>
#include <vector>

// The tree of a plan's parts, below "Todo el plan", with what is due in each part and in all below it. Services that
// hang from no part of the tree have a node of their own.
class ModeloPartes : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Columna { Parte, Servicios, CostoAlAno, Columnas };
    static inline const QString TipoArrastrado = "application/x-quorvex-parte";

    using QAbstractItemModel::QAbstractItemModel;

    void Poner(const lectura::Plan &plan);
    // The part of a node: the root's key for the whole plan, "" for what is out of the tree.
    QString Clave(const QModelIndex &indice) const;
    QModelIndex Indice(const QString &clave) const;

    QModelIndex index(int fila, int columna, const QModelIndex &padre = {}) const override;
    QModelIndex parent(const QModelIndex &indice) const override;
    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override;
    QVariant data(const QModelIndex &indice, int papel) const override;
    QVariant headerData(int columna, Qt::Orientation orientacion, int papel) const override;
    Qt::ItemFlags flags(const QModelIndex &indice) const override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indices) const override;
    // Where the view marks the part under the pointer.
    bool canDropMimeData(const QMimeData *datos, Qt::DropAction accion, int fila, int columna,
                         const QModelIndex &padre) const override;

private:
    struct Nodo {
        QString clave;
        QString texto;
        bool deBaja = false;
        int padre = -1; // among the nodes
        int fila = 0;
        QList<int> hijos;
        int servicios = 0;
        double costoAlAno = 0;
    };
    void Agregar(int padre, Nodo nodo);
    const Nodo &De(const QModelIndex &indice) const { return nodos.at(indice.internalId()); }
    const QList<int> &HijosDe(const QModelIndex &padre) const { return padre.isValid() ? De(padre).hijos : arriba; }

    std::vector<Nodo> nodos;
    QList<int> arriba;
    QHash<QString, int> lugares;
};
