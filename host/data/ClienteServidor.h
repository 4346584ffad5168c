#pragma once

#include "data/Servidor.h"
#include "system/Exporta.h"

#include <QSqlDriver>

namespace QVX_EXPORTA qvx
{

class Dialecto;

// What only the server's own client library can do. It stands in a library beside this one, which is loaded when a
// server is first spoken of: two dozen others come along, and would slow every start on the embedded engine.
class ClienteServidor
{
public:
    virtual ~ClienteServidor() = default;
    // The options that an address names. Raises an ErrorEjecucion in Spanish for a text that is none.
    virtual Servidor::Opciones LeerDireccion(const QString &direccion) const = 0;
    // Who signs in when an address names nobody.
    virtual QString UsuarioPredeterminado() const = 0;
    // Signs in; abierto is then the driver of a connection that stands.
    virtual Servidor::Prueba Probar(const Servidor::Opciones &opciones, std::unique_ptr<QSqlDriver> &abierto) const = 0;
    // The toolkit's driver for a connection with these options and settings of its session; of one that stands
    // already, where that is given.
    virtual std::unique_ptr<QSqlDriver> Controlador(const Servidor::Opciones &opciones,
                                                    const Servidor::Opciones &ajustes,
                                                    std::unique_ptr<QSqlDriver> abierto) const = 0;
    virtual std::unique_ptr<Dialecto> NuevoDialecto() const = 0;
    // Of the client library: "15.8".
    virtual QString VersionDelCliente() const = 0;
};

// The one of this process. Raises an ErrorEjecucion in Spanish, which says what to install, when it cannot be loaded.
const ClienteServidor &Cliente();

// The only name that the library is asked for; the client lives as long as the process.
using FnClienteServidor = const ClienteServidor *(*)();
constexpr const char *EntradaClienteServidor = "qvx_cliente_servidor";

} // namespace qvx
