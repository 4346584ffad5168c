#include "plan/Busqueda.h"

#include "data/Conexion.h"
#include "data/Recordset.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"

#include <QHash>
#include <QStringView>
#include <QVariantList>
#include <algorithm>

namespace qvx
{

namespace
{

constexpr int FilasPorVez = 500;
constexpr int ClavesPorVez = 8; // one shape of statement for any number of keys

using Descripciones = QHash<QString, QString>;

// What the engines can compare by themselves: they know case, of the letters without an accent at least, and no
// accents. It finds what is searched for and more; the rows that come are compared again.
QString Patron(const QString &palabra)
{
    QString patron = palabra;
    for (QChar &letra : patron)
        if (QStringView(u"aeiounc%_\\").contains(letra) || letra.unicode() >= 0x80)
            letra = u'_';
    return u'%' + patron + u'%';
}

bool EsNumero(const QString &palabra)
{
    return std::all_of(palabra.begin(), palabra.end(), [](QChar letra) { return letra >= u'0' && letra <= u'9'; });
}

Descripciones DescripcionesDe(Conexion &conexion, const QString &sql, const QVariantList &valores = {})
{
    Descripciones todas;
    for (auto fila = conexion.Execute(sql, valores); !fila.Eof(); fila.MoveNext())
        todas.insert(SinBlancosAlFinal(fila.Texto(0)), fila.Texto(1));
    return todas;
}

QString ClaveEn(const Recordset &fila, const QString &nombre)
{
    return SinBlancosAlFinal(fila[nombre]);
}

Hallazgo ConClaves(const Recordset &fila, Hallazgo::Clase clase, Rutas &rutas)
{
    Hallazgo hallazgo;
    hallazgo.clase = clase;
    hallazgo.tipoEquipo = ClaveEn(fila, "Te_Cve_Tipo_Equipo");
    hallazgo.nombreTipo = fila["Te_Descripcion"];
    hallazgo.parte = ClaveEn(fila, "Tep_ID");
    hallazgo.ruta = rutas.De(hallazgo.tipoEquipo, hallazgo.parte);
    hallazgo.estado = ClaveEn(fila, "Es_Cve_Estado");
    return hallazgo;
}

const QString DeServicio =
    "SELECT s.Te_Cve_Tipo_Equipo, t.Te_Descripcion, s.Tep_ID, s.Pm_ID, s.Ts_Cve_Tipo_Servicio, s.Es_Cve_Estado "
    "FROM Plan_Mantenimiento s "
    "LEFT JOIN Tipo_Equipo t ON t.Te_Cve_Tipo_Equipo = s.Te_Cve_Tipo_Equipo WHERE ";
const QString EnOrden = " ORDER BY s.Te_Cve_Tipo_Equipo, s.Pm_ID LIMIT ?";

} // namespace

PalabrasBuscadas::PalabrasBuscadas(const QString &texto)
    : palabras(Plegado(texto).simplified().split(u' ', Qt::SkipEmptyParts))
{
}

bool PalabrasBuscadas::Estan(const QString &texto) const
{
    const QString plegado = Plegado(texto);
    return std::all_of(palabras.begin(), palabras.end(),
                       [&](const QString &palabra) { return plegado.contains(palabra); });
}

Busqueda::Busqueda(Conexion &conexion_, const PalabrasBuscadas &palabras_, const QString &tipoEquipo_, int maximo_)
    : conexion(conexion_), palabras(palabras_), tipoEquipo(tipoEquipo_), maximo(maximo_), rutas(conexion_)
{
}

QString Busqueda::YDelTipo(const QString &tabla) const
{
    return tipoEquipo.isEmpty() ? QString() : tabla + ".Te_Cve_Tipo_Equipo = ? AND ";
}

// Read in portions, each from where the one before ended: the engine's comparison may let through what is none.
QList<Hallazgo> Busqueda::Partes()
{
    QList<Hallazgo> hallados;
    if (palabras.Vacias())
        return hallados;
    QString condicion = YDelTipo("p");
    QVariantList valores;
    if (!tipoEquipo.isEmpty())
        valores << tipoEquipo;
    for (const QString &palabra : palabras.Todas()) {
        condicion += "(p.Tep_Descripcion LIKE ? OR p.Tep_ID LIKE ?) AND ";
        valores << Patron(palabra) << Patron(palabra);
    }
    const QString sql = "SELECT p.Te_Cve_Tipo_Equipo, t.Te_Descripcion, p.Tep_ID, p.Tep_Descripcion, p.Es_Cve_Estado "
                        "FROM Tipo_Equipo_Parte p "
                        "LEFT JOIN Tipo_Equipo t ON t.Te_Cve_Tipo_Equipo = p.Te_Cve_Tipo_Equipo WHERE "
                        + condicion
                        + "(p.Te_Cve_Tipo_Equipo > ? OR (p.Te_Cve_Tipo_Equipo = ? AND p.Tep_ID > ?)) "
                          "ORDER BY p.Te_Cve_Tipo_Equipo, p.Tep_ID LIMIT ?";
    QString tipo(""); // not null, which nothing comes after
    QString parte("");
    for (int leidas = FilasPorVez; leidas == FilasPorVez && hallados.size() < maximo;) {
        leidas = 0;
        auto fila = conexion.Execute(sql, valores + QVariantList{tipo, tipo, parte, FilasPorVez});
        for (; !fila.Eof(); fila.MoveNext(), ++leidas) {
            tipo = fila["Te_Cve_Tipo_Equipo"];
            parte = fila["Tep_ID"];
            const QString texto = fila["Tep_Descripcion"];
            if (hallados.size() >= maximo || !palabras.Estan(SinBlancosAlFinal(parte) + u' ' + texto))
                continue;
            hallados.append(ConClaves(fila, Hallazgo::Clase::Parte, rutas));
            hallados.last().texto = texto;
        }
    }
    return hallados;
}

// Numbers stand for folios, unless a service type has them in its name; the other words name the service type.
QList<Hallazgo> Busqueda::Servicios()
{
    QList<Hallazgo> hallados;
    if (palabras.Vacias())
        return hallados;
    const Descripciones tipos =
        DescripcionesDe(conexion, "SELECT Ts_Cve_Tipo_Servicio, Ts_Descripcion FROM Tipo_Servicio");
    QStringList numeros;
    QStringList nombres;
    for (const QString &palabra : palabras.Todas())
        (EsNumero(palabra) ? numeros : nombres).append(palabra);
    const auto buscar = [&](const QString &condicion, const QVariantList &claves, const QStringList &folios) {
        QVariantList valores;
        if (!tipoEquipo.isEmpty())
            valores << tipoEquipo;
        valores << claves;
        QString todas = YDelTipo("s") + condicion;
        for (const QString &folio : folios) {
            todas += "s.Pm_ID LIKE ? AND ";
            valores << u'%' + folio + u'%';
        }
        valores << static_cast<int>(maximo - hallados.size());
        for (auto fila = conexion.Execute(DeServicio + todas + "1 = 1" + EnOrden, valores); !fila.Eof();
             fila.MoveNext()) {
            Hallazgo hallazgo = ConClaves(fila, Hallazgo::Clase::Servicio, rutas);
            hallazgo.folio = ClaveEn(fila, "Pm_ID");
            hallazgo.texto = tipos.value(ClaveEn(fila, "Ts_Cve_Tipo_Servicio"));
            hallados.append(hallazgo);
        }
    };
    if (nombres.isEmpty())
        buscar({}, {}, numeros);
    const auto deTipos = [&](const QStringList &queDicen, const QStringList &folios) {
        const PalabrasBuscadas buscadas(queDicen.join(u' '));
        QStringList claves;
        for (auto tipo = tipos.begin(); tipo != tipos.end(); ++tipo)
            if (buscadas.Estan(tipo.value()))
                claves.append(tipo.key());
        std::sort(claves.begin(), claves.end());
        for (qsizetype desde = 0; desde < claves.size() && hallados.size() < maximo; desde += ClavesPorVez) {
            QVariantList valores;
            for (int i = 0; i < ClavesPorVez; ++i)
                valores << claves.at(qMin(desde + i, claves.size() - 1));
            buscar("s.Ts_Cve_Tipo_Servicio IN (?, ?, ?, ?, ?, ?, ?, ?) AND ", valores, folios);
        }
    };
    if (!nombres.isEmpty())
        deTipos(nombres, numeros);
    if (!numeros.isEmpty() && hallados.isEmpty())
        deTipos(palabras.Todas(), {});
    return hallados;
}

QList<Hallazgo> Busqueda::Productos()
{
    QList<Hallazgo> hallados;
    if (palabras.Vacias())
        return hallados;
    QStringList claves;
    QString cuales = "SELECT Pr_Cve_Producto, Pr_Descripcion FROM Producto WHERE 1 = 1";
    QVariantList patrones;
    for (const QString &palabra : palabras.Todas()) {
        cuales += " AND (Pr_Descripcion LIKE ? OR Pr_Cve_Producto LIKE ?)";
        patrones << Patron(palabra) << Patron(palabra);
    }
    const Descripciones productos = DescripcionesDe(conexion, cuales, patrones);
    for (auto producto = productos.begin(); producto != productos.end(); ++producto)
        if (palabras.Estan(producto.key() + u' ' + producto.value()))
            claves.append(producto.key());
    std::sort(claves.begin(), claves.end());
    const QString sql =
        "SELECT d.Te_Cve_Tipo_Equipo, t.Te_Descripcion, d.Tep_ID, d.Pm_ID, d.Pr_Cve_Producto, s.Es_Cve_Estado "
        "FROM Plan_Mantenimiento_Detalle d "
        "LEFT JOIN Tipo_Equipo t ON t.Te_Cve_Tipo_Equipo = d.Te_Cve_Tipo_Equipo "
        "LEFT JOIN Plan_Mantenimiento s ON s.Te_Cve_Tipo_Equipo = d.Te_Cve_Tipo_Equipo AND s.Pm_ID = d.Pm_ID WHERE "
        + YDelTipo("d")
        + "d.Pr_Cve_Producto IN (?, ?, ?, ?, ?, ?, ?, ?) ORDER BY d.Te_Cve_Tipo_Equipo, d.Pm_ID, d.Pmd_ID LIMIT ?";
    for (qsizetype desde = 0; desde < claves.size() && hallados.size() < maximo; desde += ClavesPorVez) {
        QVariantList valores;
        if (!tipoEquipo.isEmpty())
            valores << tipoEquipo;
        for (int i = 0; i < ClavesPorVez; ++i)
            valores << claves.at(qMin(desde + i, claves.size() - 1));
        valores << static_cast<int>(maximo - hallados.size());
        for (auto fila = conexion.Execute(sql, valores); !fila.Eof(); fila.MoveNext()) {
            Hallazgo hallazgo = ConClaves(fila, Hallazgo::Clase::Producto, rutas);
            const QString clave = ClaveEn(fila, "Pr_Cve_Producto");
            hallazgo.folio = ClaveEn(fila, "Pm_ID");
            hallazgo.texto = clave + u' ' + productos.value(clave);
            hallados.append(hallazgo);
        }
    }
    return hallados;
}

} // namespace qvx
