#pragma once

#include "system/Exporta.h"

#include <QString>
#include <QStringList>
#include <QVariantList>

namespace QVX_EXPORTA qvx
{

// A statement taken apart: its shape, with " ? " where the literals stood, and the literals' values in order. Texts
// that differ only in their literals have one shape.
struct Sentencia {
    QString forma;
    QVariantList valores;
    bool lectura = false;   // a SELECT
    bool propia = false;    // a text of the host's own
    bool sinCerrar = false; // a literal has no closing quote, or a character stands where no statement has one:
                            // such a text is only shown to the engine, for its own error
};

// Takes one SELECT, INSERT, UPDATE or DELETE apart. Numbers are literals of changes only: in a query they may number
// columns. Raises a data error for a second statement, a comment, another verb, a null character or half a character.
Sentencia Analizar(const QString &texto);

// A statement of the host's own and its values. Raises a data error when there are not as many as it has places, and
// for another verb.
Sentencia Propia(const QString &texto, const QVariantList &valores);

// A statement of the host's own with its values in their places, for people to read.
QString EnUnRenglon(const QString &texto, const QVariantList &valores);

// Where a literal stands among those of a shape, by the place of its "?" in the text.
int LiteralEn(const QString &forma, qsizetype lugar);

// Likewise, that of a column that a shape gives to a new row, -1 where it gives none.
int LiteralDelAlta(const QString &forma, const QString &columna);

// The table that the shape of a change changes, in small letters.
QString TablaQueCambia(const QString &forma);

// Whether every parenthesis of a shape belongs to a subquery, to a comparison, or to one of these functions.
bool SoloLlamaA(const QString &forma, const QStringList &funciones);

} // namespace qvx
