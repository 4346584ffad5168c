// The server's client library, as the host's library sees it.

#include "data/ClienteServidor.h"
#include "data/ErrorEjecucion.h"
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

    Servidor::Prueba Probar(const Servidor::Opciones &opciones) const override
    {
        const std::unique_ptr<PGconn, decltype(&PQfinish)> enlace(Conectar(opciones), PQfinish);
        if (PQstatus(enlace.get()) == CONNECTION_OK)
            return {Servidor::Acceso::Abierto, {}};
        if (PQconnectionNeedsPassword(enlace.get()))
            return {Servidor::Acceso::PideContrasena, {}};
        // Tried with and without TLS, it says the same twice.
        QStringList motivo = QString::fromUtf8(PQerrorMessage(enlace.get())).trimmed().split(QLatin1Char('\n'));
        motivo.removeDuplicates();
        // Also one that was not accepted.
        return {PQconnectionUsedPassword(enlace.get()) ? Servidor::Acceso::PideContrasena : Servidor::Acceso::Rechazado,
                motivo.join(QLatin1Char('\n'))};
    }

    std::unique_ptr<Dialecto> NuevoDialecto() const override { return NuevoDialectoPostgres(); }

    QString VersionDelCliente() const override
    {
        constexpr int PorMayor = 10000;
        return QString("%1.%2").arg(PQlibVersion() / PorMayor).arg(PQlibVersion() % PorMayor);
    }

private:
    static PGconn *Conectar(const Servidor::Opciones &opciones)
    {
        std::vector<QByteArray> textos;
        for (const auto &[nombre, valor] : opciones) {
            textos.push_back(nombre.toUtf8());
            textos.push_back(valor.toUtf8());
        }
        std::vector<const char *> nombres;
        std::vector<const char *> valores;
        for (std::size_t i = 0; i < textos.size(); i += 2) {
            nombres.push_back(textos[i].constData());
            valores.push_back(textos[i + 1].constData());
        }
        nombres.push_back(nullptr);
        valores.push_back(nullptr);
        return PQconnectdbParams(nombres.data(), valores.data(), 0);
    }
};

} // namespace

} // namespace qvx

extern "C" Q_DECL_EXPORT const qvx::ClienteServidor *qvx_cliente_servidor()
{
    static const qvx::ClientePq cliente;
    return &cliente;
}
