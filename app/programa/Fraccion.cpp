#include "app/programa/Fraccion.h"

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace programa
{

namespace
{

constexpr double MaximoDeCentesimos = 1e15; // a number has 15 digits that mean something
constexpr int MaximoDeCeros = 38;           // that a whole number of 127 bits has

[[noreturn]] void Desbordar()
{
    throw qvx::ErrorEjecucion(
        qvx::errores::Desbordamiento,
        "Desbordamiento: un número del plan o del programa es demasiado grande o tiene demasiados "
        "decimales para calcular con él.");
}

Entero Divisor(Entero uno, Entero otro)
{
    while (otro != 0) {
        const Entero resto = uno % otro;
        uno = otro;
        otro = resto;
    }
    return uno < 0 ? -uno : uno;
}

Entero Potencia(int exponente)
{
    if (exponente > MaximoDeCeros)
        Desbordar();
    Entero potencia = 1;
    for (int i = 0; i < exponente; ++i)
        potencia = Multiplicados(potencia, 10);
    return potencia;
}

} // namespace

Decimal Decimal::De(double numero)
{
    if (!std::isfinite(numero))
        Desbordar();
    // Of two places at most, as nearly all are: known by its hundredths.
    const double centesimos = std::nearbyint(numero * 100);
    if (std::abs(centesimos) < MaximoDeCentesimos && centesimos / 100 == numero) {
        auto mantisa = static_cast<qint64>(centesimos);
        int exponente = -2;
        for (; mantisa != 0 && mantisa % 10 == 0; ++exponente)
            mantisa /= 10;
        return mantisa == 0 ? Decimal() : Decimal{mantisa, exponente};
    }
    // As the C locale writes it: that of the system may have a comma.
    std::array<char, 32> texto{};
    const auto escrito = std::to_chars(texto.data(), texto.data() + texto.size(), std::abs(numero),
                                       std::chars_format::scientific, qvx::CifrasDeNumero - 1);
    const char *const potencia = std::find(texto.data(), escrito.ptr, 'e');
    Decimal decimal;
    for (const char *cifra = texto.data(); cifra != potencia; ++cifra)
        if (*cifra != '.')
            decimal.mantisa = decimal.mantisa * 10 + (*cifra - '0');
    if (decimal.mantisa == 0)
        return {};
    const bool negativa = potencia[1] == '-';
    int exponente = 0;
    std::from_chars(potencia + 2, escrito.ptr, exponente);
    decimal.exponente = (negativa ? -exponente : exponente) - (qvx::CifrasDeNumero - 1);
    for (; decimal.mantisa % 10 == 0; ++decimal.exponente)
        decimal.mantisa /= 10;
    if (numero < 0)
        decimal.mantisa = -decimal.mantisa;
    return decimal;
}

Entero Sumados(Entero uno, Entero otro)
{
    Entero suma = 0;
    if (__builtin_add_overflow(uno, otro, &suma))
        Desbordar();
    return suma;
}

Entero Multiplicados(Entero uno, Entero otro)
{
    Entero producto = 0;
    if (__builtin_mul_overflow(uno, otro, &producto))
        Desbordar();
    return producto;
}

Entero Cociente(Entero dividendo, Entero divisor)
{
    const Entero cociente = dividendo / divisor;
    return dividendo % divisor < 0 ? cociente - 1 : cociente;
}

Fraccion::Fraccion(Entero numerador_, Entero denominador_)
{
    if (denominador_ == 0)
        Desbordar();
    const Entero comun = denominador_ < 0 ? -Divisor(numerador_, denominador_) : Divisor(numerador_, denominador_);
    numerador = numerador_ / comun;
    denominador = denominador_ / comun;
}

Fraccion Fraccion::De(double numero)
{
    const Decimal decimal = Decimal::De(numero);
    return decimal.exponente >= 0 ? Fraccion(Multiplicados(decimal.mantisa, Potencia(decimal.exponente)))
                                  : Fraccion(decimal.mantisa, Potencia(-decimal.exponente));
}

Fraccion Fraccion::Resto(const Fraccion &otra) const
{
    return *this - otra * Fraccion((*this / otra).Piso());
}

QString Fraccion::Texto(int decimales, bool arriba) const
{
    const Entero escala = Potencia(decimales);
    const Entero sube = arriba ? denominador - 1 : denominador / 2;
    const Entero entero = numerador / denominador; // first, so that the scale finds room
    const Entero resto = Multiplicados(numerador % denominador, escala);
    Entero cifras = Sumados(Multiplicados(entero, escala), Cociente(Sumados(resto, sube), denominador));
    const bool negativa = cifras < 0;
    cifras = negativa ? -cifras : cifras;
    QString texto = Digitos(cifras / escala);
    if (Entero fraccion = cifras % escala; fraccion != 0) {
        QString cola = Digitos(fraccion).rightJustified(decimales, QLatin1Char('0'));
        while (cola.endsWith(QLatin1Char('0')))
            cola.chop(1);
        texto += QLatin1Char('.') + cola;
    }
    return negativa ? "-" + texto : texto;
}

Fraccion operator+(const Fraccion &una, const Fraccion &otra)
{
    const Entero comun = Divisor(una.denominador, otra.denominador);
    return {Sumados(Multiplicados(una.numerador, otra.denominador / comun),
                    Multiplicados(otra.numerador, una.denominador / comun)),
            Multiplicados(una.denominador, otra.denominador / comun)};
}

Fraccion operator-(const Fraccion &una, const Fraccion &otra)
{
    return una + Fraccion(-otra.numerador, otra.denominador);
}

// What cancels out is taken away first, so that it takes no room.
Fraccion operator*(const Fraccion &una, const Fraccion &otra)
{
    const Fraccion cruzada(una.numerador, otra.denominador);
    const Fraccion opuesta(otra.numerador, una.denominador);
    return {Multiplicados(cruzada.numerador, opuesta.numerador),
            Multiplicados(cruzada.denominador, opuesta.denominador)};
}

Fraccion operator/(const Fraccion &una, const Fraccion &otra)
{
    return una * Fraccion(otra.denominador, otra.numerador);
}

// Whole parts first, then what is left of them upside down: nothing is multiplied that could overflow.
std::strong_ordering operator<=>(const Fraccion &una, const Fraccion &otra)
{
    Entero a = una.numerador;
    Entero b = una.denominador;
    Entero c = otra.numerador;
    Entero d = otra.denominador;
    for (;;) {
        const Entero entera = Cociente(a, b);
        const Entero ajena = Cociente(c, d);
        if (entera != ajena)
            return entera < ajena ? std::strong_ordering::less : std::strong_ordering::greater;
        const Entero resto = a - entera * b;
        const Entero ajeno = c - ajena * d;
        if (resto == 0 || ajeno == 0) {
            if (resto == ajeno)
                return std::strong_ordering::equal;
            return resto == 0 ? std::strong_ordering::less : std::strong_ordering::greater;
        }
        a = d;
        c = b;
        b = ajeno;
        d = resto;
    }
}

QString Digitos(Entero numero)
{
    if (numero == 0)
        return "0";
    QString digitos;
    const bool negativo = numero < 0;
    for (; numero != 0; numero /= 10) {
        const int cifra = static_cast<int>(numero % 10);
        digitos.prepend(QChar('0' + (cifra < 0 ? -cifra : cifra)));
    }
    return negativo ? "-" + digitos : digitos;
}

} // namespace programa
