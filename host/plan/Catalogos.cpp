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
        {"PRODUCTO_MANO_OBRA", "Mano de obra", "Producto", "Pr_Cve_Producto", "Pr_Descripcion", "Pr_Clase = 'MO'",
         true},
        {"PRODUCTO_REFACCION", "Refacciones", "Producto", "Pr_Cve_Producto", "Pr_Descripcion", "Pr_Clase = 'RE'", true},
        {"PRODUCTO_HERRAMIENTA", "Herramientas", "Producto", "Pr_Cve_Producto", "Pr_Descripcion", "Pr_Clase = 'HE'",
         true},
    };
    return catalogos;
}

QString SentenciaDe(const Catalogo &catalogo, const QString &condicion, const QString &otrasColumnas = {})
{
    QString sql = "SELECT " + catalogo.columnaClave + " AS Clave, " + catalogo.columnaDescripcion + " AS Descripcion"
                  + otrasColumnas + " FROM " + catalogo.tabla
                  + " WHERE Es_Cve_Estado <> 'BA' AND Es_Cve_Estado <> 'CA'";
    for (const QString &otra : {catalogo.condicion, condicion})
        if (!otra.isEmpty())
            sql += " AND " + otra;
    return sql + " ORDER BY " + catalogo.columnaClave;
}

} // namespace

QStringList Catalogo::Titulos() const
{
    return deProductos ? QStringList{"Clave", "Descripción", "Unidad", "Costo"} : QStringList{"Clave", "Descripción"};
}

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

QList<EntradaCatalogo> LeerEntradas(Conexion &conexion, const QString &codigo, const QString &filtro)
{
    const Catalogo &catalogo = CatalogoPorCodigo(codigo);
    const QString columnas =
        catalogo.deProductos ? ", Pr_Unidad_Control_1 AS Unidad, Pr_Costo_Estandar AS Costo" : QString();
    QList<EntradaCatalogo> entradas;
    for (auto filas = conexion.Execute(SentenciaDe(catalogo, filtro, columnas)); !filas.Eof(); filas.MoveNext()) {
        EntradaCatalogo entrada{filas["Clave"], filas["Descripcion"], {}, 0};
        if (catalogo.deProductos) {
            entrada.unidad = filas["Unidad"];
            entrada.costo = filas.Numero("Costo");
        }
        entradas.append(entrada);
    }
    return entradas;
}

// Here, not in a statement: the engines do not fold accented letters alike.
QString Plegado(const QString &texto)
{
    QString plegado = texto.normalized(QString::NormalizationForm_D).toCaseFolded();
    plegado.removeIf([](QChar letra) { return letra.category() == QChar::Mark_NonSpacing; });
    return plegado;
}

} // namespace qvx
