#include "app/catalogos/ModeloDeImportacion.h"

#include <QFont>

namespace
{

using Clase = FilaImportada::Clase;

constexpr int Renglon = 0;
constexpr int ColumnaDeDestino = 1;
constexpr int PrimeraCelda = 3; // the key's

QString MotivoDe(const FilaImportada &fila)
{
    QStringList motivos;
    for (const FallaDeImportacion &falla : fila.fallas)
        motivos.append(falla.columna.isEmpty() ? falla.motivo : falla.columna + ": " + falla.motivo);
    return fila.fallas.isEmpty() ? fila.aviso : motivos.join(QLatin1Char(' '));
}

} // namespace

ModeloDeImportacion::ModeloDeImportacion(const qvx::TablaDeCatalogo &tabla_, QObject *padre)
    : QAbstractTableModel(padre), tabla(tabla_), titulos{"Renglón", "Qué es", "Motivo"}
{
    for (const ColumnaDeImportacion &columna : ColumnasDeImportacion(tabla))
        titulos.append(columna.titulo);
}

void ModeloDeImportacion::Poner(const ImportacionDeCatalogo &nueva)
{
    importacion = nueva;
    Filtrar();
}

void ModeloDeImportacion::Mostrar(Muestra cuales)
{
    muestra = cuales;
    Filtrar();
}

void ModeloDeImportacion::Filtrar()
{
    beginResetModel();
    visibles.clear();
    for (qsizetype i = 0; i < importacion.filas.size(); ++i)
        if (SeMuestra(importacion.filas.at(i)))
            visibles.append(i);
    endResetModel();
}

bool ModeloDeImportacion::SeMuestra(const FilaImportada &fila) const
{
    switch (muestra) {
    case Muestra::Cambios:
        return fila.clase == Clase::Nueva || fila.clase == Clase::Cambiada;
    case Muestra::Errores:
        return fila.clase == Clase::Erronea;
    case Muestra::Acentos:
        return fila.conAcentos;
    default:
        return true;
    }
}

int ModeloDeImportacion::rowCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(visibles.size());
}

int ModeloDeImportacion::columnCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(titulos.size());
}

QVariant ModeloDeImportacion::headerData(int seccion, Qt::Orientation orientacion, int papel) const
{
    return orientacion == Qt::Horizontal && papel == Qt::DisplayRole ? titulos.value(seccion) : QVariant();
}

QVariant ModeloDeImportacion::data(const QModelIndex &lugar, int papel) const
{
    if (!lugar.isValid())
        return {};
    const FilaImportada &fila = importacion.filas.at(visibles.at(lugar.row()));
    const int columna = lugar.column();
    if (papel == Qt::DisplayRole || papel == Qt::ToolTipRole)
        return Texto(fila, columna);
    if (papel == Qt::TextAlignmentRole && columna == Renglon)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (papel == Qt::FontRole && columna == ColumnaDeDestino && fila.clase == Clase::Erronea) {
        QFont letra;
        letra.setBold(true);
        return letra;
    }
    return {};
}

QString ModeloDeImportacion::Texto(const FilaImportada &fila, int columna) const
{
    if (columna == Renglon)
        return QString::number(fila.renglon);
    if (columna == ColumnaDeDestino)
        return NombreDe(fila.clase);
    if (columna == Motivo)
        return MotivoDe(fila);
    return Celda(fila, columna - PrimeraCelda);
}

// What is wrong is shown as it came.
QString ModeloDeImportacion::Celda(const FilaImportada &fila, int columna) const
{
    const QString escrito = fila.escritos.at(columna).simplified();
    if (fila.clase == Clase::Erronea)
        return escrito;
    if (columna == 0)
        return escrito == fila.clave ? escrito : escrito + " → " + fila.clave;
    const QString despues = EnPalabras(tabla, *fila.cambio.despues).at(columna).simplified();
    const QString antes = fila.cambio.antes ? EnPalabras(tabla, *fila.cambio.antes).at(columna).simplified() : despues;
    return antes == despues ? despues : antes + " → " + despues;
}
