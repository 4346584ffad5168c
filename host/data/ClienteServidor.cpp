#include "data/ClienteServidor.h"

#include "data/BibliotecaAparte.h"
#include "data/Dialecto.h"

namespace qvx
{

const ClienteServidor &Cliente()
{
    static const ClienteServidor *const cliente = EntradaAparte<FnClienteServidor>(
        "libqvx_servidor.so", EntradaClienteServidor,
        "Para usar un servidor falta una biblioteca: instale el paquete libpq5, o el programa completo.")();
    return *cliente;
}

std::unique_ptr<Dialecto> DialectoPostgres()
{
    return Cliente().NuevoDialecto();
}

} // namespace qvx
