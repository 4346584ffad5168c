#include "app/comparar/Previsto.h"

#include "component/Esquema.h"
#include "component/Lineas.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "frmKT580/PlanXml.h"
#include "plan/Claves.h"
#include "plan/RegistrosDeCatalogo.h"
#include "system/UnidadC.h"
#include "xml/EsquemaXml.h"

#include <QHash>
#include <QSet>
#include <cmath>
#include <optional>

namespace comparar
{

namespace
{

using qvx::Elemento;
using qvx::FilaDelPlan;
using qvx::Rechazar;

constexpr int ColumnasDeFirma = 6;

[[noreturn]] void RechazarDocumento(const QList<qvx::ErrorXml> &errores)
{
    QString motivo = "El documento no cumple con el formato del mantenimiento.";
    if (!errores.isEmpty())
        motivo += " " + errores.constFirst().Texto() + ".";
    if (errores.size() > 1)
        motivo += QString(" Hay otros %1 errores: --validar los dice todos.").arg(errores.size() - 1);
    Rechazar(motivo);
}

struct Articulo {
    QString unidad;
    double costo = 0;
};

// The import, step by step, with rows in the place of statements.
class Importacion
{
public:
    Importacion(qvx::Conexion &conexion_, const QString &tipo_)
        : conexion(conexion_)
        , tipo(tipo_)
        , mascaraDeFolio(qvx::claves::Mascara(conexion, "FTO_PLAN_MANTENIMIENTO", qvx::claves::Raiz))
        , mascaraDeLinea(qvx::claves::Mascara(conexion, "FTO_PLAN_MANTENIMIENTO_DETALLE", qvx::claves::Raiz))
    {
        previsto.filas.tipoEquipo = qvx::SinBlancosAlFinal(tipo);
    }

    Previsto Hacer(const Elemento &raiz)
    {
        Partes(raiz, qvx::claves::Raiz);
        qvx::OrdenarFilas(previsto.filas);
        return std::move(previsto);
    }

private:
    void Partes(const Elemento &elemento, const QString &padre)
    {
        for (const Elemento &hijo : elemento.Hijos()) {
            if (hijo.Nombre() == "TipoServicio")
                Servicio(hijo, elemento.Atributo(planXml::Id));
            if (hijo.Nombre() != "Parte")
                continue;
            const QString clave = hijo.Atributo(planXml::Id);
            if (!qvx::claves::DejaSiguiente(clave))
                Rechazar("Después de la clave de la parte " + clave + " no queda número para otra parte.");
            const QString sinBlancos = qvx::SinBlancosAlFinal(clave);
            if (claves.contains(sinBlancos))
                Rechazar("El documento tiene dos partes con la clave " + clave + ".");
            claves.insert(sinBlancos);
            previsto.filas.partes.append(SinFirma(
                {tipo, Citado(clave), padre, Citado(hijo.Atributo(planXml::Descripcion)), qvx::estado::Activo}));
            Partes(hijo, clave);
        }
    }

    void Servicio(const Elemento &servicio, const QString &parte)
    {
        const QString folio = Siguiente(++folios, mascaraDeFolio);
        const auto valor = [&](const char *campo) { return Citado(planXml::Valor(servicio, campo)); };
        const auto numero = [&](const char *campo) { return Guardado(Numero(planXml::Valor(servicio, campo))); };
        const double duracion = numero("Pm_Tiempo_Estimado");
        const QString conParo = valor("Pm_Requiere_Paro");
        previsto.filas.servicios.append(
            SinFirma({tipo, Citado(parte), folio, valor("Ts_Cve_Tipo_Servicio"), numero("Pm_Frecuencia"),
                      numero("Pm_Lectura"), valor("Pm_Unidad_Lectura"), numero("Pm_Precio"), duracion,
                      valor("Pm_Prioridad"), conParo, conParo == "SI" ? duracion : 0.0, qvx::estado::Activo}));
        int lineas = 0;
        for (const Elemento &grupo : servicio.Hijos())
            for (const ClaseDeLinea &clase : ClasesDeLinea)
                if (grupo.Nombre() == clase.grupo)
                    for (const Elemento &linea : grupo.Hijos())
                        Linea(linea, clase, parte, folio, lineas);
    }

