#include "app/reportes/Cifras.h"

#include "controls/NumeroEscrito.h"
#include "data/Texto.h"

#include <QRegularExpression>

namespace csv
{

namespace
{

// A comma for a point, and the reverse: the other style's text in this one's.
QString Volteado(QString texto)
{
    for (QChar &letra : texto)
        if (letra == QLatin1Char(','))
            letra = QLatin1Char('.');
        else if (letra == QLatin1Char('.'))
            letra = QLatin1Char(',');
    return texto;
}

QString Limpio(const QString &celda)
{
    QString texto = celda.trimmed();
    if (texto.startsWith(QLatin1Char('$')))
        texto = texto.mid(1).trimmed();
    return texto;
}

// As the system writes numbers: point for decimals, commas between thousands.
QString ConPunto(const QString &celda, Decimal decimal)
{
    return decimal == Decimal::Punto ? Limpio(celda) : Volteado(Limpio(celda));
}

bool EsNumero(const QString &conPunto)
{
    return qvx::ReparoDeNumero(conPunto, qvx::LargoEscrito, true).isEmpty() && !conPunto.isEmpty();
}

// Three digits behind the only mark: thousands for one, decimals for another.
bool EsDudoso(const QString &celda)
{
    static const QRegularExpression forma("^-?[1-9][0-9]{0,2}[.,][0-9]{3}$");
    return forma.match(Limpio(celda)).hasMatch();
}

bool LlevaMilesJuntos(const QString &celda)
{
    static const QRegularExpression forma("^-?[1-9][0-9]{3,}(?:[.,][0-9]*)?$");
    return forma.match(Limpio(celda)).hasMatch();
}

QString Esperado(Decimal decimal)
{
    return decimal == Decimal::Punto ? QString("Se esperaba un número con punto decimal, como 1234.50.")
                                     : QString("Se esperaba un número con coma decimal, como 1234,50.");
}

} // namespace

// A number that only one of the styles takes tells the style.
Cifras MirarCifras(const QStringList &numeros)
{
    Cifras cifras;
    int conPunto = 0;
    int conComa = 0;
    for (const QString &numero : numeros) {
        const bool punto = EsNumero(ConPunto(numero, Decimal::Punto));
        const bool coma = EsNumero(ConPunto(numero, Decimal::Coma));
        conPunto += punto && !coma ? 1 : 0;
        conComa += coma && !punto ? 1 : 0;
        if (cifras.dudoso.isEmpty() && EsDudoso(numero))
            cifras.dudoso = numero.trimmed();
        if (cifras.sinSeparar.isEmpty() && LlevaMilesJuntos(numero))
            cifras.sinSeparar = numero.trimmed();
    }
    if (conPunto + conComa > 0 || cifras.dudoso.isEmpty())
        cifras.decimal = conComa > conPunto ? Decimal::Coma : Decimal::Punto;
    return cifras;
}

NumeroLeido LeerNumero(const QString &celda, Decimal decimal, const Cifras &cifras)
{
    const QString texto = ConPunto(celda, decimal);
    if (texto.size() > qvx::LargoEscrito || !qvx::TextoANumero(texto))
        return {std::nullopt, Esperado(decimal)};
    if (const QString reparo = qvx::ReparoDeNumero(texto, qvx::LargoEscrito, true); !reparo.isEmpty())
        return {std::nullopt, reparo + '.'};
    if (EsDudoso(celda) && texto.contains(QLatin1Char(',')) && !cifras.sinSeparar.isEmpty())
        return {std::nullopt, "Otro número del archivo no separa los miles (" + cifras.sinSeparar
                                  + "): escriba este del mismo modo."};
    return {qvx::TextoANumero(texto), {}};
}

// With three decimals it could be taken for thousands: it is given one more zero.
QString EscribirNumero(double numero, Decimal decimal)
{
    QString texto = qvx::NumeroATexto(numero);
    if (EsDudoso(texto))
        texto += QLatin1Char('0');
    return decimal == Decimal::Punto ? texto : Volteado(texto);
}

} // namespace csv
