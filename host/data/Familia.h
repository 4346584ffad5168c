#pragma once

#include "data/Reglas.h"

#include <QList>
#include <QString>
#include <QVariantList>
#include <optional>

namespace qvx
{

// The statements of one shape that choose rows of one table by values of its text columns: what they all have in
// common can be read at once, and each be answered from that.
struct Familia {
    struct Suelto {
        int literal = 0;   // its place in a statement
        bool clave = true; // trailing blanks do not count; otherwise texts are equal to the letter
    };

    QString tabla;         // in small letters
    QString forma;         // the shape, in an order that leaves no two rows in the engine's own
    QString columnas;      // of the common statement: the shape's, and behind them those of the loose literals
    QString condicion;     // its WHERE with the fixed literals, "" without any
    QString orden;         // its ORDER BY: by the loose columns first
    QString primera;       // the first of these
    QList<int> fijos;      // the places of the literals that all members share
    QList<Suelto> sueltos; // and of those in which they differ
    bool catalogo = false;
    bool fija = false;

    // The common statement, no more than so many rows of it: all of them, or from a value of the first loose column
    // on, whose place is the last one.
    QString Texto(int renglones, bool desde) const;
};

// Of a shape; fijos: the places that no two members may differ in. Nothing for a shape that has none: of several
// tables, with functions or other comparisons, or of a table that is not known.
std::optional<Familia> FamiliaDe(const QString &forma, const QList<int> &fijos, const Reglas &reglas);

} // namespace qvx