    // lineas: how many the service has already.
    void Linea(const Elemento &linea, const ClaseDeLinea &clase, const QString &parte, const QString &folio,
               int &lineas)
    {
        const QString producto = Citado(linea.Atributo(planXml::Id));
        const std::optional<Articulo> &articulo = DelCatalogo(producto);
        if (!articulo) {
            ++previsto.renglonesFuera;
            if (!previsto.desconocidos.contains(producto))
                previsto.desconocidos.append(producto);
            return;
        }
        const double cantidad = Numero(linea.Atributo(planXml::Cantidad));
        const double importe = articulo->costo * cantidad;
        if (!std::isfinite(importe))
            throw qvx::ErrorEjecucion(qvx::errores::Desbordamiento, "Desbordamiento");
        previsto.filas.lineas.append({tipo, parte, folio, Siguiente(++lineas, mascaraDeLinea),
                                      QString::fromLatin1(clase.tipo), producto, Guardado(cantidad),
                                      Citado(articulo->unidad), Guardado(articulo->costo), Guardado(importe),
                                      clase.conGasto ? Citado(linea.Atributo(planXml::TipoGasto)) : QString("")});
    }

    // Whatever its state is.
    const std::optional<Articulo> &DelCatalogo(const QString &producto)
    {
        const auto hallado = articulos.constFind(producto);
        if (hallado != articulos.constEnd())
            return *hallado;
        std::optional<Articulo> articulo;
        const auto fila = conexion.Execute(
            "SELECT Pr_Unidad_Control_1, Pr_Costo_Estandar FROM Producto WHERE Pr_Cve_Producto = ?", {producto});
        if (!fila.Eof())
            articulo = {fila.Texto(0), fila.Numero(1)};
        return *articulos.insert(producto, articulo);
    }

    static QString Siguiente(int numero, const QString &mascara)
    {
        return qvx::ClaveConFormato(QString::number(numero), mascara);
    }

    // The screen composes its statements: a quote in a value ends the import.
    static QString Citado(const QString &valor)
    {
        if (valor.contains(QLatin1Char('\'')))
            Rechazar("Un valor del documento lleva comillas sencillas, que la importación no admite: " + valor + ".");
        return valor;
    }

    static double Numero(const QString &texto)
    {
        const auto numero = qvx::TextoANumero(texto);
        if (!numero)
            throw qvx::ErrorEjecucion(qvx::errores::TiposNoCoinciden, "No coinciden los tipos: \"" + texto + "\"");
        return *numero;
    }

    // As many digits as a statement has.
    static double Guardado(double numero) { return qvx::NumeroATexto(numero).toDouble(); }

    static FilaDelPlan SinFirma(FilaDelPlan fila)
    {
        fila.resize(fila.size() + ColumnasDeFirma);
        return fila;
    }

    qvx::Conexion &conexion;
    const QString tipo;
    const QString mascaraDeFolio;
    const QString mascaraDeLinea;
    QHash<QString, std::optional<Articulo>> articulos;
    QSet<QString> claves;
    int folios = 0;
    Previsto previsto;
};

} // namespace

Previsto PreverImportacion(qvx::Conexion &conexion, const QString &archivo)
{
    const qvx::EsquemaXml esquema(qvx::RutaEnUnidadC(KT580::RutaEsquema));
    qvx::Documento documento;
    if (!documento.Cargar(archivo, esquema))
        RechazarDocumento(documento.Errores());
    const Elemento tipo = documento.Buscar({"PlanMantenimiento", "TipoEquipo"});
    if (!tipo)
        RechazarDocumento({});
    const QString clave = tipo.Atributo(planXml::Id);
    const auto fila = conexion.Execute("SELECT 1 FROM Tipo_Equipo WHERE Te_Cve_Tipo_Equipo = ? AND Es_Cve_Estado <> ?",
                                       {clave, qvx::estado::Cancelado});
    if (fila.Eof())
        Rechazar("No existe el tipo de equipo «" + clave + "» del documento.");
    return Importacion(conexion, clave).Hacer(tipo);
}

} // namespace comparar
