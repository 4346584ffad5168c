#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// Numbers as spreadsheets write them. A file has one style: whether 1,234 is a thousand or one and a bit is never
// guessed from the number alone.
namespace csv
{

enum class Decimal { Punto, Coma };

// How a column of numbers is written.
struct Cifras {
    std::optional<Decimal> decimal; // of most of them; nothing where only forms like 1,234 or 1.234 tell
    QString dudoso;                 // the first one of these forms
    QString sinSeparar;             // the first one of a thousand or more whose thousands nothing separates
};
Cifras MirarCifras(const QStringList &numeros);

// The number that a cell stands for, or what is expected in its place. "$" before it is dropped.
struct NumeroLeido {
    std::optional<double> numero;
    QString motivo;
};
NumeroLeido LeerNumero(const QString &celda, Decimal decimal, const Cifras &cifras);

// The number with this decimal mark, thousands not separated, so that it cannot be read in the other style.
QString EscribirNumero(double numero, Decimal decimal);

} // namespace csv
