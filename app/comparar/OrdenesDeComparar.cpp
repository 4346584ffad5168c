#include "app/comparar/OrdenesDeComparar.h"

#include "app/Acceso.h"
#include "app/Argumentos.h"
#include "app/InteraccionDeConsola.h"
#include "app/Reporte.h"
#include "app/Textos.h"
#include "app/comparar/Fuentes.h"
#include "app/comparar/TextoDeComparacion.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "session/Sesion.h"

namespace
{

void EscribirComparados(const comparar::Comparados &comparados)
{
    Escribir(stdout, "De: " + comparados.antes.Titulo());
    Escribir(stdout, "A:  " + comparados.despues.Titulo());
    for (const QString &renglon : comparar::Renglones(comparados.comparacion))
        Escribir(stdout, renglon);
    for (const QString &aviso : comparados.antes.avisos + comparados.despues.avisos)
        Escribir(stdout, aviso);
    if (const int folios = comparados.comparacion.folios; folios > 0)
        Escribir(stdout, "Con otro folio: " + Cuantos(folios, "servicio.", "servicios."));
    Escribir(stdout, comparar::Resumen(comparados.comparacion));
}

} // namespace

int CompararPlanes(const Argumentos &argumentos)
{
    const auto comparado = [&] {
        ExigirBase(argumentos);
        const auto conexion = AbrirBase(argumentos);
        const auto una = comparar::Fuente::Leer(*conexion, argumentos.claves.at(0));
        const auto otra = comparar::Fuente::Leer(*conexion, argumentos.claves.at(1));
        const comparar::Comparados comparados = comparar::CompararFuentes(*conexion, una, otra);
        EscribirComparados(comparados);
        return comparados.comparacion.SonIguales() ? salida::Hecho : salida::Fallido;
    };
    try {
        return comparado();
    } catch (const SinAcceso &error) {
        Reportar(error.Descripcion(), error.Detalles());
    } catch (const qvx::ErrorEjecucion &error) {
        Reportar(error.Descripcion());
    }
    return salida::MalUso; // 1 says that they differ
}

void MostrarImportacion(qvx::Conexion &conexion, const Argumentos &argumentos)
{
    try {
        EscribirComparados(comparar::CompararConDocumento(conexion, argumentos.archivo));
    } catch (const qvx::ErrorEjecucion &error) {
        Escribir(stdout, "No se podría importar. " + error.Descripcion());
    }
}
