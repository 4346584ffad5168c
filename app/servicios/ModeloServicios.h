#pragma once

#include "app/lectura/Totales.h"
#include "app/servicios/FiltroDeServicios.h"

#include <QAbstractItemModel>
#include <functional>

// The services of a plan as a table, filtered and sorted; or in groups, of which each tells what its services add up
// to. A service keeps its place in the plan's list whatever is shown.
class ModeloServicios : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum class Grupos { Ninguno, PorParte, PorServicio };
    // What is dragged: the page knows which services are chosen.
    static inline const QString TipoArrastrado = "application/x-quorvex-servicios";

    explicit ModeloServicios(QObject *padre);

    const lectura::Plan &Plan() const { return plan; }
    void Poner(lectura::Plan nuevo);
    // Of all services, those that may be shown at all: those below a part.
    void Limitar(const QList<int> &cuales);
    void Buscar(const QString &texto);
    void PonerEnColumna(int columna, const QString &texto);
    void Agrupar(Grupos grupos);

    // The service of a row, -1 for a group's.
    int Servicio(const QModelIndex &indice) const;
    // The rows of services, in the order of Mostrados().
    void Recorrer(const std::function<void(int servicio, const QModelIndex &indice)> &ver) const;
    // The services shown, in their order.
    const QList<int> &Mostrados() const { return mostrados; }
    const lectura::Totales &Total() const { return total; }

    QModelIndex index(int fila, int columna, const QModelIndex &padre = {}) const override;
    QModelIndex parent(const QModelIndex &indice) const override;
    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override;
    QVariant data(const QModelIndex &indice, int papel) const override;
    QVariant headerData(int columna, Qt::Orientation orientacion, int papel) const override;
    Qt::ItemFlags flags(const QModelIndex &indice) const override;
    void sort(int columna, Qt::SortOrder sentido) override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indices) const override;

private:
    struct Grupo {
        QString titulo;
        QList<int> servicios;
        lectura::Totales total;
    };
    bool EnGrupos() const { return como != Grupos::Ninguno; }
    QString TextoDeGrupo(const Grupo &grupo, int columna) const;
    void Ordenar();
    void Elegir();
    void Repartir();

    lectura::Plan plan;
    FiltroDeServicios filtro;
    QList<int> orden; // all of those that may be shown, as they are sorted
    QList<int> permitidos;
    QList<int> mostrados;
    QList<Grupo> grupos;
    lectura::Totales total;
    Grupos como = Grupos::Ninguno;
    int columnaDeOrden = servicios::Folio;
    Qt::SortOrder sentido = Qt::AscendingOrder;
};
