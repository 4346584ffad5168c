#pragma once

#include <QList>
#include <QString>
#include <QVariant>

// A table as a spreadsheet takes it.
struct ColumnaDeHoja {
    enum class Clase { Texto, Numero, Dinero, Fecha };
    QString titulo;
    Clase clase = Clase::Texto;
    bool seSuma = false; // a workbook ends with its total
};

struct Hoja {
    QString nombre;
    QList<ColumnaDeHoja> columnas;
    QList<QVariantList> filas; // as many values as columns: texts, doubles, dates; one that is not valid is left empty
};
