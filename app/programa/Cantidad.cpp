#include "app/programa/Cantidad.h"

#include <QLocale>

namespace programa
{

namespace
{

constexpr int Lugares = 18;

constexpr Entero Diez(int exponente)
{
    Entero potencia = 1;
    for (int i = 0; i < exponente; ++i)
        potencia *= 10;
    return potencia;
}

constexpr Entero Escala = Diez(Lugares);

QString EnCifras(Entero unidades)
{
    const bool negativa = unidades < 0;
    const QString cifras = Digitos(negativa ? -unidades : unidades).rightJustified(Lugares + 1, QLatin1Char('0'));
    return (negativa ? "-" : "") + cifras.left(cifras.size() - Lugares) + '.' + cifras.right(Lugares);
}

} // namespace

Cantidad Cantidad::De(double numero)
{
    const Decimal decimal = Decimal::De(numero);
    const int exponente = decimal.exponente + Lugares;
    if (exponente < -Lugares)
        return {};
    if (exponente < 0)
        return Cantidad(decimal.mantisa / Diez(-exponente));
    Entero unidades = decimal.mantisa;
    for (int i = 0; i < exponente; ++i)
        unidades = Multiplicados(unidades, 10);
    return Cantidad(unidades);
}

Cantidad Cantidad::De(qint64 entero)
{
    return Cantidad(Multiplicados(entero, Escala));
}

// Digit by digit behind the point: the whole numerator times the scale would not fit.
Cantidad Cantidad::De(const Fraccion &fraccion)
{
    const Entero entero = fraccion.Piso();
    Entero resto = fraccion.Numerador() - entero * fraccion.Denominador();
    Entero unidades = 0;
    for (int i = 0; i < Lugares; ++i) {
        resto = Multiplicados(resto, 10);
        unidades = unidades * 10 + resto / fraccion.Denominador();
        resto %= fraccion.Denominador();
    }
    return Cantidad(Sumados(Multiplicados(entero, Escala), unidades));
}

Cantidad Cantidad::Redondeada(int decimales) const
{
    const Entero paso = Diez(Lugares - decimales);
    const Entero medio = unidades < 0 ? -paso / 2 : paso / 2;
    return Cantidad(Sumados(unidades, medio) / paso * paso);
}

QString Cantidad::Texto() const
{
    QString texto = EnCifras(unidades);
    while (texto.endsWith(QLatin1Char('0')))
        texto.chop(1);
    if (texto.endsWith(QLatin1Char('.')))
        texto.chop(1);
    return texto;
}

QString Cantidad::Texto(int decimales) const
{
    QString texto = EnCifras(Redondeada(decimales).unidades);
    texto.chop(Lugares - decimales + (decimales == 0 ? 1 : 0));
    const qsizetype primera = texto.startsWith(QLatin1Char('-')) ? 1 : 0;
    const qsizetype punto = decimales == 0 ? texto.size() : texto.indexOf(QLatin1Char('.'));
    for (auto lugar = punto - 3; lugar > primera; lugar -= 3)
        texto.insert(lugar, QLatin1Char(','));
    return texto;
}

double Cantidad::Numero() const
{
    return QLocale::c().toDouble(Texto());
}

// What the denominator takes whole first: the product at once would not fit.
Cantidad Cantidad::Por(const Fraccion &veces) const
{
    const Entero entero = unidades / veces.Denominador();
    const Entero resto = unidades % veces.Denominador();
    return Cantidad(Sumados(Multiplicados(entero, veces.Numerador()),
                            Multiplicados(resto, veces.Numerador()) / veces.Denominador()));
}

Cantidad &Cantidad::operator+=(const Cantidad &otra)
{
    unidades = Sumados(unidades, otra.unidades);
    return *this;
}

Cantidad operator-(const Cantidad &una, const Cantidad &otra)
{
    return Cantidad(Sumados(una.unidades, -otra.unidades));
}

Cantidad operator*(const Cantidad &una, qint64 veces)
{
    return Cantidad(Multiplicados(una.unidades, veces));
}

// Whole parts and decimals apart: their product at once would have 36 places.
Cantidad operator*(const Cantidad &una, const Cantidad &otra)
{
    const Entero entera = una.unidades / Escala;
    const Entero decimal = una.unidades % Escala;
    const Entero ajena = otra.unidades / Escala;
    const Entero suyo = otra.unidades % Escala;
    return Cantidad(
        Sumados(Multiplicados(entera, otra.unidades), Sumados(Multiplicados(decimal, ajena), decimal * suyo / Escala)));
}

} // namespace programa
