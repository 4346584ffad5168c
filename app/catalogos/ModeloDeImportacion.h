#pragma once

#include "app/catalogos/ImportacionDeCatalogo.h"

#include <QAbstractTableModel>

// The rows of an import as a list shows them: what becomes of each, old → new, and the reason of what is wrong.
class ModeloDeImportacion : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int Motivo = 2; // its column
    enum class Muestra { Todas, Cambios, Errores, Acentos };

    ModeloDeImportacion(const qvx::TablaDeCatalogo &tabla, QObject *padre);

    void Poner(const ImportacionDeCatalogo &nueva);
    void Mostrar(Muestra cuales);

    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override;
    QVariant data(const QModelIndex &lugar, int papel) const override;
    QVariant headerData(int seccion, Qt::Orientation orientacion, int papel) const override;

private:
    bool SeMuestra(const FilaImportada &fila) const;
    QString Texto(const FilaImportada &fila, int columna) const;
    QString Celda(const FilaImportada &fila, int columna) const;
    void Filtrar();

    const qvx::TablaDeCatalogo &tabla;
    QStringList titulos;
    ImportacionDeCatalogo importacion;
    Muestra muestra = Muestra::Todas;
    QList<qsizetype> visibles;
};
