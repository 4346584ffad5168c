#include "app/Argumentos.h"
#include "app/Intercambio.h"
#include "app/Ordenes.h"
#include "app/Reporte.h"
#include "app/catalogos/OrdenesDeCatalogo.h"
#include "app/catalogos/OrdenesDeCostos.h"
#include "app/comparar/OrdenesDeComparar.h"
#include "app/historial/OrdenesDeHistorial.h"
#include "app/programa/OrdenesDePrograma.h"
#include "app/respaldo/OrdenesDeRespaldo.h"
#include "session/Aplicacion.h"

#include <QGuiApplication>
#include <fontconfig/fontconfig.h>
#include <functional>
#include <future>
#include <sys/prctl.h>
#include <sys/resource.h>

namespace
{

// The memory holds the password of a server: it is written to no file when the program crashes, and not shown to the
// person's other programs. Not in a development build, whose tools look into it.
void Resguardar()
{
#ifdef NDEBUG
    constexpr rlimit ninguno{0, 0};
    setrlimit(RLIMIT_CORE, &ninguno);
    prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
#endif
}

// What needs no toolkit of windows; nothing for all else.
std::function<int(const Argumentos &)> OrdenSinPantalla(const Argumentos &argumentos)
{
    if (argumentos.revisar)
        return Revisar;
    if (argumentos.crearEsquema || argumentos.actualizarEsquema)
        return CambiarElEsquema;
    if (argumentos.importarCatalogo)
        return ImportarCatalogo;
    if (argumentos.exportarCatalogo)
        return [](const Argumentos &estos) { return ExportarCatalogo(estos); };
    if (argumentos.actualizarCostos)
        return ActualizarLosCostos;
    if (argumentos.completarGastos)
        return CompletarLosGastos;
    if (argumentos.EsDeHistorial())
        return OrdenarHistorial;
    if (argumentos.comparar)
        return CompararPlanes;
    if (argumentos.respaldar)
        return RespaldarEnArchivo;
    if (argumentos.restaurar)
        return RestaurarDeArchivo;
    if (argumentos.programa.programa)
        return EscribirPrograma;
    return nullptr;
}

} // namespace

int main(int argc, char **argv)
{
    Resguardar();
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
    if (const auto orden = OrdenSinPantalla(argumentos)) {
        const QCoreApplication sinPantalla(argc, argv);
        return ConReporte([&] { return orden(argumentos); });
    }
    if (argumentos.EsIntercambio() || argumentos.programa.Hay())
        qputenv("QT_QPA_PLATFORM", "offscreen"); // runs where there is no display
    if (argumentos.programa.Hay()) {             // a report: letters, and no windows
        const QGuiApplication sinVentanas(argc, argv);
        return ConReporte([&] { return EscribirReporte(argumentos); });
    }
    // What fonts there are is found out while the window system is being reached.
    const auto fuentes = std::async(std::launch::async, FcInit);
    qvx::Aplicacion aplicacion(argc, argv);
    fuentes.wait();
    return ConReporte([&] {
        return argumentos.EsIntercambio() ? (Intercambiar(argumentos) ? salida::Hecho : salida::Fallido)
                                          : Mostrar(argumentos);
    });
}
