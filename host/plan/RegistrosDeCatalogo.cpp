#include "plan/RegistrosDeCatalogo.h"

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "data/Transaccion.h"
#include "plan/Cambios.h"
#include "plan/Claves.h"

#include <algorithm>

namespace qvx
{

namespace
{

using Clase = ColumnaDeCatalogo::Clase;

constexpr int LargoDeClave = 20;
constexpr int LargoDeTexto = 250;
constexpr double NumeroMayor = 999999999;
constexpr int ClavesDeUnaEnUna = 20; // so many rows are cheaper asked for by their keys than with all others

ColumnaDeCatalogo Descripcion(const QString &nombre)
{
    return {nombre, "Descripción", Clase::Texto, {"Nombre", "Concepto", "Artículo", "Description", "Name"}};
}

QString ListaDeColumnas(const TablaDeCatalogo &tabla)
{
    QString lista = tabla.columnaClave;
    for (const ColumnaDeCatalogo &columna : tabla.columnas)
        lista += ", " + columna.nombre;
    return lista + ", Es_Cve_Estado";
}

RegistroDeCatalogo Registro(const TablaDeCatalogo &tabla, const Recordset &fila)
{
    RegistroDeCatalogo registro{SinBlancosAlFinal(fila.Texto(0)), {}, {}};
    const auto columnas = static_cast<int>(tabla.columnas.size());
    for (int i = 0; i < columnas; ++i)
        registro.valores.append(tabla.columnas.at(i).clase == Clase::Numero
                                    ? NumeroATexto(fila.Numero(tabla.columnas.at(i).nombre))
                                    : fila.Texto(i + 1));
    registro.estado = SinBlancosAlFinal(fila.Texto(columnas + 1));
    return registro;
}

QVariantList Valores(const TablaDeCatalogo &tabla, const RegistroDeCatalogo &registro)
{
    QVariantList valores;
    for (int i = 0; i < tabla.columnas.size(); ++i) {
        const QString &texto = registro.valores.at(i);
        valores.append(tabla.columnas.at(i).clase == Clase::Numero ? QVariant(TextoANumero(texto).value_or(0))
                                                                   : QVariant(texto));
    }
    return valores << registro.estado;
}

void LeerUsadas(Conexion &conexion, const TablaDeCatalogo &tabla, const QStringList &claves, QSet<QString> &usadas)
{
    for (const auto &[donde, columna] : tabla.usos) {
        if (claves.isEmpty())
            for (auto filas = conexion.Execute("SELECT DISTINCT " + columna + " FROM " + donde, {}); !filas.Eof();
                 filas.MoveNext())
                usadas.insert(SinBlancosAlFinal(filas.Texto(0)));
        for (const QString &clave : claves)
            if (!conexion.Execute("SELECT 1 AS Hay FROM " + donde + " WHERE " + columna + " = ? LIMIT 1", {clave})
                     .Eof())
                usadas.insert(SinBlancosAlFinal(clave));
    }
}

bool EsImprimible(const QString &texto)
{
    return texto.isValidUtf16()
           && std::all_of(texto.begin(), texto.end(), [](QChar c) { return c.isPrint() || c.isSurrogate(); });
}

QString ObjecionALaClave(const TablaDeCatalogo &tabla, const SituacionDeCatalogo &situacion, const QString &clave)
{
    if (clave.trimmed().isEmpty())
        return "Falta la clave.";
    if (clave.size() > LargoDeClave)
        return QString("La clave lleva hasta %1 caracteres.").arg(LargoDeClave);
    if (!EsImprimible(clave) || clave != clave.trimmed() || clave.contains(QLatin1Char('\'')))
        return "La clave lleva letras, cifras y signos, sin apóstrofo ni espacios en los extremos.";
    if (tabla.claveDeCifras && !std::all_of(clave.begin(), clave.end(), [](QChar c) { return c >= u'0' && c <= u'9'; }))
        return "La clave de un " + tabla.uno + " lleva solo cifras: los servicios no reconocen otras. "
               + "Ponga la suya en la descripción, que también se busca.";
    if (clave != ClaveConFormato(clave, situacion.mascara))
        return "Una clave de cifras se escribe " + ClaveConFormato(clave, situacion.mascara) + ".";
    const auto hallado = situacion.registros.constFind(clave);
    if (hallado == situacion.registros.constEnd())
        return {};
    return "La clave " + clave + " ya es de «" + hallado->Descripcion() + "»"
           + (hallado->estado == estado::Activo ? QString() : QString(", que está dado de baja"))
           + ": escriba otra, o edite ese registro.";
}

QString ObjecionAlNumero(const QString &texto)
{
    try {
        const auto numero = TextoANumero(texto);
        if (!numero)
            return "Se espera un número. Use punto para los decimales: 2.5";
        if (*numero < 0 || *numero > NumeroMayor)
            return "Se espera un número de 0 a " + NumeroConFormato(NumeroMayor, "#,##0") + ".";
        return {};
    } catch (const ErrorEjecucion &) { // past what a number holds
        return "El número es demasiado grande.";
    }
}

QString ObjecionAlValor(const ColumnaDeCatalogo &columna, const SituacionDeCatalogo &situacion, const QString &valor)
{
    switch (columna.clase) {
    case Clase::Texto:
        if (valor.trimmed().isEmpty())
            return "Falta la " + columna.titulo.toLower() + ".";
        if (valor.size() > LargoDeTexto || !EsImprimible(valor))
            return QString("La descripción es un renglón de hasta %1 caracteres.").arg(LargoDeTexto);
        return {};
    case Clase::Numero:
        return ObjecionAlNumero(valor);
    case Clase::ClaseDeProducto:
        return valor == "MO" || valor == "RE" || valor == "HE"
                   ? QString()
                   : QString("La clase es MO (mano de obra), RE (refacción) o HE (herramienta).");
    case Clase::Unidad:
        return situacion.unidades.contains(valor)
                   ? QString()
                   : "La unidad «" + valor + "» no está en el catálogo de unidades o está dada de baja.";
    }
    return {};
}

// A line holds its product's unit and is of its class: another one would make its amount wrong.
bool SeFija(Clase clase)
{
    return clase == Clase::ClaseDeProducto || clase == Clase::Unidad;
}

std::optional<Objecion> ObjetarValores(const TablaDeCatalogo &tabla, const SituacionDeCatalogo &situacion,
                                       const CambioDeCatalogo &cambio)
{
    for (int i = 0; i < tabla.columnas.size(); ++i) {
        const ColumnaDeCatalogo &columna = tabla.columnas.at(i);
        const QString &valor = cambio.despues->valores.at(i);
        if (cambio.antes && cambio.antes->valores.at(i) == valor)
            continue; // what was there before a rule was made stays
        if (const QString motivo = ObjecionAlValor(columna, situacion, valor); !motivo.isEmpty())
            return Objecion{i, motivo};
        if (cambio.antes && SeFija(columna.clase) && situacion.usadas.contains(cambio.Clave()))
            return Objecion{i, "La " + columna.titulo.toLower()
                                   + " ya no se cambia: hay renglones de planes con este producto, y sus importes "
                                     "quedarían mal. Dé de alta otro producto."};
    }
    return {};
}

[[noreturn]] void Rechazar(const TablaDeCatalogo &tabla, const QString &clave, const QString &motivo)
{
    throw ErrorEjecucion(errores::Datos, tabla.uno.left(1).toUpper() + tabla.uno.mid(1) + " " + clave + ": " + motivo);
}

// The others wait for its end.
void Apartar(Conexion &conexion, const QString &tabla)
{
    if (conexion.Execute("UPDATE Catalogo_Cambio SET Ca_Cambios = Ca_Cambios + 1 WHERE Ca_Tabla = ?", {tabla})
            .Afectadas()
        != 1)
        throw ErrorEjecucion(errores::Datos, "A la base de datos le falta el renglón del catálogo " + tabla + ".");
}

void RevisarQueSigueIgual(Conexion &conexion, const TablaDeCatalogo &tabla, const SituacionDeCatalogo &situacion,
                          const CambioDeCatalogo &cambio)
{
    const auto actual = situacion.registros.constFind(cambio.Clave());
    const bool esta = actual != situacion.registros.constEnd();
    if (!cambio.antes || (esta && *actual == *cambio.antes))
        return;
    Rechazar(tabla, cambio.Clave(),
             QuienCambio(conexion, tabla.nombre, cambio.Clave(), esta ? "lo cambió" : "lo eliminó")
                 + ", después de que usted lo leyó. No se guardó nada: actualice la lista y vuelva a hacer el cambio.");
}

void Escribir(Conexion &conexion, const TablaDeCatalogo &tabla, const CambioDeCatalogo &cambio)
{
    QStringList columnas;
    for (const ColumnaDeCatalogo &columna : tabla.columnas)
        columnas.append(columna.nombre);
    columnas.append("Es_Cve_Estado");
    const QString donde = " WHERE " + tabla.columnaClave + " = ?";
    if (!cambio.despues)
        conexion.Execute("DELETE FROM " + tabla.nombre + donde, {cambio.Clave()});
    else if (cambio.antes)
        conexion.Execute("UPDATE " + tabla.nombre + " SET " + columnas.join(" = ?, ") + " = ?" + donde,
                         Valores(tabla, *cambio.despues) << cambio.Clave());
    else
        conexion.Execute("INSERT INTO " + tabla.nombre + " (" + columnas.join(", ") + ", " + tabla.columnaClave
                             + ") VALUES (?" + QString(", ?").repeated(columnas.size()) + ")",
                         Valores(tabla, *cambio.despues) << cambio.Clave());
}

// The action of a change of state, "" when there is none.
QString Accion(const CambioDeCatalogo &cambio)
{
    if (!cambio.despues)
        return "Eliminación";
    if (!cambio.antes || cambio.antes->estado == cambio.despues->estado)
        return {};
    return cambio.despues->estado == estado::Activo ? "Reactivación" : "Baja";
}

} // namespace

int TablaDeCatalogo::Lugar(ColumnaDeCatalogo::Clase clase) const
{
    const auto hallada =
        std::find_if(columnas.begin(), columnas.end(), [&](const ColumnaDeCatalogo &c) { return c.clase == clase; });
    return hallada == columnas.end() ? -1 : static_cast<int>(hallada - columnas.begin());
}

const QList<TablaDeCatalogo> &TablasDeCatalogo()
{
    static const QStringList clave{"Código", "Codigo", "Cve", "ID", "Key", "No."};
    static const QList<TablaDeCatalogo> tablas{
        {"Tipo_Equipo",
         "Tipos de equipo",
         "tipo de equipo",
         "Te_Cve_Tipo_Equipo",
         "FTO_TIPO_EQUIPO",
         {Descripcion("Te_Descripcion")},
         clave + QStringList{"Tipo de equipo"},
         {{"Tipo_Equipo_Parte", "Te_Cve_Tipo_Equipo"},
          {"Plan_Mantenimiento", "Te_Cve_Tipo_Equipo"},
          {"Plan_Mantenimiento_Detalle", "Te_Cve_Tipo_Equipo"}}},
        {"Producto",
         "Productos",
         "producto",
         "Pr_Cve_Producto",
         "FTO_PRODUCTO",
         {Descripcion("Pr_Descripcion"),
          {"Pr_Clase", "Clase", Clase::ClaseDeProducto, {"Tipo", "Class"}},
          {"Pr_Unidad_Control_1", "Unidad", Clase::Unidad, {"U.M.", "UM", "Unidad de medida", "Unit"}},
          {"Pr_Costo_Estandar", "Costo", Clase::Numero, {"Costo estándar", "Costo unitario", "Precio", "Cost"}}},
         clave + QStringList{"Producto", "SKU", "Parte", "No. de parte", "Número de parte"},
         {{"Plan_Mantenimiento_Detalle", "Pr_Cve_Producto"}},
         true},
        {"Tipo_Gasto",
         "Tipos de gasto",
         "tipo de gasto",
         "Tg_Cve_Tipo_Gasto",
         "FTO_TIPO_GASTO",
         {Descripcion("Tg_Descripcion")},
         clave + QStringList{"Tipo de gasto"},
         {{"Plan_Mantenimiento_Detalle", "Pmd_Tipo_Gasto"}}},
        {"Tipo_Servicio",
         "Tipos de servicio",
         "tipo de servicio",
         "Ts_Cve_Tipo_Servicio",
         "FTO_TIPO_SERVICIO",
         {Descripcion("Ts_Descripcion")},
         clave + QStringList{"Tipo de servicio"},
         {{"Plan_Mantenimiento", "Ts_Cve_Tipo_Servicio"}}},
        {"Prioridad_Servicio",
         "Prioridades",
         "prioridad",
         "Ps_Cve_Prioridad",
         "FTO_PRIORIDAD_SERVICIO",
         {Descripcion("Ps_Descripcion")},
         clave + QStringList{"Prioridad"},
         {{"Plan_Mantenimiento", "Pm_Prioridad"}}},
        {"Unidad",
         "Unidades",
         "unidad",
         "Un_Cve_Unidad",
         "FTO_UNIDAD",
         {Descripcion("Un_Descripcion")},
         clave + QStringList{"Unidad", "U.M.", "UM"},
         {{"Plan_Mantenimiento", "Pm_Unidad_Lectura"},
          {"Plan_Mantenimiento_Detalle", "Pmd_Unidad"},
          {"Producto", "Pr_Unidad_Control_1"}}},
    };
    return tablas;
}

const TablaDeCatalogo *TablaDeCatalogoPorNombre(const QString &nombre)
{
    const auto &tablas = TablasDeCatalogo();
    const auto hallada = std::find_if(tablas.begin(), tablas.end(), [&](const TablaDeCatalogo &tabla) {
        return tabla.nombre.compare(nombre, Qt::CaseInsensitive) == 0;
    });
    return hallada == tablas.end() ? nullptr : &*hallada;
}

QList<RegistroDeCatalogo> LeerRegistros(Conexion &conexion, const TablaDeCatalogo &tabla)
{
    QList<RegistroDeCatalogo> registros;
    for (auto filas = conexion.Execute(
             "SELECT " + ListaDeColumnas(tabla) + " FROM " + tabla.nombre + " ORDER BY " + tabla.columnaClave, {});
         !filas.Eof(); filas.MoveNext())
        registros.append(Registro(tabla, filas));
    return registros;
}

SituacionDeCatalogo LeerSituacion(Conexion &conexion, const TablaDeCatalogo &tabla, const QStringList &claves)
{
    const bool unaAUna = !claves.isEmpty() && claves.size() <= ClavesDeUnaEnUna;
    SituacionDeCatalogo situacion;
    situacion.mascara = claves::Mascara(conexion, tabla.formato, "");
    if (unaAUna) {
        for (const QString &clave : claves) {
            const auto fila = conexion.Execute("SELECT " + ListaDeColumnas(tabla) + " FROM " + tabla.nombre + " WHERE "
                                                   + tabla.columnaClave + " = ?",
                                               {clave});
            if (!fila.Eof())
                situacion.registros.insert(SinBlancosAlFinal(clave), Registro(tabla, fila));
        }
    } else {
        const auto registros = LeerRegistros(conexion, tabla);
        situacion.registros.reserve(registros.size());
        for (const RegistroDeCatalogo &registro : registros)
            situacion.registros.insert(registro.clave, registro);
    }
    LeerUsadas(conexion, tabla, unaAUna ? claves : QStringList(), situacion.usadas);
    if (tabla.Lugar(Clase::Unidad) >= 0)
        for (auto filas =
                 conexion.Execute("SELECT Un_Cve_Unidad FROM Unidad WHERE Es_Cve_Estado = ?", {estado::Activo});
             !filas.Eof(); filas.MoveNext())
            situacion.unidades.insert(SinBlancosAlFinal(filas.Texto(0)));
    return situacion;
}

std::optional<Objecion> Objetar(const TablaDeCatalogo &tabla, const SituacionDeCatalogo &situacion,
                                const CambioDeCatalogo &cambio)
{
    if (!cambio.despues) {
        if (situacion.usadas.contains(cambio.Clave()))
            return Objecion{ObjecionDeClave, "No se elimina: hay planes o catálogos que lo usan. Puede darlo de baja."};
        return {};
    }
    if (!cambio.antes) {
        if (const QString motivo = ObjecionALaClave(tabla, situacion, cambio.despues->clave); !motivo.isEmpty())
            return Objecion{ObjecionDeClave, motivo};
    } else if (cambio.despues->clave != cambio.antes->clave) {
        return Objecion{ObjecionDeClave, "Una clave no se cambia: dé de alta otra y reemplace esta."};
    }
    const QString &nuevo = cambio.despues->estado;
    if (nuevo != estado::Activo && nuevo != estado::Baja && !(cambio.antes && cambio.antes->estado == nuevo))
        return Objecion{ObjecionDeEstado, "El estado es AC (activo) o BA (baja)."};
    return ObjetarValores(tabla, situacion, cambio);
}

QString ClavePropuesta(const SituacionDeCatalogo &situacion)
{
    constexpr int CifrasDeUnNumero = 18;
    qint64 mayor = -1;
    for (auto i = situacion.registros.keyBegin(); i != situacion.registros.keyEnd(); ++i) {
        bool esNumero = false;
        const qint64 numero = i->size() <= CifrasDeUnNumero ? i->toLongLong(&esNumero) : 0;
        if (esNumero)
            mayor = qMax(mayor, numero);
    }
    if (mayor < 0 && !situacion.registros.isEmpty())
        return {};
    return ClaveConFormato(QString::number(qMax<qint64>(mayor, 0) + 1), situacion.mascara);
}

void EscribirCambios(Conexion &conexion, const Firmante &firmante, const TablaDeCatalogo &tabla,
                     const QList<CambioDeCatalogo> &cambios)
{
    QStringList claves;
    for (const CambioDeCatalogo &cambio : cambios)
        claves.append(cambio.Clave());
    Transaccion transaccion(conexion);
    Apartar(conexion, tabla.nombre);
    if (tabla.Lugar(Clase::Unidad) >= 0)
        Apartar(conexion, "Unidad"); // none of those that are read goes meanwhile
    SituacionDeCatalogo situacion = LeerSituacion(conexion, tabla, claves);
    const Firmante ahora{firmante.operador, [fecha = firmante.fecha()] { return fecha; }};
    for (const CambioDeCatalogo &cambio : cambios) {
        RevisarQueSigueIgual(conexion, tabla, situacion, cambio);
        if (const auto objecion = Objetar(tabla, situacion, cambio))
            Rechazar(tabla, cambio.Clave(), objecion->motivo);
        Escribir(conexion, tabla, cambio);
        AnotarCambio(conexion, ahora, tabla.nombre, cambio.Clave());
        if (const QString accion = Accion(cambio); !accion.isEmpty())
            AnotarEstado(conexion, ahora, tabla.nombre, cambio.Clave(), accion);
        if (cambio.despues)
            situacion.registros.insert(cambio.Clave(), *cambio.despues);
        else
            situacion.registros.remove(cambio.Clave());
    }
    transaccion.Confirmar();
}

Derechos LeerDerechos(Conexion &conexion)
{
    if (conexion.SoloLectura())
        return {};
    const auto fila = conexion.Execute("SELECT De_Planes, De_Catalogos FROM Derecho", {});
    return {fila.Numero("De_Planes") != 0, fila.Numero("De_Catalogos") != 0};
}

} // namespace qvx
