#pragma once

#include <QString>
#include <compare>

namespace programa
{

__extension__ using Entero = __int128;

// What a number says in decimal: mantisa times ten to the exponente, of the fifteen digits that count. Raises
// "Desbordamiento" for one that is none.
struct Decimal {
    Entero mantisa = 0;
    int exponente = 0;

    static Decimal De(double numero);
};

// Raise "Desbordamiento" where the result does not fit.
Entero Sumados(Entero uno, Entero otro);
Entero Multiplicados(Entero uno, Entero otro);
// The largest whole quotient that is not above the exact one; divisor > 0.
Entero Cociente(Entero dividendo, Entero divisor);

// An exact fraction in lowest terms: periods and dates, of which a binary fraction would be a day early. Steps whose
// result does not fit in 127 bits raise "Desbordamiento"; comparing always works.
class Fraccion
{
public:
    Fraccion() = default;
    // Raises "Desbordamiento" for a denominator of 0.
    Fraccion(Entero numerador_, Entero denominador_ = 1);
    static Fraccion De(double numero);

    Entero Numerador() const { return numerador; }
    Entero Denominador() const { return denominador; }
    bool Positiva() const { return numerador > 0; }
    Entero Piso() const { return Cociente(numerador, denominador); }
    // What is left of it when the other one, above 0, is taken away as often as it can be.
    Fraccion Resto(const Fraccion &otra) const;
    // With so many decimals at most, half a unit rounded up: "62.5". arriba: rounded up whatever is left.
    QString Texto(int decimales, bool arriba = false) const;

    friend Fraccion operator+(const Fraccion &una, const Fraccion &otra);
    friend Fraccion operator-(const Fraccion &una, const Fraccion &otra);
    friend Fraccion operator*(const Fraccion &una, const Fraccion &otra);
    friend Fraccion operator/(const Fraccion &una, const Fraccion &otra);
    friend std::strong_ordering operator<=>(const Fraccion &una, const Fraccion &otra);
    friend bool operator==(const Fraccion &una, const Fraccion &otra) = default;

private:
    Entero numerador = 0;
    Entero denominador = 1;
};

// The digits of a whole number.
QString Digitos(Entero numero);

} // namespace programa
