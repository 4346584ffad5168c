#include "app/Acceso.h"
#include "app/Argumentos.h"
#include "app/Componente.h"
#include "app/Intercambio.h"
#include "app/VentanaPrincipal.h"
#include "controls/InteraccionQt.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "plan/Integridad.h"
#include "session/Aplicacion.h"
#include "session/Sesion.h"

#include <QFileInfo>
#include <QTextStream>
#include <fontconfig/fontconfig.h>
#include <future>
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
int Reportar(const QString &error, const QString &detalles = {})
{
    Escribir(stderr, detalles.isEmpty() ? error : error + '\n' + detalles);
    const auto *aplicacion = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    if (aplicacion && QGuiApplication::platformName() != "offscreen")
        qvx::InteraccionQt().Mensaje({error, qvx::mensaje::Critico, "Quorvex", 0, "QVX", "ERR-ID:1000002", detalles});
    return Fallido;
}

// Does what was ordered and gives the exit code.
template <class Pasos>
int ConReporte(Pasos &&pasos)
{
    try {
        return pasos();
    } catch (const SinAcceso &error) {
        return Reportar(error.Descripcion(), error.Detalles());
    } catch (const qvx::ErrorEjecucion &error) {
        return Reportar(error.Descripcion());
    }
}

int Mostrar(const Argumentos &argumentos)
{
    auto conexion = AbrirBaseConVentana(argumentos);
    if (!conexion)
        return Fallido;
    const auto sesion = IniciarSesion(argumentos, std::move(conexion), std::make_unique<qvx::InteraccionQt>());
    VentanaPrincipal ventana(CrearPantalla(), argumentos.tipoEquipo, sesion->Operador(),
                             argumentos.servidor ? argumentos.servidor->Nombre() : argumentos.baseDatos);
    // Served to a browser there is no window manager: the window takes the whole screen.
    if (qEnvironmentVariableIsSet("QVX_PANTALLA_COMPLETA"))
        ventana.showFullScreen();
    else
        ventana.show();
    return QApplication::exec();
}

QString EnUnRenglon(const qvx::Suelto &suelto)
{
    const QString clase = suelto.clase == qvx::Suelto::Clase::Parte ? "parte" : "servicio";
    return ("Tipo de equipo " + suelto.tipoEquipo + ", " + clase + " " + suelto.clave + " " + suelto.descripcion)
               .simplified()
           + ": " + suelto.motivo + ".";
}

// Finding nothing is the good end.
int Revisar(const Argumentos &argumentos)
{
    if (!argumentos.servidor && !QFileInfo::exists(argumentos.baseDatos)) // opening would make it
        throw qvx::ErrorEjecucion(qvx::errores::Datos, "La base de datos «" + argumentos.baseDatos + "» no existe.");
    const auto conexion = AbrirBase(argumentos);
    const auto sueltos = qvx::BuscarSueltos(*conexion);
    for (const qvx::Suelto &suelto : sueltos)
        Escribir(stdout, EnUnRenglon(suelto));
    if (sueltos.isEmpty())
        Escribir(stdout, "No se encontró nada que corregir.");
    return sueltos.isEmpty() ? Hecho : Fallido;
}

int Crear(const Argumentos &argumentos)
{
    const QString nombre = argumentos.servidor->Nombre();
    Escribir(stdout, CrearEsquema(argumentos) ? "Se creó el esquema de Quorvex en la base de datos " + nombre
                                                    + ", con los roles quorvex_planificadores y quorvex_lectores."
                                              : QString("El esquema ya está al día."));
    return Hecho;
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
    if (argumentos.revisar || argumentos.crearEsquema) {
        const QCoreApplication sinPantalla(argc, argv);
        return ConReporte([&] { return argumentos.revisar ? Revisar(argumentos) : Crear(argumentos); });
    }
    if (argumentos.EsIntercambio())
        qputenv("QT_QPA_PLATFORM", "offscreen"); // runs where there is no display
    // What fonts there are is found out while the window system is being reached.
    const auto fuentes = std::async(std::launch::async, FcInit);
    qvx::Aplicacion aplicacion(argc, argv);
    fuentes.wait();
    return ConReporte([&] {
        return argumentos.EsIntercambio() ? (Intercambiar(argumentos) ? Hecho : Fallido) : Mostrar(argumentos);
    });
}
