#include "app/reportes/Csv.h"

#include "data/ErrorEjecucion.h"
#include "system/ArchivoEntero.h"

#include <QDate>
#include <QRegularExpression>
#include <algorithm>
#include <functional>

namespace csv
{

namespace
{

constexpr int FilasDeMuestra = 50; // that a delimiter is judged by

// Rows one by one.
class Lector
{
public:
    Lector(const QString &texto_, QChar delimitador_) : texto(texto_), delimitador(delimitador_) {}

    // Nothing at the end. A line without anything is a row of one empty cell.
    std::optional<Fila> Siguiente()
    {
        if (lugar >= texto.size())
            return std::nullopt;
        Fila fila{renglon, {}};
        do
            fila.celdas.append(Celda());
        while (Pasar(delimitador));
        PasarFinDeLinea();
        return fila;
    }

private:
    QChar Aqui() const { return lugar < texto.size() ? texto.at(lugar) : QChar(); }
    bool EnElFin() const { return lugar >= texto.size() || Aqui() == QLatin1Char('\r') || Aqui() == QLatin1Char('\n'); }

    bool Pasar(QChar letra)
    {
        if (lugar >= texto.size() || Aqui() != letra)
            return false;
        ++lugar;
        return true;
    }

    void PasarFinDeLinea()
    {
        const bool retorno = Pasar(QLatin1Char('\r'));
        if (Pasar(QLatin1Char('\n')) || retorno)
            ++renglon;
    }

    QString Celda()
    {
        if (Pasar(QLatin1Char('"')))
            return Entrecomillada();
        const qsizetype inicio = lugar;
        while (!EnElFin() && Aqui() != delimitador)
            ++lugar;
        return texto.mid(inicio, lugar - inicio);
    }

    QString Entrecomillada()
    {
        const int abierta = renglon;
        QString celda;
        for (;;) {
            const qsizetype inicio = lugar;
            while (lugar < texto.size() && !EnElFin() && Aqui() != QLatin1Char('"'))
                ++lugar;
            if (lugar < texto.size() && EnElFin())
                PasarFinDeLinea();
            else if (!Pasar(QLatin1Char('"')))
                qvx::Rechazar(QString("En el renglón %1 se abre una comilla que no se cierra.").arg(abierta));
            else if (Aqui() != QLatin1Char('"')) {
                celda += QStringView(texto).mid(inicio, lugar - inicio - 1);
                break;
            } else {
                celda += QStringView(texto).mid(inicio, lugar - inicio);
                ++lugar;
                continue;
            }
            celda += QStringView(texto).mid(inicio, lugar - inicio);
        }
        if (!EnElFin() && Aqui() != delimitador)
            qvx::Rechazar(
                QString("En el renglón %1 sigue texto a la comilla que cierra: las comillas de dentro de una celda "
                        "van dobles.")
                    .arg(renglon));
        return celda;
    }

