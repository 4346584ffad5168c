#pragma once

#include "app/programa/Fraccion.h"

namespace programa
{

// Hours, money, pieces: a decimal number of 18 places, added up without rounding. What does not fit (above 10^20)
// raises "Desbordamiento"; what is behind the 18th place, as of a third, is cut off.
class Cantidad
{
public:
    Cantidad() = default;
    static Cantidad De(double numero);
    static Cantidad De(qint64 entero);
    static Cantidad De(const Fraccion &fraccion);

    bool EsCero() const { return unidades == 0; }
    // Rounded once, half a unit away from zero.
    Cantidad Redondeada(int decimales) const;
    // All its digits, and with so many decimals and thousands apart: "1,234.50".
    QString Texto() const;
    QString Texto(int decimales) const;
    double Numero() const;
    // So many times, not only whole ones.
    Cantidad Por(const Fraccion &veces) const;

    Cantidad &operator+=(const Cantidad &otra);
    friend Cantidad operator+(Cantidad una, const Cantidad &otra) { return una += otra; }
    friend Cantidad operator-(const Cantidad &una, const Cantidad &otra);
    friend Cantidad operator*(const Cantidad &una, qint64 veces);
    friend Cantidad operator*(const Cantidad &una, const Cantidad &otra);
    friend std::strong_ordering operator<=>(const Cantidad &una, const Cantidad &otra) = default;
    friend bool operator==(const Cantidad &una, const Cantidad &otra) = default;

private:
    explicit Cantidad(Entero unidades_) : unidades(unidades_) {}

    Entero unidades = 0;
};

} // namespace programa
