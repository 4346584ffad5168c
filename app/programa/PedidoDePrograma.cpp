#include "app/programa/PedidoDePrograma.h"

#include "app/programa/Calendario.h"
#include "app/reportes/TextoDeArchivo.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"

#include <QCommandLineParser>
#include <cmath>

namespace
{

using Inicio = qvx::DatosDePrograma::Inicio;
using Descanso = qvx::DatosDePrograma::Descanso;

// Also "" and a text that is too large for one.
std::optional<double> NumeroEscrito(const QString &texto)
{
    try {
        return qvx::TextoANumero(texto);
    } catch (const qvx::ErrorEjecucion &) {
        return {};
    }
}

// "HR=8", each unit once.
QString LeerPorUnidad(const QCommandLineParser &lector, const QString &opcion, QMap<QString, double> &numeros)
{
    for (const QString &valor : lector.values(opcion)) {
        const QString unidad = valor.section(QLatin1Char('='), 0, 0).trimmed().toUpper();
        const auto numero = NumeroEscrito(valor.section(QLatin1Char('='), 1));
        if (unidad.isEmpty() || !numero)
            return "--" + opcion + " " + valor + " no se entiende: es la unidad, un igual y un número, como HR=8.";
        if (numeros.contains(unidad))
            return "--" + opcion + " dice dos veces " + unidad + ".";
        numeros.insert(unidad, *numero);
    }
    return {};
}

template <class Valor>
QString LeerPalabra(const QCommandLineParser &lector, const QString &opcion,
                    const QList<QPair<QString, Valor>> &palabras, std::optional<Valor> &elegida)
{
    if (!lector.isSet(opcion))
        return {};
    QStringList conocidas;
    for (const auto &[palabra, valor] : palabras) {
        if (palabra.compare(lector.value(opcion), Qt::CaseInsensitive) == 0) {
            elegida = valor;
            return {};
        }
        conocidas.append(palabra);
    }
    return "--" + opcion + " es " + conocidas.join(", ") + ".";
}

} // namespace

QStringList PedidoDePrograma::ConValor()
{
    return {"programa", "reporte",  "desde",    "uso", "lectura", "equipos", "dias-semana",
            "inicio",   "festivos", "descanso", "ics", "papel",   "mes",     "servicios"};
}

QStringList PedidoDePrograma::SinValor()
{
    return {"con-costos", "con-renglones", "por-parte", "una-ronda"};
}

QString PedidoDePrograma::Leer(const QCommandLineParser &lector, QStringList &sueltos)
{
    programa = lector.isSet("programa");
    const bool conReporte = lector.isSet("reporte");
    if (!programa && !conReporte) {
        for (const QString &opcion : ConValor() + SinValor())
            if (lector.isSet(opcion))
                return "--" + opcion + " solo va con --programa o con --reporte.";
        return {};
    }
    const QString orden = programa ? "programa" : "reporte";
    const QStringList generales{"base-datos", "servidor", "operador"};
    for (const QString &opcion : lector.optionNames())
        if (opcion != orden && !generales.contains(opcion)
            && (!(ConValor() + SinValor()).contains(opcion) || opcion == "programa" || opcion == "reporte"))
            return "--" + orden + " va sin otra orden: --" + opcion + " sobra.";
    if (conReporte) {
        std::optional<Reporte> cual;
        if (const QString error = LeerPalabra<Reporte>(
                lector, "reporte",
                {{"plan", Reporte::Plan}, {"hojas", Reporte::Hojas}, {"materiales", Reporte::Materiales}}, cual);
            !error.isEmpty())
            return error;
        reporte = *cual;
    }
    clave = programa ? lector.value("programa") : sueltos.isEmpty() ? QString() : sueltos.takeFirst();
    archivo = sueltos.isEmpty() ? QString() : sueltos.takeFirst();
    if (clave.isEmpty() || clave.contains(QLatin1Char('\'')))
        return "--" + orden + " necesita la clave de un tipo de equipo.";
    if (archivo.isEmpty())
        return "Falta el archivo.";
    if (!archivo.endsWith(programa ? ".csv" : ".pdf", Qt::CaseInsensitive))
        return "El nombre del archivo termina en " + QString(programa ? ".csv." : ".pdf.");
    const QString error = LeerDatos(lector);
    return error.isEmpty() ? LeerReporte(lector) : error;
}

