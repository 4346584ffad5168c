#include "servidor/Resultado.h"

#include "servidor/Valores.h"

#include <QSqlField>
#include <QSqlRecord>

namespace qvx
{

namespace
{

// "?" is $1, $2, … to the server; inside quotes it is a text's, or a name's.
QString ConNumeros(const QString &sql)
{
    QString con;
    QChar comilla;
    int cual = 0;
    for (const QChar letra : sql) {
        if (comilla.isNull() && letra == QLatin1Char('?')) {
            con += '$' + QString::number(++cual);
            continue;
        }
        if (comilla.isNull() && (letra == QLatin1Char('\'') || letra == QLatin1Char('"')))
            comilla = letra;
        else if (letra == comilla)
            comilla = {};
        con += letra;
    }
    return con;
}

} // namespace

// Prepared when it first runs, in the same crossing of the network; what is wrong with it is told then.
bool ResultadoPq::prepare(const QString &sql)
{
    preparado = ConNumeros(sql).toUtf8();
    return true;
}

bool ResultadoPq::exec()
{
    return Tomar(SuEnlace().Correr(preparado, boundValues()));
}

bool ResultadoPq::reset(const QString &sql)
{
    return Tomar(SuEnlace().Correr(sql.toUtf8()));
}

bool ResultadoPq::Tomar(Respuesta nueva)
{
    respuesta = std::move(nueva);
    setAt(QSql::BeforeFirstRow);
    setActive(respuesta != nullptr);
    setSelect(respuesta && PQresultStatus(respuesta.get()) == PGRES_TUPLES_OK);
    if (!respuesta)
        setLastError(ErrorDe(SuEnlace(), QSqlError::StatementError));
    return respuesta != nullptr;
}

QVariant ResultadoPq::data(int columna)
{
    return columna < PQnfields(respuesta.get()) ? ComoValor(respuesta.get(), at(), columna) : QVariant();
}

bool ResultadoPq::isNull(int columna)
{
    return PQgetisnull(respuesta.get(), at(), columna) == 1;
}

bool ResultadoPq::fetch(int fila)
{
    const bool hay = isActive() && fila >= 0 && fila < size();
    setAt(hay ? fila : QSql::AfterLastRow);
    return hay;
}

int ResultadoPq::size()
{
    return PQntuples(respuesta.get());
}

int ResultadoPq::numRowsAffected()
{
    return respuesta ? QByteArray(PQcmdTuples(respuesta.get())).toInt() : -1;
}

QSqlRecord ResultadoPq::record() const
{
    QSqlRecord registro;
    for (int i = 0; i < PQnfields(respuesta.get()); ++i)
        registro.append(QSqlField(QString::fromUtf8(PQfname(respuesta.get(), i)), TipoDe(PQftype(respuesta.get(), i))));
    return registro;
}

} // namespace qvx
