#include "app/Argumentos.h"

#include "data/ErrorEjecucion.h"

#include <QCommandLineParser>
#include <QStandardPaths>
#include <algorithm>
#include <limits>
#include <utility>

namespace
{

// The order of the exchange, of documents or of a catalogue, and its file, which --exportar, --importar-catalogo and
// --exportar-catalogo take from the arguments that no option names.
void LeerIntercambio(const QCommandLineParser &lector, QStringList &sueltos, Argumentos &argumentos)
{
    argumentos.exportar = lector.value("exportar");
    argumentos.importar = lector.isSet("importar");
    argumentos.validar = lector.isSet("validar");
    argumentos.importarCatalogo = lector.isSet("importar-catalogo");
    argumentos.exportarCatalogo = lector.isSet("exportar-catalogo");
    argumentos.si = lector.isSet("si");
    const bool pideArchivo =
        lector.isSet("exportar") || argumentos.importar || argumentos.validar || argumentos.EsDeCatalogo();
    if (lector.isSet("exportar") + argumentos.importar + argumentos.validar + argumentos.importarCatalogo
            + argumentos.exportarCatalogo
        > 1)
        argumentos.error = argumentos.EsDeCatalogo()
                               ? QString("--importar-catalogo y --exportar-catalogo van sin otra orden.")
                               : QString("--exportar, --importar y --validar no van juntos.");
    else if (argumentos.si && !argumentos.importar && !argumentos.importarCatalogo && !argumentos.deshacer
             && !argumentos.rehacer && !argumentos.EsDeCostos() && !argumentos.restaurar)
        argumentos.error = "--si no va con esta orden.";
    else if (argumentos.importar || argumentos.validar)
        argumentos.archivo = lector.value(argumentos.importar ? "importar" : "validar");
    else if (pideArchivo)
        argumentos.archivo = sueltos.isEmpty() ? QString() : sueltos.takeFirst();
    const bool sinClave = lector.isSet("exportar") && argumentos.exportar.isEmpty();
    if (argumentos.error.isEmpty() && pideArchivo && (argumentos.archivo.isEmpty() || sinClave))
        argumentos.error = sinClave ? "--exportar necesita la clave de un tipo de equipo." : "Falta el archivo.";
}

// What an option says, among the words that it takes.
template <class Valor>
std::optional<Valor> Elegido(const QCommandLineParser &lector, const QString &opcion,
                             const QList<QPair<QString, Valor>> &palabras, Argumentos &argumentos)
{
    if (!lector.isSet(opcion))
        return std::nullopt;
    QStringList conocidas;
    for (const auto &[palabra, valor] : palabras) {
        if (palabra.compare(lector.value(opcion), Qt::CaseInsensitive) == 0)
            return valor;
        conocidas.append(palabra);
    }
    argumentos.error = "--" + opcion + " es " + conocidas.join(" o ") + ".";
    return std::nullopt;
}

// The options of a catalogue's exchange.
void LeerCatalogo(const QCommandLineParser &lector, Argumentos &argumentos)
{
    argumentos.delimitador =
        Elegido<QChar>(lector, "delimitador",
                       {{";", QLatin1Char(';')}, {",", QLatin1Char(',')}, {"tab", QLatin1Char('\t')}}, argumentos);
    argumentos.decimal = Elegido<csv::Decimal>(
        lector, "decimal", {{"punto", csv::Decimal::Punto}, {"coma", csv::Decimal::Coma}}, argumentos);
    argumentos.codificacion = Elegido<csv::Codificacion>(
        lector, "codificacion", {{"utf-8", csv::Codificacion::Utf8}, {"windows-1252", csv::Codificacion::Windows1252}},
        argumentos);
    for (const QString opcion : {"delimitador", "decimal", "codificacion"})
        if (lector.isSet(opcion) && !argumentos.EsDeCatalogo())
            argumentos.error = "--" + opcion + " solo va con --importar-catalogo y --exportar-catalogo.";
    if (!argumentos.EsDeCatalogo() || !argumentos.error.isEmpty())
        return;
    const QString nombre = lector.value(argumentos.importarCatalogo ? "importar-catalogo" : "exportar-catalogo");
    argumentos.catalogo = qvx::TablaDeCatalogoPorNombre(nombre);
    QStringList nombres;
    for (const qvx::TablaDeCatalogo &tabla : qvx::TablasDeCatalogo())
        nombres.append(tabla.nombre.toUpper());
    if (!argumentos.catalogo)
        argumentos.error = "No hay un catálogo «" + nombre + "». Hay estos: " + nombres.join(", ") + ".";
    else if (argumentos.exportarCatalogo && argumentos.codificacion)
        argumentos.error = "--codificacion solo va con --importar-catalogo: se escribe en UTF-8.";
}

// --lectura alone, and not with the reading of a meter that a programme begins with.
const QString SoloLectura = "solo-lectura";

QStringList ConSoloLectura(QStringList linea)
{
    for (qsizetype i = 0; i < linea.size(); ++i)
        if (linea.at(i) == "--lectura" && !linea.value(i + 1).contains(QLatin1Char('=')))
            linea[i] = "--" + SoloLectura;
    return linea;
}

// An option that is not one of these, "" when there is none.
QString Sobrante(const QCommandLineParser &lector, const QStringList &debidas)
{
    QStringList otras = lector.optionNames();
    otras.removeIf([&](const QString &opcion) {
        return debidas.contains(opcion) || (opcion == SoloLectura && debidas.contains("servidor"));
    });
    return otras.value(0);
}

// The orders on costs; takes the keys of their equipment types from the arguments that no option names.
void LeerCostos(const QCommandLineParser &lector, QStringList &sueltos, Argumentos &argumentos)
{
    argumentos.actualizarCostos = lector.isSet("actualizar-costos");
    argumentos.completarGastos = lector.isSet("completar-gastos");
    if (!argumentos.EsDeCostos())
        return;
    const QString orden = argumentos.actualizarCostos ? "actualizar-costos" : "completar-gastos";
    const QString otra = Sobrante(lector, {orden, "si", "base-datos", "servidor", "operador"});
    if (!otra.isEmpty())
        argumentos.error = "--" + orden + " va sin otra orden: --" + otra + " sobra.";
    argumentos.claves = std::exchange(sueltos, {});
}

// The orders on copies; the key of --restaurar is an argument that no option names.
void LeerCopias(const QCommandLineParser &lector, QStringList &sueltos, Argumentos &argumentos)
{
    argumentos.respaldar = lector.isSet("respaldar");
    argumentos.restaurar = lector.isSet("restaurar");
    if (!argumentos.EsDeCopias())
        return;
    const QString orden = argumentos.respaldar ? "respaldar" : "restaurar";
    if (const QString otra = Sobrante(lector, {orden, "si", "base-datos", "operador"}); !otra.isEmpty())
        argumentos.error =
            otra == "servidor"
                ? "--" + orden
                      + " es de una base de datos en un archivo. La de un servidor la respalda y la restaura "
                        "quien la administra, con pg_dump y pg_restore: lo explica el manual."
                : "--" + orden + " va sin otra orden: --" + otra + " sobra.";
    argumentos.archivo = lector.value(orden);
    if (argumentos.archivo.isEmpty())
        argumentos.error = "Falta el archivo.";
    if (argumentos.restaurar && !sueltos.isEmpty())
        argumentos.claves = {sueltos.takeFirst()};
}

// Two plans: one is the option's value, the other an argument that no option names.
void LeerComparacion(const QCommandLineParser &lector, QStringList &sueltos, Argumentos &argumentos)
{
    argumentos.comparar = lector.isSet("comparar");
    if (!argumentos.comparar)
        return;
    const QString otra = Sobrante(lector, {"comparar", "base-datos", "servidor", "operador"});
    if (!otra.isEmpty())
        argumentos.error = "--comparar va sin otra orden: --" + otra + " sobra.";
    else if (lector.value("comparar").isEmpty() || sueltos.isEmpty())
        argumentos.error = "--comparar necesita dos planes: la clave de un tipo de equipo o un archivo XML cada uno.";
    else
        argumentos.claves = {lector.value("comparar"), sueltos.takeFirst()};
}

// A number from one up, as the option has it; 0 for none.
qint64 NumeroDe(const QCommandLineParser &lector, const QString &opcion, Argumentos &argumentos)
{
    if (!lector.isSet(opcion))
        return 0;
    bool es = false;
    const qint64 numero = lector.value(opcion).toLongLong(&es);
    if (es && numero > 0)
        return numero;
    argumentos.error = "--" + opcion + " necesita un número desde 1.";
    return 0;
}

// The orders on the history; the key of --historial is an argument that no option names.
void LeerHistorial(const QCommandLineParser &lector, QStringList &sueltos, Argumentos &argumentos)
{
    argumentos.historial = lector.isSet("historial");
    argumentos.deshacer = lector.isSet("deshacer");
    argumentos.rehacer = lector.isSet("rehacer");
    if (const qint64 dias = NumeroDe(lector, "historial-depurar", argumentos); dias > 0)
        argumentos.depurar = static_cast<int>(qMin<qint64>(dias, std::numeric_limits<int>::max()));
    if (lector.isSet("operacion") && !argumentos.historial)
        argumentos.error = "--operacion solo va con --historial.";
    if (!argumentos.EsDeHistorial() || !argumentos.error.isEmpty())
        return;
    QString orden = argumentos.historial ? "historial" : "historial-depurar";
    QStringList debidas{"base-datos", "servidor", "operador"};
    if (argumentos.deshacer || argumentos.rehacer) {
        orden = argumentos.deshacer ? "deshacer" : "rehacer";
        argumentos.operacion = NumeroDe(lector, orden, argumentos);
        debidas.append("si");
    } else if (argumentos.historial) {
        argumentos.operacion = NumeroDe(lector, "operacion", argumentos);
        debidas.append("operacion");
        if (!sueltos.isEmpty())
            argumentos.claves = {sueltos.takeFirst()};
    }
    if (const QString otra = Sobrante(lector, debidas + QStringList{orden}); !otra.isEmpty())
        argumentos.error = "--" + orden + " va sin otra orden: --" + otra + " sobra.";
}

// The options of the shared server.
void LeerServidor(const QCommandLineParser &lector, Argumentos &argumentos)
{
    argumentos.crearEsquema = lector.isSet("crear-esquema");
    argumentos.conEjemplos = lector.isSet("con-ejemplos");
    if (argumentos.conEjemplos && !argumentos.crearEsquema)
        argumentos.error = "--con-ejemplos solo va con --crear-esquema.";
    argumentos.actualizarEsquema = lector.isSet("actualizar-esquema");
    QString orden;
    if (argumentos.crearEsquema || argumentos.actualizarEsquema)
        orden = argumentos.crearEsquema ? "crear-esquema" : "actualizar-esquema";
    if (!lector.isSet("servidor")) {
        if (lector.isSet(SoloLectura))
            orden = "lectura";
        if (!orden.isEmpty())
            argumentos.error = "--" + orden + " necesita --servidor.";
        return;
    }
    const QString otra = Sobrante(lector, {"servidor", orden, "con-ejemplos"});
    if (!orden.isEmpty() && !otra.isEmpty())
        argumentos.error = "--" + orden + " va sin otra orden: --" + otra + " sobra.";
    else if (!orden.isEmpty() && lector.isSet(SoloLectura))
        argumentos.error = "--" + orden + " cambia el esquema, y con --lectura nada se cambia.";
    else if (lector.isSet("base-datos"))
        argumentos.error = "--servidor y --base-datos no van juntos.";
    else if (lector.isSet("operador"))
        argumentos.error = "--operador no va con --servidor: firma los cambios el usuario del servidor.";
    else if (lector.isSet("sin-ejemplos"))
        argumentos.error = "--sin-ejemplos no va con --servidor.";
    if (!argumentos.error.isEmpty())
        return;
    try {
        argumentos.direccion = lector.value("servidor");
        argumentos.servidor.emplace(argumentos.direccion);
        argumentos.PonerLectura(lector.isSet(SoloLectura));
        argumentos.error = Argumentos::RevisarOperador(argumentos.servidor->Usuario());
    } catch (const qvx::ErrorEjecucion &error) {
        argumentos.error = error.Descripcion();
    }
}

} // namespace

