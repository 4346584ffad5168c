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

} // namespace

Argumentos Argumentos::Leer(const QStringList &linea)
{
    QCommandLineParser lector;
    lector.addOptions({{"base-datos", "", "FILE"},
                       {"tipo-equipo", "", "KEY"},
                       {"operador", "", "NAME"},
                       {"sin-ejemplos", ""},
                       {"ayuda", ""},
                       {"version", ""}});
    Argumentos argumentos;
    if (!lector.parse(linea)) {
        argumentos.error = lector.unknownOptionNames().isEmpty()
                               ? QString("A una opción le falta su valor.")
                               : "Opción desconocida: --" + lector.unknownOptionNames().constFirst();
        return argumentos;
    }
    if (!lector.positionalArguments().isEmpty()) {
        argumentos.error = "Argumento de más: " + lector.positionalArguments().constFirst();
        return argumentos;
    }
    argumentos.baseDatos = lector.isSet("base-datos") ? lector.value("base-datos") : BaseDelUsuario();
    argumentos.tipoEquipo = lector.value("tipo-equipo");
    argumentos.operador =
        lector.isSet("operador") ? lector.value("operador") : qEnvironmentVariable("USER", "operador");
    argumentos.sinEjemplos = lector.isSet("sin-ejemplos");
    argumentos.ayuda = lector.isSet("ayuda");
    argumentos.version = lector.isSet("version");
    if (argumentos.baseDatos.isEmpty())
        argumentos.error = "--base-datos necesita un archivo.";
    else if (argumentos.tipoEquipo.contains(QLatin1Char('\'')))
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
             "  --ayuda               Muestra este texto.\n"
             "  --version             Muestra la versión.\n";
}
