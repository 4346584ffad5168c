#include "data/Lexico.h"

#include "data/ErrorEjecucion.h"

#include <QRegularExpression>

namespace qvx
{

namespace
{

class Analizador
{
public:
    explicit Analizador(const QString &texto_) : texto(texto_) { sentencia.forma.reserve(texto.size()); }

    Sentencia Analizar()
    {
        Verbo();
        while (lugar < texto.size())
            Pieza();
        return sentencia;
    }

private:
    [[noreturn]] void Rechazar(const QString &motivo) const { throw ErrorEjecucion(errores::Datos, motivo, texto); }

    QChar Actual() const { return texto.at(lugar); }
    bool Sigue(QChar c) const { return lugar + 1 < texto.size() && texto.at(lugar + 1) == c; }
    static bool EsDePalabra(QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_'); }

    void Verbo()
    {
        while (lugar < texto.size() && Actual().isSpace())
            ++lugar;
        const auto inicio = lugar;
        while (lugar < texto.size() && EsDePalabra(Actual()))
            ++lugar;
        const QString verbo = texto.mid(inicio, lugar - inicio).toUpper();
        if (verbo != "SELECT" && verbo != "INSERT" && verbo != "UPDATE" && verbo != "DELETE")
            Rechazar("La sentencia no es una consulta ni un cambio de renglones");
        sentencia.lectura = verbo == "SELECT";
        sentencia.forma = verbo;
    }

    void Pieza()
    {
        const QChar c = Actual();
        if (c == QLatin1Char('\''))
            return LiteralDeTexto();
        if (c.isDigit() && !sentencia.lectura)
            return LiteralDeNumero();
        if (EsDePalabra(c))
            return Palabra();
        if (c.isNull())
            Rechazar("La sentencia contiene un carácter nulo");
        if ((c == QLatin1Char('-') && Sigue(QLatin1Char('-'))) || (c == QLatin1Char('/') && Sigue(QLatin1Char('*'))))
            Rechazar("La sentencia contiene un comentario");
        if (c == QLatin1Char(';'))
            return FinDeSentencia();
        if (!c.isSpace() && !QStringLiteral("(),.=<>!+-*/|%{}\"").contains(c))
            sentencia.sinCerrar = true;
        sentencia.forma += c;
        ++lugar;
    }

    void Palabra()
    {
        while (lugar < texto.size() && EsDePalabra(Actual()))
            sentencia.forma += texto.at(lugar++);
    }

    void LiteralDeTexto()
    {
        QString valor(""); // not null: '' is a text, and would be stored as none
        for (++lugar; lugar < texto.size(); ++lugar) {
            if (Actual().isNull())
                Rechazar("La sentencia contiene un carácter nulo");
            if (Actual() == QLatin1Char('\'')) {
                if (!Sigue(QLatin1Char('\''))) {
                    ++lugar;
                    return Literal(valor);
                }
                ++lugar;
            }
            valor += Actual();
        }
        sentencia.sinCerrar = true;
    }

    void LiteralDeNumero()
    {
        const auto inicio = lugar;
        while (lugar < texto.size() && (Actual().isDigit() || Actual() == QLatin1Char('.')))
            ++lugar;
        if (lugar < texto.size() && Actual().toLower() == QLatin1Char('e'))
            Exponente();
        const QString cifras = texto.mid(inicio, lugar - inicio);
        bool entero = false;
        const qlonglong numero = cifras.toLongLong(&entero);
        if (entero)
            return Literal(numero);
        bool real = false;
        const double aproximado = cifras.toDouble(&real);
        if (!real)
            sentencia.sinCerrar = true;
        Literal(aproximado);
    }

    void Exponente()
    {
        auto fin = lugar + 1;
        if (fin < texto.size() && (texto.at(fin) == QLatin1Char('+') || texto.at(fin) == QLatin1Char('-')))
            ++fin;
        const auto cifras = fin;
        while (fin < texto.size() && texto.at(fin).isDigit())
            ++fin;
        if (fin > cifras)
            lugar = fin;
    }

    void Literal(const QVariant &valor)
    {
        sentencia.valores.append(valor);
        sentencia.forma += " ? "; // blanks around it: "?5" would name a parameter
    }

    void FinDeSentencia()
    {
        for (++lugar; lugar < texto.size(); ++lugar)
            if (!Actual().isSpace())
                Rechazar("El texto contiene más de una sentencia");
    }

    const QString &texto;
    qsizetype lugar = 0;
    Sentencia sentencia;
};

} // namespace

bool FormaPermitida(const QString &forma)
{
    static const QRegularExpression permitida(QRegularExpression::anchoredPattern(
                                                  R"((?xi)
        SELECT\b .*
        | INSERT\s+INTO\s+ \w+ \s*\( [\w\s,]+ \)\s*
          (?: VALUES \s*\( \s*-?\s*\? (?: \s*,\s* -?\s*\? )* \s*\)
            | SELECT\s [\w\s,?]+ \sFROM\s+ \w+ \s+WHERE\s+ \w+\s*=\s*\? ) \s*
        | UPDATE\s+ \w+ \s+SET\s+ \w+\s*=\s*-?\s*\? (?: \s*,\s* \w+\s*=\s*-?\s*\? )*
          \s*WHERE\s+ \w+\s*=\s*\? (?: \s*AND\s+ \w+\s*=\s*\? )* \s*
        | DELETE\s+ (?:FROM\s+)? \w+ \s+WHERE\s+ \w+\s*=\s*\? (?: \s*AND\s+ \w+\s*=\s*\? )* \s*
        )"),
                                              QRegularExpression::DotMatchesEverythingOption);
    return permitida.match(forma).hasMatch();
}

Sentencia Analizar(const QString &texto)
{
    return Analizador(texto).Analizar();
}

} // namespace qvx