QString Argumentos::BaseDelUsuario()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/quorvex/quorvex.db";
}

QString Argumentos::OperadorDelSistema()
{
    return qEnvironmentVariable("USER", "operador");
}

Argumentos Argumentos::Hacia(const QString &base) const
{
    Argumentos otros;
    otros.baseDada = true;
    otros.operador = operador.isEmpty() ? OperadorDelSistema() : operador;
    if (base.startsWith("postgres://") || base.startsWith("postgresql://")) {
        otros.direccion = base;
        otros.servidor.emplace(base);
        otros.PonerLectura(lectura);
    } else {
        otros.baseDatos = base;
    }
    return otros;
}

void Argumentos::PonerLectura(bool si)
{
    lectura = si;
    if (si)
        servidor = servidor->DeSoloLectura();
}

// The operator is written between quotes into every audited row.
QString Argumentos::RevisarOperador(const QString &operador)
{
    const bool vale =
        !operador.trimmed().isEmpty() && operador.size() <= 50
        && std::all_of(operador.begin(), operador.end(), [](QChar c) { return c.isPrint() && c != QLatin1Char('\''); });
    return vale ? QString() : QString("El nombre del operador debe tener de 1 a 50 caracteres, sin comillas.");
}

Argumentos Argumentos::Leer(const QStringList &linea)
{
    QCommandLineParser lector;
    lector.addOptions({{"base-datos", "", "FILE"},
                       {"servidor", "", "ADDRESS"},
                       {SoloLectura, ""},
                       {"crear-esquema", ""},
                       {"actualizar-esquema", ""},
                       {"con-ejemplos", ""},
                       {"tipo-equipo", "", "KEY"},
                       {"operador", "", "NAME"},
                       {"sin-ejemplos", ""},
                       {"exportar", "", "KEY"},
                       {"importar", "", "FILE"},
                       {"validar", "", "FILE"},
                       {"importar-catalogo", "", "TABLE"},
                       {"exportar-catalogo", "", "TABLE"},
                       {"delimitador", "", "MARK"},
                       {"decimal", "", "MARK"},
                       {"codificacion", "", "NAME"},
                       {"si", ""},
                       {"actualizar-costos", ""},
                       {"completar-gastos", ""},
                       {"comparar", "", "PLAN"},
                       {"respaldar", "", "FILE"},
                       {"restaurar", "", "FILE"},
                       {"historial", ""},
                       {"operacion", "", "NUMBER"},
                       {"deshacer", "", "NUMBER"},
                       {"rehacer", "", "NUMBER"},
                       {"historial-depurar", "", "DAYS"},
                       {"revisar", ""},
                       {"ayuda", ""},
                       {"version", ""}});
    for (const QString &opcion : PedidoDePrograma::ConValor())
        lector.addOption({opcion, "", "VALUE"});
    for (const QString &opcion : PedidoDePrograma::SinValor())
        lector.addOption({opcion, ""});
    Argumentos argumentos;
    if (!lector.parse(ConSoloLectura(linea))) {
        argumentos.error = lector.unknownOptionNames().isEmpty()
                               ? QString("A una opción le falta su valor.")
                               : "Opción desconocida: --" + lector.unknownOptionNames().constFirst();
        return argumentos;
    }
    QStringList sueltos = lector.positionalArguments();
    const QString errorDePrograma = argumentos.programa.Leer(lector, sueltos);
    LeerCostos(lector, sueltos, argumentos);
    LeerCopias(lector, sueltos, argumentos);
    LeerComparacion(lector, sueltos, argumentos);
    LeerHistorial(lector, sueltos, argumentos);
    LeerIntercambio(lector, sueltos, argumentos);
    LeerCatalogo(lector, argumentos);
    argumentos.revisar = lector.isSet("revisar");
    if (argumentos.revisar && (argumentos.EsIntercambio() || argumentos.EsDeCatalogo() || lector.isSet("tipo-equipo")))
        argumentos.error = "--revisar mira todos los tipos de equipo y va sin otra orden.";
    LeerServidor(lector, argumentos);
    if (!errorDePrograma.isEmpty())
        argumentos.error = errorDePrograma;
    else if (!sueltos.isEmpty()) // an address is not repeated: it may carry a password
        argumentos.error = sueltos.constFirst().startsWith("postgres")
                               ? QString("La dirección del servidor va después de --servidor.")
                               : "Argumento de más: " + sueltos.constFirst();
    if (!argumentos.error.isEmpty())
        return argumentos;
    argumentos.tipoEquipo = lector.value("tipo-equipo");
    argumentos.sinEjemplos = lector.isSet("sin-ejemplos");
    argumentos.ayuda = lector.isSet("ayuda");
    argumentos.version = lector.isSet("version");
    if ((argumentos.tipoEquipo + argumentos.exportar).contains(QLatin1Char('\''))) {
        argumentos.error = "La clave del tipo de equipo no puede llevar comillas.";
    } else if (!argumentos.servidor) {
        argumentos.baseDada = lector.isSet("base-datos");
        argumentos.baseDatos = argumentos.baseDada ? lector.value("base-datos") : BaseDelUsuario();
        argumentos.operador = lector.isSet("operador") ? lector.value("operador") : OperadorDelSistema();
        argumentos.error = argumentos.baseDatos.isEmpty() ? QString("--base-datos necesita un archivo.")
                                                          : RevisarOperador(argumentos.operador);
    }
    return argumentos;
}
