#pragma once

#include "app/programa/PlanMedido.h"

#include <QAbstractTableModel>
#include <QStringList>

// The rows of a programme, of which those are shown that have all words searched for, are of a month and ask for a
// trade. Texts are made when they are looked at: there may be hundreds of thousands of rows.
class ModeloPrograma : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Columna {
        Programada,
        Teorica,
        Ruta,
        Folio,
        Servicio,
        Prioridad,
        Motivo,
        Veces,
        ManoObra,
        Paro,
        Costo,
        CostoHoy,
        Precio,
        Columnas
    };

    explicit ModeloPrograma(QObject *padre = nullptr) : QAbstractTableModel(padre) {}

    // They outlive the model's use of them.
    void Poner(const programa::PlanMedido *medido, const programa::Programa *programa);
    void Buscar(const QString &texto);
    // mes: its place, -1 for all; oficio: the place of its product, -1 for any.
    void Limitar(int mes, int oficio);

    const QList<int> &Mostradas() const { return mostradas; }
    // The place of the row, and of its service.
    int Fila(int visible) const { return mostradas.at(visible); }
    int ServicioEn(int visible) const { return programado->filas.at(mostradas.at(visible)).servicio; }

    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override { return padre.isValid() ? 0 : Columnas; }
    QVariant data(const QModelIndex &indice, int papel) const override;
    QVariant headerData(int columna, Qt::Orientation orientacion, int papel) const override;
    void sort(int columna, Qt::SortOrder sentido) override;

private:
    QString Texto(const programa::Fila &fila, int columna) const;
    void Elegir();
    void Ordenar();
    QList<int> Rangos() const;

    const programa::PlanMedido *medido = nullptr;
    const programa::Programa *programado = nullptr;
    QStringList plegados; // of each service, what is searched
    QStringList palabras;
    int mes = -1;
    int oficio = -1;
    int columnaDeOrden = Programada;
    Qt::SortOrder sentido = Qt::AscendingOrder;
    QList<int> mostradas;
};
