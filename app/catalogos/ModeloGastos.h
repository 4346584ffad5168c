#pragma once

#include "plan/Gastos.h"

#include <QAbstractTableModel>
#include <QHash>

// Spare-part lines without an expense type on offer, with the one chosen for each.
class ModeloGastos : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Columna { Folio, Producto, Elegido, Fundamento, Motivo, Servicio, Ruta, Renglon, Columnas };
    // By which rows are sorted, and among which words are searched.
    static constexpr int PapelOrden = Qt::UserRole;
    static constexpr int PapelBusqueda = Qt::UserRole + 1;

    using QAbstractTableModel::QAbstractTableModel;

    // What was chosen by hand before stays where its line is still listed, and the choice on offer.
    void Poner(qvx::RefaccionesSinGasto nuevas);
    // "" leaves the lines as they are.
    void Elegir(const QList<int> &filas, const QString &gasto);
    // Forgets what was chosen by hand.
    void Olvidar() { decididos.clear(); }

    const qvx::RefaccionesSinGasto &Refacciones() const { return refacciones; }
    const QStringList &Elegidos() const { return elegidos; }
    QString NombreDe(const QString &gasto) const { return gasto + " " + nombres.value(gasto); }

    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override;
    QVariant data(const QModelIndex &indice, int papel) const override;
    QVariant headerData(int columna, Qt::Orientation orientacion, int papel) const override;

private:
    QString Clave(int fila) const;
    QString Texto(int fila, int columna) const;

    qvx::RefaccionesSinGasto refacciones;
    QStringList elegidos;
    QHash<QString, QString> decididos;
    QHash<QString, QString> nombres; // of the expense types
};