    const QString &texto;
    QChar delimitador;
    qsizetype lugar = 0;
    int renglon = 1;
};

bool Vacia(const Fila &fila)
{
    return std::all_of(fila.celdas.begin(), fila.celdas.end(),
                       [](const QString &celda) { return celda.trimmed().isEmpty(); });
}

// How well a delimiter parts the first rows: the more of them have as many cells as the first one, then the more cells.
using Merito = std::pair<int, qsizetype>;

Merito Juzgar(const QString &texto, QChar delimitador)
{
    int parejas = 0;
    qsizetype columnas = 0;
    try {
        Lector lector(texto, delimitador);
        for (int vistas = 0; vistas < FilasDeMuestra; ++vistas) {
            const auto fila = lector.Siguiente();
            if (!fila)
                break;
            if (Vacia(*fila))
                continue;
            if (columnas == 0)
                columnas = fila->celdas.size();
            parejas += fila->celdas.size() == columnas ? 1 : 0;
        }
    } catch (const qvx::ErrorEjecucion &) {
        return {}; // whoever reads the text is told
    }
    return columnas > 1 ? Merito{parejas, columnas} : Merito{};
}

// What a spreadsheet would take for a formula, and what was guarded already: it must come back as it is.
QString Resguardado(const QString &texto)
{
    static const QRegularExpression formula("^'*[=+\\-@\\t\\r]");
    return formula.match(texto).hasMatch() ? '\'' + texto : texto;
}

QString Escrito(const QVariant &valor, const ColumnaDeHoja &columna, Decimal decimal)
{
    if (!valor.isValid())
        return {};
    switch (columna.clase) {
    case ColumnaDeHoja::Clase::Numero:
    case ColumnaDeHoja::Clase::Dinero:
        return EscribirNumero(valor.toDouble(), decimal);
    case ColumnaDeHoja::Clase::Fecha:
        return valor.toDate().toString(Qt::ISODate);
    default:
        return Resguardado(valor.toString());
    }
}

QString Entrecomillado(QString celda, QChar delimitador)
{
    const bool hace = std::any_of(celda.begin(), celda.end(), [&](QChar letra) {
        return letra == delimitador || letra == QLatin1Char('"') || letra == QLatin1Char('\r')
               || letra == QLatin1Char('\n');
    });
    return hace ? '"' + celda.replace(QLatin1Char('"'), "\"\"") + '"' : celda;
}

QString Renglon(const QStringList &celdas, QChar delimitador)
{
    QStringList escritas;
    for (const QString &celda : celdas)
        escritas.append(Entrecomillado(celda, delimitador));
    return escritas.join(delimitador) + "\r\n";
}

// Row by row, the titles first.
void Componer(const Hoja &hoja, const Formato &formato, const std::function<void(const QString &)> &escribir)
{
    QStringList celdas;
    for (const ColumnaDeHoja &columna : hoja.columnas)
        celdas.append(Resguardado(columna.titulo));
    escribir(Renglon(celdas, formato.delimitador));
    for (const QVariantList &fila : hoja.filas) {
        for (qsizetype i = 0; i < celdas.size(); ++i)
            celdas[i] = Escrito(fila.at(i), hoja.columnas.at(i), formato.decimal);
        escribir(Renglon(celdas, formato.delimitador));
    }
}

} // namespace

bool ConAcentos(const Fila &fila)
{
    return std::any_of(fila.celdas.begin(), fila.celdas.end(), [](const QString &celda) {
        return std::any_of(celda.begin(), celda.end(), [](QChar letra) { return letra.unicode() >= 0x80; });
    });
}

std::optional<QChar> ProponerDelimitador(const QString &texto)
{
    QChar mejor = QLatin1Char(';');
    Merito suyo;
    bool empate = false;
    for (const QChar delimitador : {QLatin1Char(';'), QLatin1Char(','), QLatin1Char('\t')}) {
        const Merito merito = Juzgar(texto, delimitador);
        empate = merito > suyo ? false : empate || (merito == suyo && merito != Merito{});
        if (merito > suyo) {
            mejor = delimitador;
            suyo = merito;
        }
    }
    return empate ? std::nullopt : std::optional(mejor);
}

QList<Fila> Partir(const QString &texto, QChar delimitador)
{
    QList<Fila> filas;
    Lector lector(texto, delimitador);
    while (auto fila = lector.Siguiente())
        if (!Vacia(*fila))
            filas.append(*std::move(fila));
    return filas;
}

QString SinResguardo(const QString &texto)
{
    static const QRegularExpression resguardo("^'+[=+\\-@\\t\\r]");
    return resguardo.match(texto).hasMatch() ? texto.mid(1) : texto;
}

QString ParaPegar(const Hoja &hoja)
{
    QString texto;
    Componer(hoja, {QLatin1Char('\t'), Decimal::Punto}, [&](const QString &renglon) { texto += renglon; });
    return texto;
}

void Escribir(const QString &ruta, const Hoja &hoja, const Formato &formato)
{
    qvx::ArchivoEntero archivo(ruta);
    archivo.Salida().write("\xEF\xBB\xBF");
    Componer(hoja, formato, [&](const QString &renglon) { archivo.Salida().write(renglon.toUtf8()); });
    archivo.Terminar();
}

} // namespace csv
