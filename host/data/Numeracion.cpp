#include "data/Numeracion.h"

#include "data/Lexico.h"
#include "data/Texto.h"

#include <QRegularExpression>
#include <algorithm>

namespace qvx
{

namespace
{

constexpr int RenglonesDeNumeros = 50000;

QString ClaveDe(const QVariantList &valores)
{
    QString clave;
    for (const QVariant &valor : valores)
        clave += SinBlancosAlFinal(valor.toString()) + QChar::Null;
    return clave;
}

QString FijoDe(const PreguntaDeNumero &pregunta, const QVariantList &valores)
{
    return pregunta.fijo < 0 ? QString() : SinBlancosAlFinal(valores.at(pregunta.fijo).toString());
}

bool TodosTextos(const QVariantList &valores)
{
    return std::all_of(valores.begin(), valores.end(),
                       [](const QVariant &valor) { return valor.typeId() == QMetaType::QString; });
}

} // namespace

std::optional<PreguntaDeNumero> PreguntaDeNumeroDe(const QString &forma, const QList<int> &fijos, const Reglas &reglas)
{
    static const QRegularExpression consulta(
        QRegularExpression::anchoredPattern(R"(SELECT\s+MAX\((\w+)\)\s+AS\s+\w+\s+FROM\s+(\w+)\s+WHERE\s+)"
                                            R"((\w+\s*=\s*\?(?:\s+AND\s+\w+\s*=\s*\?)*)\s*)"),
        QRegularExpression::CaseInsensitiveOption);
    const auto hallada = consulta.match(forma);
    const auto tabla = hallada.hasMatch() ? reglas.Tabla(hallada.captured(2)) : std::nullopt;
    if (!tabla || !tabla->numeros.contains(hallada.captured(1)))
        return std::nullopt;
    PreguntaDeNumero pregunta{forma, hallada.captured(2).toLower(), hallada.captured(1), {}, {}, -1};
    pregunta.clave = tabla->numeros.value(pregunta.numero);
    static const QRegularExpression igualada(R"((\w+)\s*=)");
    for (auto todas = igualada.globalMatch(hallada.captured(3)); todas.hasNext();) {
        pregunta.columnas.append(todas.next().captured(1));
        if (!tabla->claves.contains(pregunta.columnas.constLast()))
            return std::nullopt;
    }
    if (fijos.size() == 1 && pregunta.columnas.size() > 1)
        pregunta.fijo = fijos.constFirst();
    return pregunta;
}

QString PreguntaDeNumero::Texto(int renglones) const
{
    QStringList otras = columnas;
    otras.removeAt(fijo);
    return QString("SELECT %1, MAX(%2) AS ultimo FROM %3 WHERE %4 = ? GROUP BY %1 LIMIT %5")
        .arg(otras.join(", "), numero, tabla, columnas.at(fijo), QString::number(renglones));
}

std::optional<Recordset> Numeracion::Responder(const PreguntaDeNumero &pregunta, const QVariantList &valores,
                                               const Lector &leer)
{
    const auto hallada = conocidas.find(pregunta.forma);
    if (hallada == conocidas.end() || !TodosTextos(valores))
        return std::nullopt;
    const QString fijo = FijoDe(pregunta, valores);
    const QString clave = ClaveDe(valores);
    if (pregunta.fijo >= 0 && hallada->preguntadas.contains(fijo) && !hallada->ultimos.contains(clave)
        && !hallada->todas.contains(fijo) && !hallada->demasiadas.contains(fijo))
        LeerTodas(*hallada, valores, leer);
    if (!hallada->ultimos.contains(clave) && !hallada->todas.contains(fijo))
        return std::nullopt;
    return Respuesta(*hallada, hallada->ultimos.value(clave));
}

void Numeracion::LeerTodas(Conocidas &estas, const QVariantList &valores, const Lector &leer)
{
    const PreguntaDeNumero &pregunta = estas.pregunta;
    const QString fijo = FijoDe(pregunta, valores);
    Recordset filas = leer(pregunta.Texto(RenglonesDeNumeros + 1), {valores.at(pregunta.fijo)});
    const int ultima = filas.Columnas() - 1;
    QHash<QString, std::optional<qulonglong>> halladas;
    for (; !filas.Eof(); filas.MoveNext()) {
        QVariantList literales;
        for (int i = 0; i < ultima; ++i)
            literales.append(filas.Valor(i));
        literales.insert(pregunta.fijo, fijo);
        if (!TodosTextos(literales) || halladas.size() == RenglonesDeNumeros) {
            estas.demasiadas.insert(fijo);
            return;
        }
        halladas.insert(ClaveDe(literales), filas.Valor(ultima).toULongLong());
    }
    estas.ultimos.insert(halladas);
    estas.todas.insert(fijo);
}

void Numeracion::Anotar(const PreguntaDeNumero &pregunta, const QVariantList &valores, const Recordset &respuesta)
{
    const QVariant &ultimo = respuesta.Valor(0);
    bool entero = true;
    const qulonglong numero = ultimo.isNull() ? 0 : ultimo.toULongLong(&entero);
    if (!TodosTextos(valores) || !entero)
        return;
    Conocidas &estas = conocidas[pregunta.forma];
    estas.pregunta = pregunta;
    estas.muestra = respuesta;
    estas.ultimos.insert(ClaveDe(valores), ultimo.isNull() ? std::nullopt : std::optional(numero));
    estas.preguntadas.insert(FijoDe(pregunta, valores));
}

// As the engine gives them: an absent number is of a type with a sign, another one of one without.
Recordset Numeracion::Respuesta(const Conocidas &estas, const std::optional<qulonglong> &ultimo)
{
    Recordset respuesta = estas.muestra;
    const QVariant valor = ultimo ? QVariant(*ultimo) : QVariant(QMetaType(QMetaType::LongLong));
    respuesta.valores = std::make_shared<const std::vector<QVariant>>(1, valor);
    respuesta.actual = 0;
    return respuesta;
}

void Numeracion::AlCambiar(const QString &forma, const QVariantList &valores, bool renglon)
{
    const QString tabla = TablaQueCambia(forma);
    conocidas.removeIf([&](auto estas) {
        return tabla.isEmpty() || (estas->pregunta.tabla == tabla && !(renglon && Contar(*estas, forma, valores)));
    });
}

// False for a row whose number only the engine can tell.
bool Numeracion::Contar(Conocidas &estas, const QString &forma, const QVariantList &valores)
{
    static const QRegularExpression cifras("^([0-9]{1,18}) *$");
    const auto valorDe = [&](const QString &columna) { return valores.value(LiteralDelAlta(forma, columna)); };
    const QVariant clave = valorDe(estas.pregunta.clave);
    const auto numero = cifras.match(clave.typeId() == QMetaType::QString ? clave.toString() : QString());
    QVariantList literales;
    for (const QString &columna : estas.pregunta.columnas)
        literales.append(valorDe(columna));
    if (!numero.hasMatch() || !TodosTextos(literales))
        return false;
    const QString miembro = ClaveDe(literales);
    if (!estas.ultimos.contains(miembro) && !estas.todas.contains(FijoDe(estas.pregunta, literales)))
        return true;
    std::optional<qulonglong> &ultimo = estas.ultimos[miembro];
    ultimo = std::max(ultimo.value_or(0), numero.captured(1).toULongLong());
    return true;
}

} // namespace qvx
