#include "app/Argumentos.h"
#include "app/Componente.h"
#include "app/VentanaPrincipal.h"
#include "controls/InteraccionQt.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Instalador.h"
#include "session/Aplicacion.h"
#include "session/Sesion.h"

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
    qvx::Aplicacion aplicacion(argc, argv);
    return Correr(argumentos);
}
