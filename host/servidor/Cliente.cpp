// The server's client library, as the host's library sees it.

#include "data/ClienteServidor.h"
#include "data/ErrorEjecucion.h"
#include "servidor/Controlador.h"
#include "servidor/DialectoPostgres.h"

#include <libpq-fe.h>

namespace qvx
{

namespace
{

using ListaDeOpciones = std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)>;

class ClientePq : public ClienteServidor
{
public:
    Servidor::Opciones LeerDireccion(const QString &direccion) const override
    {
        char *error = nullptr;
        const ListaDeOpciones leidas(PQconninfoParse(direccion.toUtf8().constData(), &error), PQconninfoFree);
        if (!leidas) {
            const QString motivo = QString::fromUtf8(error).trimmed();
            PQfreemem(error);
            throw ErrorEjecucion(errores::Datos, "La dirección del servidor no es válida: " + motivo);
        }
        Servidor::Opciones opciones;
        for (const PQconninfoOption *opcion = leidas.get(); opcion->keyword; ++opcion)
            if (opcion->val)
                opciones.append({QString::fromUtf8(opcion->keyword), QString::fromUtf8(opcion->val)});
        return opciones;
    }

    QString UsuarioPredeterminado() const override
    {
        const ListaDeOpciones predeterminadas(PQconndefaults(), PQconninfoFree);
        for (const PQconninfoOption *opcion = predeterminadas.get(); opcion && opcion->keyword; ++opcion)
            if (qstrcmp(opcion->keyword, "user") == 0)
                return QString::fromUtf8(opcion->val);
        return {};
    }

    Servidor::Prueba Probar(const Servidor::Opciones &opciones, std::unique_ptr<QSqlDriver> &abierto) const override
    {
        auto controlador = std::make_unique<ControladorPq>();
        controlador->Disponer(opciones, {});
        const bool entro = controlador->Entrar();
        const Enlace &enlace = controlador->SuEnlace();
        if (entro) {
            abierto = std::move(controlador);
            return {Servidor::Acceso::Abierto, {}};
        }
        if (PQconnectionNeedsPassword(enlace.Pq()))
            return {Servidor::Acceso::PideContrasena, {}};
        // Also one that was not accepted.
        return {PQconnectionUsedPassword(enlace.Pq()) ? Servidor::Acceso::PideContrasena : Servidor::Acceso::Rechazado,
                enlace.UltimoFallo().texto};
    }

    std::unique_ptr<QSqlDriver> Controlador(const Servidor::Opciones &opciones, const Servidor::Opciones &ajustes,
                                            std::unique_ptr<QSqlDriver> abierto) const override
    {
        if (!abierto)
            abierto = std::make_unique<ControladorPq>();
        static_cast<ControladorPq &>(*abierto).Disponer(opciones, ajustes);
        return abierto;
    }

    std::unique_ptr<Dialecto> NuevoDialecto() const override { return NuevoDialectoPostgres(); }

    QString VersionDelCliente() const override
    {
        constexpr int PorMayor = 10000;
        return QString("%1.%2").arg(PQlibVersion() / PorMayor).arg(PQlibVersion() % PorMayor);
    }
};

} // namespace

} // namespace qvx

extern "C" Q_DECL_EXPORT const qvx::ClienteServidor *qvx_cliente_servidor()
{
    static const qvx::ClientePq cliente;
    return &cliente;
}
