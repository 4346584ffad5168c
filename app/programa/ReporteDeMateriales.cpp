#include "app/programa/PartesDeReporte.h"
#include "app/programa/Reportes.h"

#include <QSet>
#include <iterator>
#include <map>
#include <tuple>

namespace programa
{

namespace
{

using impreso::Bloque;
using impreso::Documento;

constexpr qsizetype MaximoDeFolios = 30; // that a cell says one by one

// A product in one unit and for one expense type, with where it is used.
struct Material {
    int producto = 0;
    QString unidad;
    Cantidad cantidad;
    Cantidad costo;
    Cantidad costoHoy;
    QStringList folios;
    int ultimo = -1; // service that was added
};
using LlaveDeMaterial = std::tuple<QString, QString, QString>; // expense type, product, unit
using Materiales = std::map<LlaveDeMaterial, Material>;

void AgregarMaterial(Materiales &materiales, const PlanMedido &medido, const lectura::Linea &linea, qint64 veces)
{
    const lectura::Producto &producto = medido.lineas.productos.at(linea.producto);
    Material &material = materiales[{linea.gasto, producto.clave, linea.unidad}];
    const Cantidad cantidad = Cantidad::De(linea.cantidad);
    material.producto = linea.producto;
    material.unidad = linea.unidad;
    material.cantidad += cantidad * veces;
    material.costo += Cantidad::De(linea.importe) * veces;
    material.costoHoy += cantidad * Cantidad::De(producto.costo) * veces;
    if (material.ultimo != linea.servicio) // a service's lines stand together
        material.folios.append(medido.plan.servicios.at(linea.servicio).leido.folio);
    material.ultimo = linea.servicio;
}

QString DondeSeUsa(const QStringList &folios)
{
    const QString dichos = folios.mid(0, MaximoDeFolios).join(", ");
    return folios.size() <= MaximoDeFolios ? dichos
                                           : dichos + " y otros " + QString::number(folios.size() - MaximoDeFolios);
}

QStringList CeldasDe(const PlanMedido &medido, const Material &material)
{
    const lectura::Producto &producto = medido.lineas.productos.at(material.producto);
    return {producto.clave,
            producto.descripcion
                + (producto.activo       ? ""
                   : producto.enCatalogo ? " (de baja)"
                                         : " (no está en el catálogo)"),
            material.unidad,
            material.cantidad.Texto(),
            Pesos(material.costo),
            Pesos(material.costoHoy),
            DondeSeUsa(material.folios)};
}

void PonerTotal(Documento &documento, const QString &nombre, const Cantidad &costo, const Cantidad &costoHoy)
{
    Bloque &fila = documento.Fila({"", nombre, "", "", Pesos(costo), Pesos(costoHoy), ""});
    fila.negrita = true;
    fila.sombra = true;
}

// By expense type, each with its subtotal, and the total. soloTotales: without the products.
void PonerPorGasto(Documento &documento, const PlanMedido &medido, const Materiales &materiales, bool soloTotales,
                   bool paraSurtir)
{
    Cantidad costo;
    Cantidad costoHoy;
    for (auto primero = materiales.begin(); primero != materiales.end();) {
        const QString gasto = std::get<0>(primero->first);
        const QString nombre = medido.lineas.NombreDeGasto(gasto);
        if (!soloTotales) {
            Bloque &tramo = documento.Tramo(nombre);
            tramo.negrita = true;
            tramo.conLoQueSigue = true;
        }
        Cantidad suyo;
        Cantidad suyoHoy;
        for (; primero != materiales.end() && std::get<0>(primero->first) == gasto; ++primero) {
            suyo += primero->second.costo;
            suyoHoy += primero->second.costoHoy;
            if (!soloTotales) {
                Bloque &fila = documento.Fila(CeldasDe(medido, primero->second));
                fila.casilla = paraSurtir;
                fila.conLoQueSigue = std::next(primero) == materiales.end()
                                     || std::get<0>(std::next(primero)->first) != gasto; // its subtotal
            }
        }
        PonerTotal(documento, (soloTotales ? "" : "Subtotal ") + nombre, suyo, suyoHoy);
        documento.bloques.last().conLoQueSigue = primero == materiales.end(); // the total
        costo += suyo;
        costoHoy += suyoHoy;
    }
    PonerTotal(documento, "TOTAL", costo, costoHoy);
}

void PonerPorParte(Documento &documento, const PlanMedido &medido, const QHash<QString, Materiales> &dePartes)
{
    QSet<QString> vistas;
    const auto poner = [&](const QString &titulo, int nivel, const Materiales &materiales) {
        Bloque &tramo = documento.Tramo(titulo);
        tramo.nivel = nivel;
        tramo.negrita = true;
        tramo.conLoQueSigue = true;
        for (const auto &[llave, material] : materiales)
            documento.Fila(CeldasDe(medido, material));
    };
    RecorrerPartes(medido.plan.arbol, [&](const qvx::Parte &parte, int nivel, const QString &titulo) {
        if (!dePartes.contains(parte.clave))
            return;
        vistas.insert(parte.clave);
        poner(titulo, nivel, dePartes.value(parte.clave));
    });
    for (auto parte = dePartes.cbegin(); parte != dePartes.cend(); ++parte)
        if (!vistas.contains(parte.key()))
            poner("FUERA DEL ÁRBOL: " + parte.key(), 0, parte.value());
    Bloque &tramo = documento.Tramo("Totales por tipo de gasto");
    tramo.negrita = true;
    tramo.sombra = true;
    tramo.conLoQueSigue = true;
}

} // namespace

QList<qint64> UnaRonda(const PlanMedido &medido)
{
    QList<qint64> veces;
    for (const Entrada &entrada : medido.entradas)
        veces.append(entrada.exclusion.isEmpty() ? 1 : 0);
    return veces;
}

QList<qint64> VecesDe(const PlanMedido &medido, const Programa &programa, const QList<int> &filas)
{
    QList<qint64> veces(medido.entradas.size(), 0);
    for (const int cual : filas) {
        const Fila &fila = programa.filas.at(cual);
        veces[fila.servicio] += qint64(fila.Cuentan()) * programa.datos.equipos;
    }
    return veces;
}

impreso::Documento ReporteDeMateriales(const PlanMedido &medido, const QList<qint64> &veces, const QString &titulo,
                                       const Encargo &encargo, bool paraSurtir)
{
    Documento documento = DocumentoDe(medido, encargo, titulo);
    documento.orientacion = QPageLayout::Landscape;
    documento.AgregarTabla({{"Producto", 13},
                            {"Descripción", 30},
                            {"Unidad", 7},
                            {"Cantidad", 10, true},
                            {"Costo", 12, true},
                            {"Costo de hoy", 12, true},
                            {"Servicios que lo usan", 23}});
    Materiales todos;
    QHash<QString, Materiales> dePartes;
    for (const lectura::Linea &linea : medido.lineas.lineas) {
        const qint64 suyas = veces.at(linea.servicio);
        if (linea.clase != lectura::Linea::Clase::Refaccion || suyas == 0)
            continue;
        AgregarMaterial(todos, medido, linea, suyas);
        if (encargo.porParte)
            AgregarMaterial(dePartes[medido.plan.servicios.at(linea.servicio).leido.parte], medido, linea, suyas);
    }
    if (encargo.porParte && !todos.empty())
        PonerPorParte(documento, medido, dePartes);
    if (todos.empty())
        documento.Tramo("No se necesitan refacciones en lo que se eligió.");
    else
        PonerPorGasto(documento, medido, todos, encargo.porParte, paraSurtir);
    return documento;
}

} // namespace programa
