#include "data/Texto.h"

#include "data/ErrorEjecucion.h"

#include <QLocale>
#include <QRegularExpression>
#include <cmath>

namespace qvx
{

QString Literal(const QString &texto)
{
    QString doblado = texto;
    return "'" + doblado.replace(QLatin1Char('\''), "''") + "'";
}

QString Condicion(const QStringList &columnas, const QStringList &valores)
{
    if (columnas.size() != valores.size())
        throw ErrorEjecucion(errores::TiposNoCoinciden, "La clave no tiene las columnas de su tabla");
    QStringList partes;
    for (int i = 0; i < columnas.size(); ++i)
        partes.append(columnas.at(i) + " = " + Literal(valores.at(i)));
    return partes.join(" AND ");
}

QString SinBlancosAlFinal(QString clave)
{
    while (clave.endsWith(QLatin1Char(' ')))
        clave.chop(1);
    return clave;
}

QString TextoFecha(const QDateTime &fecha)
{
    return fecha.toString("yyyy-MM-dd HH:mm:ss");
}

QString NumeroATexto(double numero)
{
    if (numero == 0)
        return "0"; // also for the negative zero
    const double redondo = QString::number(numero, 'g', CifrasDeNumero).toDouble();
    // The largest numbers would be rounded out of their range.
    return QString::number(std::isfinite(redondo) ? redondo : numero, 'f', QLocale::FloatingPointShortest);
}

std::optional<double> TextoANumero(const QString &texto)
{
    static const QRegularExpression forma("^-?(?:(?:[0-9]+|[1-9][0-9]{0,2}(?:,[0-9]{3})+)(?:\\.[0-9]*)?|\\.[0-9]+)$");
    const QString limpio = texto.trimmed();
    if (!forma.match(limpio).hasMatch())
        return std::nullopt;
    QString digitos = limpio;
    const double numero = QLocale::c().toDouble(digitos.remove(QLatin1Char(',')));
    if (!std::isfinite(numero))
        throw ErrorEjecucion(errores::Desbordamiento, "Desbordamiento");
    return numero;
}

QString NumeroConFormato(double numero, const QString &formato)
{
    const auto punto = formato.indexOf(QLatin1Char('.'));
    const QString decimalesFormato = punto < 0 ? QString() : formato.mid(punto + 1);
    const auto minimos = decimalesFormato.count(QLatin1Char('0'));
    const auto maximos = decimalesFormato.size();

    QString cifras = NumeroATexto(std::abs(numero));
    if (cifras.section(QLatin1Char('.'), 1).size() > maximos)
        cifras = QString::number(std::abs(numero), 'f', static_cast<int>(maximos));
    if (!cifras.contains(QLatin1Char('.')))
        cifras += QLatin1Char('.');
    const auto marca = cifras.indexOf(QLatin1Char('.'));
    cifras = cifras.leftJustified(marca + 1 + minimos, QLatin1Char('0'));
    while (cifras.size() > marca + 1 + minimos && cifras.endsWith(QLatin1Char('0')))
        cifras.chop(1);
    if (cifras.endsWith(QLatin1Char('.')))
        cifras.chop(1);
    for (auto lugar = marca - 3; lugar > 0; lugar -= 3)
        cifras.insert(lugar, QLatin1Char(','));

    const bool cero = cifras.count(QLatin1Char('0')) + cifras.count(QLatin1Char('.')) + cifras.count(QLatin1Char(','))
                      == cifras.size();
    return (numero < 0 && !cero ? "-" : "") + QString(formato.startsWith(QLatin1Char('$')) ? "$" : "") + cifras;
}

QString ClaveConFormato(const QString &clave, const QString &mascara)
{
    const QString limpia = clave.trimmed();
    static const QRegularExpression digitos("^[0-9]+$");
    if (!digitos.match(limpia).hasMatch())
        return limpia;
    return limpia.rightJustified(mascara.size(), QLatin1Char('0'));
}

} // namespace qvx
