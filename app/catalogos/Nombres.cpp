#include "app/catalogos/Nombres.h"

#include "plan/Catalogos.h"

#include <algorithm>

namespace
{

QString Nombre(const QList<QPair<QString, QString>> &todos, const QString &codigo)
{
    const auto hallado = std::find_if(todos.begin(), todos.end(), [&](const auto &par) { return par.first == codigo; });
    return hallado == todos.end() ? codigo : hallado->second;
}

} // namespace

const QList<QPair<QString, QString>> &nombres::ClasesDeProducto()
{
    static const QList<QPair<QString, QString>> clases{
        {"MO", "Mano de obra"}, {"RE", "Refacción"}, {"HE", "Herramienta"}};
    return clases;
}

QString nombres::ClaseDeProducto(const QString &codigo)
{
    return Nombre(ClasesDeProducto(), codigo);
}

QString nombres::ClaseDeRenglon(const QString &codigo)
{
    static const QList<QPair<QString, QString>> clases{
        {"01", "Mano de obra"}, {"02", "Refacción"}, {"03", "Herramienta"}};
    return Nombre(clases, codigo);
}

QString nombres::Estado(const QString &codigo)
{
    static const QList<QPair<QString, QString>> estados{
        {qvx::estado::Activo, "Activo"}, {qvx::estado::Baja, "Dado de baja"}, {qvx::estado::Cancelado, "Cancelado"}};
    return Nombre(estados, codigo);
}

QString nombres::Control(const qvx::ColumnaDeCatalogo &columna)
{
    using Clase = qvx::ColumnaDeCatalogo::Clase;
    const bool lista = columna.clase == Clase::ClaseDeProducto || columna.clase == Clase::Unidad;
    QString titulo = qvx::Plegado(columna.titulo);
    titulo[0] = titulo.at(0).toUpper();
    return (lista ? "cbo" : "txt") + titulo;
}
