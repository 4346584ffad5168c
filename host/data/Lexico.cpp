#include "data/Lexico.h"

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"

#include <QRegularExpression>
#include <utility>

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
        if (!texto.isValidUtf16()) // an engine may take the next character for its other half
            Rechazar("La sentencia contiene medio carácter");
        Verbo();
        while (lugar < texto.size())
            Pieza();
        Copiar();
        return std::move(sentencia);
    }

private:
    [[noreturn]] void Rechazar(const QString &motivo) const { throw ErrorEjecucion(errores::Datos, motivo, texto); }

    QChar Actual() const { return texto.at(lugar); }
    bool Sigue(QChar c) const { return lugar + 1 < texto.size() && texto.at(lugar + 1) == c; }
    static bool EsDePalabra(QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_'); }
    QStringView PalabraEnAdelante()
    {
        const auto inicio = lugar;
        while (lugar < texto.size() && EsDePalabra(Actual()))
            ++lugar;
        return QStringView(texto).mid(inicio, lugar - inicio);
    }

    void Verbo()
    {
        while (lugar < texto.size() && Actual().isSpace())
            ++lugar;
        const QString verbo = PalabraEnAdelante().toString().toUpper();
        if (verbo != "SELECT" && verbo != "INSERT" && verbo != "UPDATE" && verbo != "DELETE")
            Rechazar("La sentencia no es una consulta ni un cambio de renglones");
        sentencia.lectura = verbo == "SELECT";
        sentencia.forma += verbo;
        copiado = lugar;
    }

    // Takes what was read since the last literal into the shape.
    void Copiar() { sentencia.forma += QStringView(texto).mid(copiado, lugar - copiado); }

    void Pieza()
    {
        const QChar c = Actual();
        if (c == QLatin1Char('\''))
            return LiteralDeTexto();
        if (c.isDigit() && !sentencia.lectura)
            return LiteralDeNumero();
        if (EsDePalabra(c)) {
            PalabraEnAdelante();
            return;
        }
        if (c.isNull())
            Rechazar("La sentencia contiene un carácter nulo");
        if ((c == QLatin1Char('-') && Sigue(QLatin1Char('-'))) || (c == QLatin1Char('/') && Sigue(QLatin1Char('*'))))
            Rechazar("La sentencia contiene un comentario");
        if (c == QLatin1Char(';'))
            return FinDeSentencia();
        if (!c.isSpace() && !QStringView(u"(),.=<>!+-*/|%{}\"").contains(c))
            sentencia.sinCerrar = true;
        ++lugar;
    }

    void LiteralDeTexto()
    {
        Copiar();
        QString valor(""); // not null: '' is a text, and would be stored as none
        for (++lugar; lugar < texto.size(); ++lugar) {
            const auto inicio = lugar;
            while (lugar < texto.size() && Actual() != QLatin1Char('\'') && !Actual().isNull())
                ++lugar;
            valor += QStringView(texto).mid(inicio, lugar - inicio);
            if (lugar == texto.size())
                break;
            if (Actual().isNull())
                Rechazar("La sentencia contiene un carácter nulo");
            if (!Sigue(QLatin1Char('\''))) {
                ++lugar;
                return Literal(valor);
            }
            valor += Actual();
            ++lugar;
        }
        sentencia.sinCerrar = true;
    }

    void LiteralDeNumero()
    {
        Copiar();
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
        copiado = lugar;
    }

    void FinDeSentencia()
    {
        Copiar();
        for (++lugar; lugar < texto.size(); ++lugar)
            if (!Actual().isSpace())
                Rechazar("El texto contiene más de una sentencia");
        copiado = lugar;
    }

    const QString &texto;
    qsizetype lugar = 0;
    qsizetype copiado = 0; // up to here the text is in the shape
    Sentencia sentencia;
};

// Whether every parenthesis of a query belongs to a subquery or to a function that only reads what it is given. Others
// wait, hold locks, change the session's settings, or never end.
bool LlamadasPermitidas(const QString &forma)
{
    static const QRegularExpression llamada(R"(\S\s*(?=\())");
    static const QRegularExpression permitida(R"((?xi)
        (?: = | \b(?: WHERE | AND | ON | IN | EXISTS | MAX | MIN | COUNT | SUM | COALESCE | NULLIF | CAST | UPPER | LOWER
                    | TRIM | RTRIM | ROUND | TIMESTAMP | CLOCK_TIMESTAMP | TRIM_SCALE
                    | dbo\.Get_Ruta_Parte_Tipo_Equipo ) ) \s* \z)");
    constexpr int MasLarga = 60;
    for (auto halladas = llamada.globalMatch(forma); halladas.hasNext();)
        if (!permitida.match(forma.left(halladas.next().capturedEnd()).right(MasLarga)).hasMatch())
            return false;
    return true;
}

} // namespace

bool FormaPermitida(const QString &forma)
{
    static const QRegularExpression permitida(QRegularExpression::anchoredPattern(
                                                  R"((?xi)
        INSERT\s+INTO\s+ \w+ \s*\( [\w\s,]+ \)\s*
          (?: VALUES \s*\( \s*-?\s*\? (?: \s*,\s* -?\s*\? )* \s*\)
            | SELECT\s [\w\s,?]+ \sFROM\s+ \w+ \s+WHERE\s+ \w+\s*=\s*\? ) \s*
        | UPDATE\s+ \w+ \s+SET\s+
          (?: Tep_Descripcion\s*=\s*\?\s*, (?: \s*Te_Cve_Tipo_Equipo\s*=\s*\?\s*, )?
              \s*Oper_Ult_Modif\s*=\s*\?\s*, \s*Fecha_Ult_Modif\s*=\s*\?
            | (?! Tep_Descripcion\b ) \w+\s*=\s*-?\s*\? (?: \s*,\s* \w+\s*=\s*-?\s*\? )* )
          \s*WHERE\s+ \w+\s*=\s*\? (?: \s*AND\s+ \w+\s*=\s*\? )* \s*
        | DELETE\s+ (?:FROM\s+)? \w+ \s+WHERE\s+ \w+\s*=\s*\? (?: \s*AND\s+ \w+\s*=\s*\? )* \s*
        )"),
                                              QRegularExpression::DotMatchesEverythingOption);
    if (forma.startsWith("SELECT"))
        return LlamadasPermitidas(forma);
    return permitida.match(forma).hasMatch();
}

Sentencia Analizar(const QString &texto)
{
    return Analizador(texto).Analizar();
}

QList<int> LiteralesDeTipoDeEquipo(const QString &forma)
{
    static const QRegularExpression igualado("\\bTe_Cve_Tipo_Equipo\\s*=\\s*\\?",
                                             QRegularExpression::CaseInsensitiveOption);
    QList<int> lugares;
    for (auto hallados = igualado.globalMatch(forma); hallados.hasNext();)
        lugares.append(
            static_cast<int>(QStringView(forma).left(hallados.next().capturedEnd() - 1).count(QLatin1Char('?'))));
    return lugares;
}

void RevisarTipoDeEquipo(const Sentencia &sentencia, const QList<int> &literales, const QString &texto)
{
    if (sentencia.lectura || literales.size() < 2)
        return;
    const auto clave = [&](int lugar) { return SinBlancosAlFinal(sentencia.valores.value(lugar).toString()); };
    for (const int lugar : literales)
        if (clave(lugar) != clave(literales.constFirst()))
            throw ErrorEjecucion(errores::Datos, "La sentencia cambiaría el tipo de equipo de un registro", texto);
}

} // namespace qvx
