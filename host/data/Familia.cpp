#include "data/Familia.h"

#include <QRegularExpression>

namespace qvx
{

namespace
{

constexpr auto SinMayusculas = QRegularExpression::CaseInsensitiveOption;

// Names alone: a number in a query may be a column's place.
const QString Nombre = "[A-Za-z_]\\w*";

struct Partes {
    QString lista;
    QString tabla;
    QStringList columnas; // those that are compared, by the places of their literals
    QStringList orden;    // without the direction
    QString ordenEntero;
};

std::optional<Partes> Partir(const QString &forma)
{
    static const QString columna = Nombre + "(?:\\s+AS\\s+" + Nombre + ")?";
    static const QString igual = "(?:" + Nombre + "\\.)?" + Nombre + "\\s*=\\s*\\?";
    static const QString porOrden = Nombre + "(?:\\s+ASC)?";
    static const QRegularExpression consulta(
        QRegularExpression::anchoredPattern("SELECT\\s+(\\*|" + columna + "(?:\\s*,\\s*" + columna + ")*)\\s+FROM\\s+("
                                            + Nombre + ")\\s+WHERE\\s+(" + igual + "(?:\\s+AND\\s+" + igual
                                            + ")*)\\s*(?:\\bORDER\\s+BY\\s+(" + porOrden + "(?:\\s*,\\s*" + porOrden
                                            + ")*)\\s*)?"),
        SinMayusculas);
    const auto hallada = consulta.match(forma);
    if (!hallada.hasMatch())
        return std::nullopt;
    Partes partes{hallada.captured(1), hallada.captured(2), {}, {}, hallada.captured(4)};
    static const QRegularExpression comparada("(?:(" + Nombre + ")\\.)?(" + Nombre + ")\\s*=\\s*\\?", SinMayusculas);
    for (auto todas = comparada.globalMatch(hallada.captured(3)); todas.hasNext();) {
        const auto una = todas.next();
        if (!una.captured(1).isEmpty() && una.captured(1).compare(partes.tabla, Qt::CaseInsensitive) != 0)
            return std::nullopt;
        partes.columnas.append(una.captured(2));
    }
    for (const QString &una : partes.ordenEntero.split(QLatin1Char(','), Qt::SkipEmptyParts))
        partes.orden.append(una.simplified().section(QLatin1Char(' '), 0, 0));
    return partes;
}

// What is left of a table's key to tell rows apart that are equal in these columns.
QStringList Desempate(const TablaConocida &tabla, const QStringList &iguales)
{
    QStringList restan;
    for (const QString &columna : tabla.llave)
        if (!iguales.contains(columna, Qt::CaseInsensitive))
            restan.append(columna);
    return restan;
}

QString Ordenada(QString forma, bool conOrden, const QStringList &desempate)
{
    return desempate.isEmpty() ? forma : forma.append((conOrden ? ", " : " ORDER BY ") + desempate.join(", "));
}

} // namespace

std::optional<Familia> FamiliaDe(const QString &forma, const QList<int> &fijos, const Reglas &reglas)
{
    const auto partes = Partir(forma);
    const auto tabla = partes ? reglas.Tabla(partes->tabla) : std::nullopt;
    if (!tabla)
        return std::nullopt;
    Familia familia;
    familia.tabla = partes->tabla.toLower();
    familia.catalogo = tabla->catalogo;
    familia.fija = tabla->fija;
    QStringList condiciones;
    QStringList sueltas;
    for (int i = 0; i < partes->columnas.size(); ++i) {
        const QString &columna = partes->columnas.at(i);
        const bool clave = tabla->claves.contains(columna, Qt::CaseInsensitive);
        if (!clave && !tabla->textos.contains(columna, Qt::CaseInsensitive))
            return std::nullopt;
        if (fijos.contains(i)) {
            familia.fijos.append(i);
            condiciones.append(columna + " = ?");
        } else {
            familia.sueltos.append({i, clave});
            sueltas.append(columna);
        }
    }
    if (sueltas.isEmpty() || familia.fijos.isEmpty() != familia.catalogo)
        return std::nullopt;
    familia.forma = Ordenada(forma, !partes->orden.isEmpty(), Desempate(*tabla, partes->columnas + partes->orden));
    familia.columnas = partes->lista;
    for (int i = 0; i < sueltas.size(); ++i)
        familia.columnas += QString(", %1 AS suelta_%2").arg(sueltas.at(i)).arg(i);
    familia.columnas += " FROM " + partes->tabla;
    familia.condicion = condiciones.join(" AND ");
    familia.primera = sueltas.constFirst();
    QStringList orden = sueltas;
    if (!partes->ordenEntero.isEmpty())
        orden.append(partes->ordenEntero);
    familia.orden = (orden + Desempate(*tabla, partes->columnas + partes->orden)).join(", ");
    return familia;
}

QString Familia::Texto(int renglones, bool desde) const
{
    QStringList condiciones;
    if (!condicion.isEmpty())
        condiciones.append(condicion);
    if (desde)
        condiciones.append(primera + " >= ?");
    const QString donde = condiciones.isEmpty() ? QString() : " WHERE " + condiciones.join(" AND ");
    return QString("SELECT %1%2 ORDER BY %3 LIMIT %4").arg(columnas, donde, orden, QString::number(renglones));
}

} // namespace qvx
