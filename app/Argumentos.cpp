#include "app/Argumentos.h"

#include <QCommandLineParser>
#include <QStandardPaths>
#include <algorithm>

namespace
{

// The operator is written between quotes into every audited row.
bool OperadorValido(const QString &operador)
{
    return !operador.trimmed().isEmpty() && operador.size() <= 50
           && std::all_of(operador.begin(), operador.end(),
                          [](QChar c) { return c.isPrint() && c != QLatin1Char('\''); });
}

QString BaseDelUsuario()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/quorvex/quorvex.db";
}

// The options of the exchange; takes the file of --exportar from the arguments that no option names.
void LeerIntercambio(const QCommandLineParser &lector, QStringList &sueltos, Argumentos &argumentos)
{
    argumentos.exportar = lector.value("exportar");
    argumentos.importar = lector.isSet("importar");
    argumentos.validar = lector.isSet("validar");
    argumentos.si = lector.isSet("si");
    if (lector.isSet("exportar") + argumentos.importar + argumentos.validar > 1)
        argumentos.error = "--exportar, --importar y --validar no van juntos.";
    else if (argumentos.si && !argumentos.importar)
        argumentos.error = "--si solo va con --importar.";
    else if (lector.isSet("exportar"))
        argumentos.archivo = sueltos.isEmpty() ? QString() : sueltos.takeFirst();
    else
        argumentos.archivo = lector.value(argumentos.importar ? "importar" : "validar");
    const bool pideArchivo = lector.isSet("exportar") || argumentos.importar || argumentos.validar;
    const bool sinClave = lector.isSet("exportar") && argumentos.exportar.isEmpty();
    if (argumentos.error.isEmpty() && pideArchivo && (argumentos.archivo.isEmpty() || sinClave))
        argumentos.error = sinClave ? "--exportar necesita la clave de un tipo de equipo." : "Falta el archivo.";
}

} // namespace

Argumentos Argumentos::Leer(const QStringList &linea)
{
    QCommandLineParser lector;
    lector.addOptions({{"base-datos", "", "FILE"},
                       {"tipo-equipo", "", "KEY"},
                       {"operador", "", "NAME"},
                       {"sin-ejemplos", ""},
                       {"exportar", "", "KEY"},
                       {"importar", "", "FILE"},
                       {"validar", "", "FILE"},
                       {"si", ""},
                       {"revisar", ""},
                       {"ayuda", ""},
                       {"version", ""}});
    Argumentos argumentos;
    if (!lector.parse(linea)) {
        argumentos.error = lector.unknownOptionNames().isEmpty()
                               ? QString("A una opción le falta su valor.")
                               : "Opción desconocida: --" + lector.unknownOptionNames().constFirst();
        return argumentos;
    }
    QStringList sueltos = lector.positionalArguments();
    LeerIntercambio(lector, sueltos, argumentos);
    argumentos.revisar = lector.isSet("revisar");
    if (argumentos.revisar && (argumentos.EsIntercambio() || lector.isSet("tipo-equipo")))
        argumentos.error = "--revisar mira todos los tipos de equipo y va sin otra orden.";
    if (!sueltos.isEmpty())
        argumentos.error = "Argumento de más: " + sueltos.constFirst();
    if (!argumentos.error.isEmpty())
        return argumentos;
    argumentos.baseDatos = lector.isSet("base-datos") ? lector.value("base-datos") : BaseDelUsuario();
    argumentos.tipoEquipo = lector.value("tipo-equipo");
    argumentos.operador =
        lector.isSet("operador") ? lector.value("operador") : qEnvironmentVariable("USER", "operador");
    argumentos.sinEjemplos = lector.isSet("sin-ejemplos");
    argumentos.ayuda = lector.isSet("ayuda");
    argumentos.version = lector.isSet("version");
    if (argumentos.baseDatos.isEmpty())
        argumentos.error = "--base-datos necesita un archivo.";
    else if ((argumentos.tipoEquipo + argumentos.exportar).contains(QLatin1Char('\'')))
        argumentos.error = "La clave del tipo de equipo no puede llevar comillas.";
    else if (!OperadorValido(argumentos.operador))
        argumentos.error = "El nombre del operador debe tener de 1 a 50 caracteres, sin comillas.";
    return argumentos;
}

QString Argumentos::Ayuda()
{
    return "Uso: quorvex [opciones]\n"
           "\n"
           "Plan de mantenimiento por tipo de equipo.\n"
           "\n"
           "  --base-datos ARCHIVO  Base de datos que se abre; si no existe, se crea.\n"
           "                        Sin esta opción: "
           + BaseDelUsuario()
           + "\n"
             "  --tipo-equipo CLAVE   Abre la pantalla en este tipo de equipo.\n"
             "  --operador NOMBRE     Quién firma los cambios. Sin esta opción: el usuario del sistema.\n"
             "  --sin-ejemplos        Al crear la base de datos, deja los planes vacíos.\n"
             "  --exportar CLAVE ARCHIVO\n"
             "                        Escribe el plan de un tipo de equipo en un archivo XML, sin ventana.\n"
             "  --importar ARCHIVO    Reemplaza un plan por el del archivo XML, sin ventana. Sin --si, solo lo "
             "revisa.\n"
             "  --si                  Contesta que sí a la pregunta de --importar.\n"
             "  --validar ARCHIVO     Dice renglón por renglón en qué no cumple un archivo XML con el formato.\n"
             "  --revisar             Dice qué partes y servicios no se ven en el árbol, sin ventana y sin cambiar "
             "nada.\n"
             "  --ayuda               Muestra este texto.\n"
             "  --version             Muestra la versión.\n";
}
