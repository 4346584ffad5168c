#pragma once

#include "system/Exporta.h"

#include <QAbstractTableModel>
#include <functional>

namespace QVX_EXPORTA qvx
{

struct ColumnaDeTabla {
    enum class Clase { Texto, Numero, Dinero, Folio }; // a folio is a number that names something
    QString titulo;
    Clase clase = Clase::Texto;
    bool seBusca = false; // the words searched for are looked for in it
};

// Rows of which those are shown that have every word searched for and that a filter lets through, in the order of a
// column. A row keeps its number among all of them whatever is shown.
class ModeloTabla : public QAbstractTableModel
{
    Q_OBJECT

public:
    // maximo: rows shown at once, 0 for all.
    ModeloTabla(QList<ColumnaDeTabla> columnas, int maximo, QObject *padre);

    // filas: a text or a number for each column; a number that is not known yet is no value, and shown empty.
    void Llenar(QList<QVariantList> filas);
    // Puts other numbers into a row, whose texts stay. It keeps its place until the rows are sorted again.
    void Cambiar(int numero, const QVariantList &fila);
    // Words in any order, letter case and accents, each anywhere in the columns that are searched; "" shows all.
    void Buscar(const QString &texto);
    // admite: of the number of a row, whether it may be shown.
    void Filtrar(std::function<bool(int)> admite);
    // More rows match than are shown.
    bool Cortado() const { return cortado; }
    // The number of a row that is shown, and where a row is shown, -1 when it is not.
    int Numero(int visible) const { return visibles.at(visible); }
    int Visible(int numero) const { return static_cast<int>(visibles.indexOf(numero)); }
    // Where a row is shown whose first column is this key, -1 when none is.
    int VisibleConClave(const QString &clave) const;
    QString Clave(int visible) const { return filas.at(visibles.at(visible)).constFirst().toString(); }

    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override;
    QVariant data(const QModelIndex &indice, int papel) const override;
    QVariant headerData(int columna, Qt::Orientation orientacion, int papel) const override;
    void sort(int columna, Qt::SortOrder orden) override;

private:
    bool EsTexto(int columna) const { return columnas.at(columna).clase == ColumnaDeTabla::Clase::Texto; }
    bool Vale(int numero) const;
    void Plegar(int columna);
    void PlegarBuscadas();
    void Elegir();
    void Ordenar();

    QList<ColumnaDeTabla> columnas;
    QList<QVariantList> filas;
    QList<QStringList> plegadas; // of each column its texts as they are compared, once they were
    QList<int> orden;            // all rows as they are sorted
    QList<int> visibles;
    QStringList palabras;
    std::function<bool(int)> admite;
    int maximo;
    int columnaDeOrden = 0;
    Qt::SortOrder sentido = Qt::AscendingOrder;
    bool cortado = false;
};

} // namespace qvx
