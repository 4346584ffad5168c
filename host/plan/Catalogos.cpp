#include "plan/Catalogos.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"

#include <algorithm>

namespace qvx
{

namespace
{

const QList<Catalogo> &Todos()
{
    static const QList<Catalogo> catalogos{
        {"TIPO_EQUIPO", "Tipos de equipo", "Tipo_Equipo", "Te_Cve_Tipo_Equipo", "Te_Descripcion", ""},
        {"TIPO_SERVICIO", "Tipos de servicio", "Tipo_Servicio", "Ts_Cve_Tipo_Servicio", "Ts_Descripcion", ""},
        {"PRIORIDAD_SERVICIO", "Prioridades", "Prioridad_Servicio", "Ps_Cve_Prioridad", "Ps_Descripcion", ""},
        {"UNIDAD", "Unidades de medida", "Unidad", "Un_Cve_Unidad", "Un_Descripcion", ""},
        {"TIPO_GASTO", "Tipos de gasto", "Tipo_Gasto", "Tg_Cve_Tipo_Gasto", "Tg_Descripcion", ""},
        {"PRODUCTO_MANO_OBRA", "Mano de obra", "Producto", "Pr_Cve_Producto", "Pr_Descripcion", "Pr_Clase = 'MO'"},
        {"PRODUCTO_REFACCION", "Refacciones", "Producto", "Pr_Cve_Producto", "Pr_Descripcion", "Pr_Clase = 'RE'"},
        {"PRODUCTO_HERRAMIENTA", "Herramientas", "Producto", "Pr_Cve_Producto", "Pr_Descripcion", "Pr_Clase = 'HE'"},
    };
    return catalogos;
}

QString SentenciaDe(const Catalogo &catalogo, const QString &condicion)
{
    QString sql = "SELECT " + catalogo.columnaClave + " AS Clave, " + catalogo.columnaDescripcion
                  + " AS Descripcion FROM " + catalogo.tabla + " WHERE Es_Cve_Estado <> 'BA' AND Es_Cve_Estado <> 'CA'";
    for (const QString &otra : {catalogo.condicion, condicion})
        if (!otra.isEmpty())
            sql += " AND " + otra;
    return sql + " ORDER BY " + catalogo.columnaClave;
}

} // namespace

const Catalogo &CatalogoPorCodigo(const QString &codigo)
{
    const auto &todos = Todos();
    const auto hallado =
        std::find_if(todos.begin(), todos.end(), [&](const Catalogo &c) { return c.codigo == codigo; });
    if (hallado == todos.end())
        throw ErrorEjecucion(errores::ElementoNoEncontrado, "No existe el catálogo " + codigo);
    return *hallado;
}

QString DescripcionDeCatalogo(Conexion &conexion, const QString &codigo, const QString &clave)
{
    const Catalogo &catalogo = CatalogoPorCodigo(codigo);
    const auto fila = conexion.Execute(SentenciaDe(catalogo, catalogo.columnaClave + " = " + Literal(clave)));
    return fila.Eof() ? QString() : fila["Descripcion"];
}

// Compared here, not in the statement: the engines do not fold accented letters alike.
QList<QPair<QString, QString>> BuscarEntradas(Conexion &conexion, const QString &codigo, const QString &texto,
                                              const QString &filtro, int maximo)
{
    QList<QPair<QString, QString>> entradas;
    auto filas = conexion.Execute(SentenciaDe(CatalogoPorCodigo(codigo), filtro));
    for (; !filas.Eof() && (maximo == 0 || entradas.size() < maximo); filas.MoveNext()) {
        const QString clave = filas["Clave"];
        const QString descripcion = filas["Descripcion"];
        if (clave.contains(texto, Qt::CaseInsensitive) || descripcion.contains(texto, Qt::CaseInsensitive))
            entradas.append({clave, descripcion});
    }
    return entradas;
}

} // namespace qvx
