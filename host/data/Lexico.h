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
// columns. Raises a data error for a second statement, a comment, another verb, or a null character.
Sentencia Analizar(const QString &texto);

} // namespace qvx
