#pragma once

#include "system/Exporta.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <optional>

// Texts of keys, numbers and amounts. One place, so that every engine, box and grid writes them the same way.
namespace QVX_EXPORTA qvx
{

// The text as a literal of a statement: between single quotes, with its own quotes doubled. For the host's own
// statements; the screens compose theirs as they stand.
QString Literal(const QString &texto);

// That columns have these values, as a condition of a statement. Raises TiposNoCoinciden when they are not as many.
QString Condicion(const QStringList &columnas, const QStringList &valores);

// Keys compare without their trailing blanks.
QString SinBlancosAlFinal(QString clave);

// A date as the database keeps it: "yyyy-MM-dd HH:mm:ss".
QString TextoFecha(const QDateTime &fecha);

// As many digits of a number count; those behind them are what binary fractions leave over.
constexpr int CifrasDeNumero = 15;

// The number with "." as decimal mark, CifrasDeNumero digits that count, no thousands, no trailing zeros and no
// exponent.
QString NumeroATexto(double numero);

// The number that a text stands for: digits, one decimal mark ".", "," between groups of three before it, a leading
// "-". Nothing for any other text, also the empty one. Raises "Desbordamiento" when it is too large for a number.
std::optional<double> TextoANumero(const QString &texto);

// The number in a display format of the grids: "#,##0.000######", "$#,##0.00#######": thousands separated, as many
// decimals as the format has zeros, up to as many as it has places; a "$" stands before the number.
QString NumeroConFormato(double numero, const QString &formato);

// The key in the form of its mask: one made of digits is filled with zeros up to the mask's length ("0000"), any
// other is left as it is; blanks around it are dropped.
QString ClaveConFormato(const QString &clave, const QString &mascara);

} // namespace qvx
