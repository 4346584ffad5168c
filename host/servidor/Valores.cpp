#include "servidor/Valores.h"

#include <QDateTime>
#include <QLocale>
#include <cmath>
#include <limits>

namespace qvx
{

namespace
{

// The server's types that are more than texts here.
enum Tipo : Oid {
    Booleano = 16,
    Bytes = 17,
    EnteroLargo = 20,
    EnteroCorto = 21,
    Entero = 23,
    Real = 700,
    RealDoble = 701,
    Fecha = 1082,
    Hora = 1083,
    Momento = 1114,
    MomentoConZona = 1184,
    Numerico = 1700,
};

bool EsEntero(Oid tipo)
{
    return tipo == EnteroLargo || tipo == EnteroCorto || tipo == Entero;
}

// Null texts and dates are absent values too, as they are to the toolkit's own drivers.
bool EsNulo(const QVariant &valor)
{
    switch (valor.typeId()) {
    case QMetaType::QString:
        return valor.toString().isNull();
    case QMetaType::QByteArray:
        return valor.toByteArray().isNull();
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return valor.toDateTime().isNull();
    default:
        return valor.isNull();
    }
}

QByteArray DeNumero(double numero, Oid tipo)
{
    if (std::isnan(numero))
        return "NaN";
    if (std::isinf(numero))
        return numero > 0 ? "Infinity" : "-Infinity";
    return QByteArray::number(EsEntero(tipo) ? std::round(numero) : numero, 'f', QLocale::FloatingPointShortest);
}

QVariant DeEnteroLargo(const QByteArray &texto)
{
    return texto.startsWith('-') ? QVariant(texto.toLongLong()) : QVariant(texto.toULongLong());
}

double DeReal(const QByteArray &texto)
{
    if (texto == "NaN")
        return std::numeric_limits<double>::quiet_NaN();
    if (texto == "Infinity" || texto == "-Infinity")
        return (texto.startsWith('-') ? -1 : 1) * std::numeric_limits<double>::infinity();
    return texto.toDouble();
}

QByteArray DeBytes(const char *texto)
{
    std::size_t cuantos = 0;
    unsigned char *bytes = PQunescapeBytea(reinterpret_cast<const unsigned char *>(texto), &cuantos);
    QByteArray todos(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(cuantos));
    PQfreemem(bytes);
    return todos;
}

} // namespace

QByteArray ComoParametro(const QVariant &valor, Oid tipo)
{
    if (EsNulo(valor))
        return {};
    switch (valor.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return DeNumero(valor.toDouble(), tipo);
    case QMetaType::QByteArray:
        return "\\x" + valor.toByteArray().toHex();
    default:
        return valor.toString().toUtf8();
    }
}

QMetaType TipoDe(Oid tipo)
{
    switch (tipo) {
    case Booleano:
        return QMetaType(QMetaType::Bool);
    case Bytes:
        return QMetaType(QMetaType::QByteArray);
    case EnteroLargo:
        return QMetaType(QMetaType::LongLong);
    case EnteroCorto:
    case Entero:
        return QMetaType(QMetaType::Int);
    case Real:
    case RealDoble:
    case Numerico:
        return QMetaType(QMetaType::Double);
    case Fecha:
        return QMetaType(QMetaType::QDate);
    case Hora:
        return QMetaType(QMetaType::QTime);
    case Momento:
    case MomentoConZona:
        return QMetaType(QMetaType::QDateTime);
    default:
        return QMetaType(QMetaType::QString);
    }
}

QVariant ComoValor(const PGresult *respuesta, int fila, int columna)
{
    const Oid tipo = PQftype(respuesta, columna);
    if (PQgetisnull(respuesta, fila, columna) == 1)
        return QVariant(TipoDe(tipo));
    const char *dato = PQgetvalue(respuesta, fila, columna);
    const QByteArray texto = QByteArray::fromRawData(dato, PQgetlength(respuesta, fila, columna));
    switch (tipo) {
    case Booleano:
        return texto.startsWith('t');
    case Bytes:
        return DeBytes(dato);
    case EnteroLargo:
        return DeEnteroLargo(texto);
    case EnteroCorto:
    case Entero:
        return texto.toInt();
    case Real:
    case RealDoble:
    case Numerico:
        return DeReal(texto);
    case Fecha:
        return QDate::fromString(QString::fromLatin1(texto), Qt::ISODate);
    case Hora:
        return QTime::fromString(QString::fromLatin1(texto), Qt::ISODate);
    case Momento:
    case MomentoConZona:
        return QDateTime::fromString(QString::fromLatin1(texto), Qt::ISODate).toLocalTime();
    default:
        return QString::fromUtf8(texto);
    }
}

// The library adds a place in the text when it does not know the text, which it does not when what was prepared is run.
Enlace::Fallo FalloDe(const PGresult *respuesta)
{
    const QString codigo = QString::fromLatin1(PQresultErrorField(respuesta, PG_DIAG_SQLSTATE));
    const char *motivo = PQresultErrorField(respuesta, PG_DIAG_MESSAGE_PRIMARY);
    if (!motivo) // the library's own
        return {QString::fromUtf8(PQresultErrorMessage(respuesta)).trimmed(), codigo};
    const char *gravedad = PQresultErrorField(respuesta, PG_DIAG_SEVERITY);
    return {QString::fromUtf8(gravedad) + ":  " + QString::fromUtf8(motivo), codigo};
}

} // namespace qvx
