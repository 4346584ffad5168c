#pragma once

#include "plan/Costos.h"

#include <QAbstractTableModel>
#include <QHash>

// Lines whose cost differs, with a tick each; what their services cost follows the ticks.
class ModeloCostos : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Columna {
        Folio,
        Producto,
        Cantidad,
        Costo,
        Importe,
        Aviso,
        Servicio,
        CostoServicio,
        Utilidad,
        Porcentaje,
        Ruta,
        Renglon,
        Clase,
        Columnas
    };
    // By which rows are sorted, and among which words are searched.
    static constexpr int PapelOrden = Qt::UserRole;
    static constexpr int PapelBusqueda = Qt::UserRole + 1;

    using QAbstractTableModel::QAbstractTableModel;

    // What was ticked by hand before stays as it is where its line is still listed.
    void Poner(qvx::DiferenciasDeCostos nuevas);
    // The rows of the model that are given.
    void Marcar(const QList<int> &filas, bool marcar);
    // Forgets what was ticked by hand.
    void Olvidar() { decididas.clear(); }

    const qvx::DiferenciasDeCostos &Diferencias() const { return diferencias; }
    const QList<bool> &Marcadas() const { return marcadas; }

    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override;
    QVariant data(const QModelIndex &indice, int papel) const override;
    bool setData(const QModelIndex &indice, const QVariant &valor, int papel) override;
    Qt::ItemFlags flags(const QModelIndex &indice) const override;
    QVariant headerData(int columna, Qt::Orientation orientacion, int papel) const override;

private:
    struct Costeado {
        qvx::Costeo antes;
        qvx::Costeo despues;
        bool Pierde() const { return !antes.Pierde() && despues.Pierde(); }
    };

    QString Clave(int fila) const;
    QString Texto(int fila, int columna) const;
    QVariant Orden(int fila, int columna) const;
    QString Buscable(int fila) const;
    void Costear(int servicio);

    qvx::DiferenciasDeCostos diferencias;
    QList<bool> marcadas;
    QList<Costeado> costeados; // of each service
    QHash<QString, bool> decididas;
    mutable QStringList buscables; // of each row, when they were first searched
};
