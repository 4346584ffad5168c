#include "app/Argumentos.h"
#include "app/Componente.h"
#include "app/Intercambio.h"
#include "app/VentanaPrincipal.h"
#include "controls/InteraccionQt.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Instalador.h"
#include "session/Aplicacion.h"
#include "session/Integridad.h"
#include "session/Sesion.h"

#include <QFileInfo>
#include <QTextStream>
#include <sys/stat.h>

namespace
{

constexpr int Hecho = 0;
constexpr int Fallido = 1;
constexpr int MalUso = 2;

void Escribir(FILE *salida, const QString &texto)
{
    QTextStream(salida) << texto << Qt::endl;
}

// Told on the standard error, and in a box to whoever started the program from a menu.
int Reportar(const QString &error)
{
    Escribir(stderr, error);
    if (QGuiApplication::platformName() != "offscreen")
        qvx::InteraccionQt().Mensaje({error, qvx::mensaje::Critico, "Quorvex", 0, "QVX", "ERR-ID:1000002", {}});
    return Fallido;
}

int Correr(const Argumentos &argumentos)
{
    try {
        if (argumentos.EsIntercambio())
            return Intercambiar(argumentos) ? Hecho : Fallido;
        qvx::Sesion sesion(qvx::AbrirBaseDeDatos(argumentos.baseDatos, !argumentos.sinEjemplos), argumentos.operador,
                           std::make_unique<qvx::InteraccionQt>());
        VentanaPrincipal ventana(CrearPantalla(), argumentos.tipoEquipo, argumentos.operador, argumentos.baseDatos);
        // Served to a browser there is no window manager: the window takes the whole screen.
        if (qEnvironmentVariableIsSet("QVX_PANTALLA_COMPLETA"))
            ventana.showFullScreen();
        else
            ventana.show();
        return QApplication::exec();
    } catch (const qvx::ErrorEjecucion &error) {
        return Reportar(error.Descripcion());
    }
}

QString EnUnRenglon(const qvx::Suelto &suelto)
{
    const QString clase = suelto.clase == qvx::Suelto::Clase::Parte ? "parte" : "servicio";
    return ("Tipo de equipo " + suelto.tipoEquipo + ", " + clase + " " + suelto.clave + " " + suelto.descripcion)
               .simplified()
           + ": " + suelto.motivo + ".";
}

// Finding nothing is the good end.
int Revisar(const QString &baseDatos)
{
    try {
        if (!QFileInfo::exists(baseDatos)) // opening would make it
            throw qvx::ErrorEjecucion(qvx::errores::Datos, "La base de datos «" + baseDatos + "» no existe.");
        const auto conexion = qvx::AbrirBaseDeDatos(baseDatos, false);
        const auto sueltos = qvx::BuscarSueltos(*conexion);
        for (const qvx::Suelto &suelto : sueltos)
            Escribir(stdout, EnUnRenglon(suelto));
        if (sueltos.isEmpty())
            Escribir(stdout, "No se encontró nada que corregir.");
        return sueltos.isEmpty() ? Hecho : Fallido;
    } catch (const qvx::ErrorEjecucion &error) {
        Escribir(stderr, error.Descripcion());
        return Fallido;
    }
}

} // namespace

int main(int argc, char **argv)
{
    umask(S_IRWXG | S_IRWXO);
    QStringList linea;
    for (int i = 0; i < argc; ++i)
        linea.append(QString::fromLocal8Bit(argv[i]));
    const Argumentos argumentos = Argumentos::Leer(linea);
    if (!argumentos.error.isEmpty()) {
        Escribir(stderr, argumentos.error + "\n\n" + Argumentos::Ayuda());
        return MalUso;
    }
    if (argumentos.ayuda || argumentos.version) {
        Escribir(stdout, argumentos.ayuda ? Argumentos::Ayuda() : QString("Quorvex " QVX_VERSION));
        return Hecho;
    }
    if (argumentos.revisar) {
        const QCoreApplication sinPantalla(argc, argv);
        return Revisar(argumentos.baseDatos);
    }
    if (argumentos.EsIntercambio())
        qputenv("QT_QPA_PLATFORM", "offscreen"); // runs where there is no display
    qvx::Aplicacion aplicacion(argc, argv);
    return Correr(argumentos);
}