QString PedidoDePrograma::LeerDatos(const QCommandLineParser &lector)
{
    if (lector.isSet("desde")) {
        desde = QDate::fromString(lector.value("desde"), "yyyy-MM-dd");
        if (!desde->isValid())
            return "--desde " + lector.value("desde") + " no es una fecha de calendario: escríbala como 2026-12-31.";
    }
    festivos = lector.value("festivos");
    if (lector.isSet("festivos") && festivos.isEmpty())
        return "--festivos necesita un archivo.";
    ics = lector.value("ics");
    if (lector.isSet("ics") && (!programa || !ics.endsWith(".ics", Qt::CaseInsensitive)))
        return "--ics va con --programa y necesita un archivo cuyo nombre termina en .ics.";
    QString error = LeerPalabra<Inicio>(
        lector, "inicio", {{"hecho", Inicio::Hecho}, {"arranque", Inicio::Arranque}, {"lectura", Inicio::Lectura}},
        inicio);
    if (error.isEmpty())
        error = LeerPalabra<Descanso>(lector, "descanso",
                                      {{"ninguno", Descanso::Ninguno},
                                       {"domingo", Descanso::Domingo},
                                       {"fin-de-semana", Descanso::SabadoYDomingo}},
                                      descanso);
    return error.isEmpty() ? LeerNumeros(lector) : error;
}

QString PedidoDePrograma::LeerNumeros(const QCommandLineParser &lector)
{
    if (const QString error = LeerPorUnidad(lector, "uso", usos); !error.isEmpty())
        return error;
    if (const QString error = LeerPorUnidad(lector, "lectura", lecturas); !error.isEmpty())
        return error;
    if (lector.isSet("equipos")) {
        const auto numero = NumeroEscrito(lector.value("equipos"));
        if (!numero || std::floor(*numero) != *numero || std::abs(*numero) > 1e9)
            return "--equipos " + lector.value("equipos") + " no es un número entero.";
        equipos = static_cast<int>(*numero);
    }
    if (lector.isSet("dias-semana")) {
        diasSemana = NumeroEscrito(lector.value("dias-semana"));
        if (!diasSemana)
            return "--dias-semana " + lector.value("dias-semana") + " no es un número.";
    }
    return {};
}

QString PedidoDePrograma::LeerReporte(const QCommandLineParser &lector)
{
    for (const QString &opcion : QStringList{"papel", "mes", "servicios"} + SinValor())
        if (programa && lector.isSet(opcion))
            return "--" + opcion + " solo va con --reporte.";
    std::optional<bool> papel;
    if (const QString error = LeerPalabra<bool>(lector, "papel", {{"carta", false}, {"a4", true}}, papel);
        !error.isEmpty())
        return error;
    a4 = papel.value_or(false);
    if (lector.isSet("mes")) {
        mes = QDate::fromString(lector.value("mes") + "-01", "yyyy-MM-dd");
        if (!mes->isValid())
            return "--mes " + lector.value("mes") + " no es un mes: escríbalo como 2027-03.";
    }
    folios = lector.value("servicios").split(QLatin1Char(','), Qt::SkipEmptyParts);
    conCostos = lector.isSet("con-costos");
    conLineas = lector.isSet("con-renglones");
    porParte = lector.isSet("por-parte");
    unaRonda = lector.isSet("una-ronda");
    return {};
}

qvx::DatosDePrograma PedidoDePrograma::Sobre(qvx::DatosDePrograma datos) const
{
    datos.diaCero = desde.value_or(datos.diaCero);
    datos.equipos = equipos.value_or(datos.equipos);
    datos.diasSemana = diasSemana.value_or(datos.diasSemana);
    datos.inicio = inicio.value_or(datos.inicio);
    datos.descanso = descanso.value_or(datos.descanso);
    for (auto uso = usos.cbegin(); uso != usos.cend(); ++uso)
        datos.usos[uso.key()].porDia = *uso;
    for (auto lectura = lecturas.cbegin(); lectura != lecturas.cend(); ++lectura)
        datos.usos[lectura.key()].acumulado = *lectura;
    if (!festivos.isEmpty()) {
        const QByteArray octetos = csv::LeerArchivo(festivos);
        const auto leidos = programa::LeerFestivos(csv::Texto(octetos, csv::ProponerCodificacion(octetos)));
        if (!leidos.objecion.isEmpty())
            qvx::Rechazar(festivos + ": " + leidos.objecion);
        datos.festivos = leidos.fechas;
    }
    return datos;
}
