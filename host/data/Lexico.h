#pragma once

#include <QString>
#include <QVariantList>

namespace qvx
{

// A statement taken apart: its shape, with " ? " where the literals stood, and the literals' values in order. Texts
// that differ only in their literals have one shape.
struct Sentencia {
    QString forma;
    QVariantList valores;
    bool lectura = false;   // a SELECT
    bool sinCerrar = false; // a literal has no closing quote, or a character stands where no statement has one:
                            // such a text is only shown to the engine, for its own error
};

// Takes one SELECT, INSERT, UPDATE or DELETE apart. Numbers are literals of changes only: in a query they may number
// columns. Raises a data error for a second statement, a comment, another verb, a null character or half a character.
Sentencia Analizar(const QString &texto);

// Where among a shape's literals equipment types stand that a column is set to or compared with.
QList<int> LiteralesDeTipoDeEquipo(const QString &forma);

// No row is given to another equipment type: a change that names two of them was not composed by a screen. literales:
// those of its shape. Raises a data error with the statement's text.
void RevisarTipoDeEquipo(const Sentencia &sentencia, const QList<int> &literales, const QString &texto);

// Whether a shape is one that changes rows in the ways the system does: one row of values, a copy of rows, or columns
// set to values, and rows chosen by values of columns that all must match. A typed text with quotes in it, however they
// are balanced, makes another shape of a statement, and widens none; nor does a typed description bring other columns
// along. Queries change nothing, and are allowed as long as they call nothing but a few functions that only read.
bool FormaPermitida(const QString &forma);

} // namespace qvx
