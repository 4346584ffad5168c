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

} // namespace

Sentencia Analizar(const QString &texto)
{
    return Analizador(texto).Analizar();
}

Sentencia Propia(const QString &texto, const QVariantList &valores)
{
    static const QRegularExpression verbo("^(SELECT|INSERT|UPDATE|DELETE)\\b");
    if (!verbo.match(texto).hasMatch() || texto.count(QLatin1Char('?')) != valores.size())
        throw ErrorEjecucion(errores::Datos, "La sentencia no tiene la forma o los valores que debe", texto);
    Sentencia sentencia;
    sentencia.forma = texto;
    sentencia.valores = valores;
    sentencia.lectura = texto.startsWith("SELECT");
    sentencia.propia = true;
    for (QVariant &valor : sentencia.valores)
        if (valor.typeId() == QMetaType::QString && valor.isNull())
            valor = QString(""); // a text, and no absent value
    return sentencia;
}

QString EnUnRenglon(const QString &texto, const QVariantList &valores)
{
    QString entero;
    qsizetype copiado = 0;
    for (const QVariant &valor : valores) {
        const qsizetype lugar = texto.indexOf(QLatin1Char('?'), copiado);
        if (lugar < 0)
            break;
        entero += QStringView(texto).mid(copiado, lugar - copiado);
        entero += valor.typeId() == QMetaType::QString ? Literal(valor.toString()) : NumeroATexto(valor.toDouble());
        copiado = lugar + 1;
    }
    return entero.append(QStringView(texto).mid(copiado));
}

int LiteralEn(const QString &forma, qsizetype lugar)
{
    return static_cast<int>(QStringView(forma).left(lugar).count(QLatin1Char('?')));
}

int LiteralDelAlta(const QString &forma, const QString &columna)
{
    static const QRegularExpression alta("^INSERT\\s+INTO\\s+\\w+\\s*\\(([^()]*)\\)\\s*VALUES\\s*\\(([^()]*)\\)",
                                         QRegularExpression::CaseInsensitiveOption);
    const auto hallada = alta.match(forma);
    const QStringList columnas = hallada.captured(1).split(QLatin1Char(','));
    const QStringList valores = hallada.captured(2).split(QLatin1Char(','));
    for (qsizetype i = 0; hallada.hasMatch() && i < qMin(columnas.size(), valores.size()); ++i)
        if (columnas.at(i).trimmed().compare(columna, Qt::CaseInsensitive) == 0)
            return static_cast<int>(valores.mid(0, i).join(QString()).count(QLatin1Char('?')));
    return -1;
}

QString TablaQueCambia(const QString &forma)
{
    static const QRegularExpression tabla("^(?:INSERT\\s+INTO|UPDATE|DELETE\\s+FROM|DELETE)\\s+(\\w+)",
                                          QRegularExpression::CaseInsensitiveOption);
    return tabla.match(forma).captured(1).toLower();
}

bool SoloLlamaA(const QString &forma, const QStringList &funciones)
{
    static const QRegularExpression llamada(R"((=|[\w.]+|\S)\s*(?=\())",
                                            QRegularExpression::UseUnicodePropertiesOption);
    static const QStringList sintaxis{"=", "WHERE", "AND", "ON", "IN", "EXISTS"};
    for (auto halladas = llamada.globalMatch(forma); halladas.hasNext();) {
        const QString nombre = halladas.next().captured(1);
        if (!sintaxis.contains(nombre, Qt::CaseInsensitive) && !funciones.contains(nombre, Qt::CaseInsensitive))
            return false;
    }
    return true;
}

} // namespace qvx
