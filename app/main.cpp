#include "app/Argumentos.h"
#include "app/Intercambio.h"
#include "app/Ordenes.h"
#include "app/Reporte.h"
#include "session/Aplicacion.h"

#include <fontconfig/fontconfig.h>
#include <future>
#include <sys/stat.h>

int main(int argc, char **argv)
{
    umask(S_IRWXG | S_IRWXO);
    QStringList linea;
    for (int i = 0; i < argc; ++i)
        linea.append(QString::fromLocal8Bit(argv[i]));
    const Argumentos argumentos = Argumentos::Leer(linea);
    if (!argumentos.error.isEmpty()) {
        Escribir(stderr, argumentos.error + "\n\n" + Argumentos::Ayuda());
        return salida::MalUso;
    }
    if (argumentos.ayuda || argumentos.version) {
        Escribir(stdout, argumentos.ayuda ? Argumentos::Ayuda() : QString("Quorvex " QVX_VERSION));
        return salida::Hecho;
    }
    if (argumentos.revisar || argumentos.crearEsquema || argumentos.actualizarEsquema) {
        const QCoreApplication sinPantalla(argc, argv);
        return ConReporte([&] { return argumentos.revisar ? Revisar(argumentos) : CambiarElEsquema(argumentos); });
    }
    if (argumentos.EsIntercambio())
        qputenv("QT_QPA_PLATFORM", "offscreen"); // runs where there is no display
    // What fonts there are is found out while the window system is being reached.
    const auto fuentes = std::async(std::launch::async, FcInit);
    qvx::Aplicacion aplicacion(argc, argv);
    fuentes.wait();
    return ConReporte([&] {
        return argumentos.EsIntercambio() ? (Intercambiar(argumentos) ? salida::Hecho : salida::Fallido)
                                          : Mostrar(argumentos);
    });
}
