#include "app/comparar/Fuentes.h"

#include "app/Textos.h"
#include "app/comparar/Previsto.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Momento.h"
#include "plan/Claves.h"
#include "plan/Historia.h"

#include <QDate>
#include <QFileInfo>

namespace comparar
{

namespace
{

constexpr int ProductosQueSeDicen = 10;

bool EsDocumento(const QString &texto)
{
    return texto.contains(QLatin1Char('/')) || texto.endsWith(".xml", Qt::CaseInsensitive) || QFileInfo(texto).isFile();
}

// nullopt for a key that no equipment type has, whatever its state.
QString NombreDeTipo(qvx::Conexion &conexion, const QString &clave)
{
    const auto fila = conexion.Execute("SELECT Te_Descripcion FROM Tipo_Equipo WHERE Te_Cve_Tipo_Equipo = ?", {clave});
    if (fila.Eof())
        qvx::Rechazar("El tipo de equipo " + clave + " no existe.");
    return fila.Texto(0);
}

QStringList AvisosDe(const Previsto &previsto)
{
    if (previsto.desconocidos.isEmpty())
        return {};
    QStringList dichos = previsto.desconocidos.mid(0, ProductosQueSeDicen);
    if (previsto.desconocidos.size() > ProductosQueSeDicen)
        dichos.append("…");
    return {"No entran al plan " + Cuantos(previsto.renglonesFuera, "renglón", "renglones")
            + " del documento, porque sus productos no están en el catálogo: " + dichos.join(", ") + "."};
}

Lado LeerDocumento(qvx::Conexion &conexion, Fuente fuente)
{
    Previsto previsto = PreverImportacion(conexion, fuente.archivo);
    fuente.tipoEquipo = previsto.filas.tipoEquipo;
    const QStringList avisos = AvisosDe(previsto);
    const QString nombre = NombreDeTipo(conexion, fuente.tipoEquipo);
    return {fuente, nombre, std::move(previsto.filas), avisos, {}};
}

// A service is itself by its folio in the history of its plan; not where an import has numbered it.
bool DeUnaHistoria(const Lado &una, const Lado &otra)
{
    return una.fuente.tipoEquipo == otra.fuente.tipoEquipo && una.fuente.clase != Fuente::Clase::Documento
           && otra.fuente.clase != Fuente::Clase::Documento;
}

Comparados Juntar(qvx::Conexion &conexion, Lado una, Lado otra)
{
    const NombresDeCatalogos nombres = LeerNombres(conexion);
    Comparacion comparacion = Comparar(una.filas, otra.filas, nombres, DeUnaHistoria(una, otra));
    return {std::move(una), std::move(otra), std::move(comparacion)};
}

} // namespace

Fuente Fuente::Leer(qvx::Conexion &conexion, const QString &texto)
{
    Fuente fuente;
    if (EsDocumento(texto)) {
        fuente.clase = Clase::Documento;
        fuente.archivo = texto;
        return fuente;
    }
    fuente.tipoEquipo = qvx::ClaveConFormato(texto.section(QLatin1Char('@'), 0, 0),
                                             qvx::claves::Mascara(conexion, "FTO_TIPO_EQUIPO", ""));
    const QString cuando = texto.section(QLatin1Char('@'), 1);
    if (!texto.contains(QLatin1Char('@')))
        return fuente;
    bool numero = false;
    fuente.operacion = cuando.toLongLong(&numero);
    fuente.dia = cuando;
    fuente.clase = numero ? Clase::AntesDe : Clase::AlFinDe;
    if (!numero && !QDate::fromString(cuando, Qt::ISODate).isValid())
        qvx::Rechazar("«" + texto
                      + "» no dice un plan: detrás de la arroba va el número de una operación, o un día como "
                        "2026-03-14.");
    return fuente;
}

QString Fuente::Titulo() const
{
    switch (clase) {
    case Clase::AntesDe:
        return QString("%1 antes de la operación %2").arg(tipoEquipo, QString::number(operacion));
    case Clase::AlFinDe:
        return QString("%1 al terminar el %2").arg(tipoEquipo, dia);
    case Clase::Documento:
        return QFileInfo(archivo).fileName();
    default:
        return tipoEquipo;
    }
}

QString Lado::Titulo() const
{
    if (!titulo.isEmpty())
        return titulo;
    if (fuente.clase == Fuente::Clase::Documento)
        return QString("%1 %2, como lo dejaría el documento %3").arg(fuente.tipoEquipo, nombreTipo, fuente.Titulo());
    const QString cuando = fuente.Titulo().mid(fuente.tipoEquipo.size());
    return fuente.tipoEquipo + " " + nombreTipo + (cuando.isEmpty() ? QString() : "," + cuando);
}

Lado LeerLado(qvx::Conexion &conexion, const Fuente &fuente)
{
    if (fuente.clase == Fuente::Clase::Documento)
        return LeerDocumento(conexion, fuente);
    const QString nombre = NombreDeTipo(conexion, fuente.tipoEquipo);
    qvx::FilasDelPlan filas =
        fuente.clase == Fuente::Clase::AntesDe   ? qvx::PlanAntesDe(conexion, fuente.tipoEquipo, fuente.operacion)
        : fuente.clase == Fuente::Clase::AlFinDe ? qvx::PlanAlFinDe(conexion, fuente.tipoEquipo, fuente.dia)
                                                 : qvx::LeerFilas(conexion, fuente.tipoEquipo);
    return {fuente, nombre, std::move(filas), {}, {}};
}

Comparados CompararFuentes(qvx::Conexion &conexion, const Fuente &una, const Fuente &otra)
{
    const qvx::Momento momento(conexion);
    Lado antes = LeerLado(conexion, una);
    return Juntar(conexion, std::move(antes), LeerLado(conexion, otra));
}

Comparados CompararFilas(qvx::Conexion &conexion, qvx::FilasDelPlan antes, qvx::FilasDelPlan despues,
                         const QString &tituloDespues)
{
    Fuente hoy;
    hoy.tipoEquipo = antes.tipoEquipo;
    const QString nombre = NombreDeTipo(conexion, hoy.tipoEquipo);
    return Juntar(conexion, {hoy, nombre, std::move(antes), {}, {}},
                  {hoy, nombre, std::move(despues), {}, hoy.tipoEquipo + " " + nombre + ", " + tituloDespues});
}

Comparados CompararConDocumento(qvx::Conexion &conexion, const QString &archivo)
{
    const qvx::Momento momento(conexion);
    Fuente documento;
    documento.clase = Fuente::Clase::Documento;
    documento.archivo = archivo;
    Lado despues = LeerLado(conexion, documento);
    Fuente hoy;
    hoy.tipoEquipo = despues.fuente.tipoEquipo;
    Lado antes = LeerLado(conexion, hoy);
    return Juntar(conexion, std::move(antes), std::move(despues));
}

} // namespace comparar
