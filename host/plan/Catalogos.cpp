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
        {"PRODUCTO_MANO_OBRA", "Mano de obra", "Producto", "Pr_Cve_Producto", "Pr_Descripcion", "MO"},
        {"PRODUCTO_REFACCION", "Refacciones", "Producto", "Pr_Cve_Producto", "Pr_Descripcion", "RE"},
        {"PRODUCTO_HERRAMIENTA", "Herramientas", "Producto", "Pr_Cve_Producto", "Pr_Descripcion", "HE"},
    };
    return catalogos;
}

QString SentenciaDe(const Catalogo &catalogo, const QString &condicion, const QString &otrasColumnas = {})
{
    QString sql = "SELECT " + catalogo.columnaClave + " AS Clave, " + catalogo.columnaDescripcion + " AS Descripcion"
                  + otrasColumnas + " FROM " + catalogo.tabla
                  + " WHERE Es_Cve_Estado <> 'BA' AND Es_Cve_Estado <> 'CA'";
    if (catalogo.DeProductos())
        sql += " AND Pr_Clase = " + Literal(catalogo.clase);
    if (!condicion.isEmpty())
        sql += " AND " + condicion;
    return sql + " ORDER BY " + catalogo.columnaClave;
}

template <class Condicion>
const Catalogo &Hallar(Condicion &&condicion, const QString &nombre)
{
    const auto &todos = Todos();
    const auto hallado = std::find_if(todos.begin(), todos.end(), condicion);
    if (hallado == todos.end())
        throw ErrorEjecucion(errores::ElementoNoEncontrado, "No existe el catálogo " + nombre);
    return *hallado;
}

} // namespace

QStringList Catalogo::Titulos() const
{
    return DeProductos() ? QStringList{"Clave", "Descripción", "Unidad", "Costo"} : QStringList{"Clave", "Descripción"};
}

const Catalogo &CatalogoPorCodigo(const QString &codigo)
{
    return Hallar([&](const Catalogo &c) { return c.codigo == codigo; }, codigo);
}

const QString &CodigoDeCatalogo(const QString &tabla, const QString &clase)
{
    return Hallar([&](const Catalogo &c) { return c.tabla == tabla && c.clase == clase; }, tabla).codigo;
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
        catalogo.DeProductos() ? ", Pr_Unidad_Control_1 AS Unidad, Pr_Costo_Estandar AS Costo" : QString();
    QList<EntradaCatalogo> entradas;
    for (auto filas = conexion.Execute(SentenciaDe(catalogo, filtro, columnas)); !filas.Eof(); filas.MoveNext()) {
        EntradaCatalogo entrada{filas["Clave"], filas["Descripcion"], {}, 0};
        if (catalogo.DeProductos()) {
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
    if (std::all_of(texto.begin(), texto.end(), [](QChar letra) { return letra.unicode() < 0x80; }))
        return texto.toCaseFolded();
    QString plegado = texto.normalized(QString::NormalizationForm_D).toCaseFolded();
    plegado.removeIf([](QChar letra) { return letra.category() == QChar::Mark_NonSpacing; });
    return plegado;
}

} // namespace qvx
