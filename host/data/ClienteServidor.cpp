#include "data/ClienteServidor.h"

#include "data/Dialecto.h"
#include "data/ErrorEjecucion.h"

#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <dlfcn.h>

namespace qvx
{

namespace
{

// Beside the library that this code stands in, whatever the working folder is. It stays loaded.
const ClienteServidor *Cargar()
{
    Dl_info propia{};
    if (!dladdr(reinterpret_cast<const void *>(&Cliente), &propia))
        throw ErrorEjecucion(errores::Datos, "No se conoce la carpeta del programa.");
    QLibrary libreria(QFileInfo(QFile::decodeName(propia.dli_fname)).absolutePath() + "/libqvx_servidor.so");
    const auto entrada = reinterpret_cast<FnClienteServidor>(libreria.resolve(EntradaClienteServidor));
    if (!entrada)
        throw ErrorEjecucion(errores::Datos,
                             "Para usar un servidor faltan bibliotecas: instale los paquetes libpq5 y libqt6sql6-psql, "
                             "o el programa completo. ("
                                 + libreria.errorString() + ")");
    return entrada();
}

} // namespace

const ClienteServidor &Cliente()
{
    static const ClienteServidor *const cliente = Cargar();
    return *cliente;
}

std::unique_ptr<Dialecto> DialectoPostgres()
{
    return Cliente().NuevoDialecto();
}

} // namespace qvx
