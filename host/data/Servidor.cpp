#include "data/Servidor.h"

#include "data/ClienteServidor.h"
#include "data/Dialecto.h"
#include "data/ErrorEjecucion.h"

#include <QRegularExpression>
#include <QSqlDatabase>

namespace qvx
{

namespace
{

// Those that an address need not name. A server that went away is noticed by the kernel, a lock that is not given ends
// the wait, and names mean the schema's own objects and nothing that somebody else may have put before them.
const Servidor::Opciones Predeterminadas{
    {"connect_timeout", "10"}, {"keepalives_idle", "30"},     {"keepalives_interval", "10"},
    {"keepalives_count", "3"}, {"tcp_user_timeout", "20000"}, {"application_name", "quorvex"},
};
const QString OpcionesDeSesion =
    QString("-c search_path=dbo,pg_temp -c lock_timeout=%1s -c standard_conforming_strings=on "
            "-c client_min_messages=error")
        .arg(SegundosDeEspera);

// The address is never repeated when it carries one, nor is what libpq has against it.
bool LlevaContrasena(const QString &direccion)
{
    static const QRegularExpression trasElUsuario("^[a-z]+://[^/@\\[]*:(?!\\d*/)[^@]*@");
    static const QRegularExpression entreLasOpciones("[?&](ssl)?password=");
    return trasElUsuario.match(direccion).hasMatch() || entreLasOpciones.match(direccion).hasMatch();
}

} // namespace

Servidor::Servidor(const QString &direccion)
{
    if (LlevaContrasena(direccion))
        throw ErrorEjecucion(errores::Datos, "La dirección del servidor no puede llevar la contraseña.");
    if (!direccion.startsWith("postgresql://") && !direccion.startsWith("postgres://"))
        throw ErrorEjecucion(errores::Datos, "La dirección del servidor es postgresql://USUARIO@EQUIPO:PUERTO/BASE.");
    opciones = Cliente().LeerDireccion(direccion);
    if (!Opcion("password").isEmpty() || !Opcion("sslpassword").isEmpty())
        throw ErrorEjecucion(errores::Datos, "La dirección del servidor no puede llevar la contraseña.");
    Completar();
}

void Servidor::Completar()
{
    if (Opcion("dbname").isEmpty())
        throw ErrorEjecucion(errores::Datos, "La dirección del servidor no dice qué base de datos.");
    if (Usuario().isEmpty())
        setUsuario(Cliente().UsuarioPredeterminado());
    Poner("options", (OpcionesDeSesion + QLatin1Char(' ') + Opcion("options")).trimmed());
    for (const auto &[nombre, valor] : Predeterminadas)
        if (Opcion(nombre).isEmpty())
            Poner(nombre, valor);
}

QString Servidor::Opcion(const QString &nombre) const
{
    for (const auto &[presente, valor] : opciones)
        if (presente == nombre)
            return valor;
    return {};
}

void Servidor::Poner(const QString &nombre, const QString &valor)
{
    opciones.removeIf([&](const auto &opcion) { return opcion.first == nombre; });
    if (!valor.isEmpty())
        opciones.append({nombre, valor});
}

QString Servidor::Nombre() const
{
    const QString equipo = Opcion("host");
    return "«" + Base() + "»" + (equipo.isEmpty() ? QString() : " de " + equipo);
}

QString Servidor::Equipo() const
{
    const QString puerto = Opcion("port");
    const QString equipo = Opcion("host");
    return (equipo.isEmpty() ? QString("este equipo") : equipo) + (puerto.isEmpty() ? QString() : ":" + puerto);
}

void Servidor::Preparar(QSqlDatabase &base, const QString &deSesion) const
{
    base.setDatabaseName(Opcion("dbname"));
    base.setUserName(Usuario());
    base.setPassword(Opcion("password"));
    QStringList partes;
    for (const auto &[nombre, valor] : opciones) {
        if (nombre == "dbname" || nombre == "user" || nombre == "password")
            continue;
        // The toolkit takes ";" for a separator wherever it stands.
        if (valor.contains(QLatin1Char(';')))
            throw ErrorEjecucion(errores::Datos, "La dirección del servidor no puede llevar «;».");
        QString citado = nombre == "options" ? (valor + QLatin1Char(' ') + deSesion).trimmed() : valor;
        citado.replace(QLatin1Char('\\'), "\\\\").replace(QLatin1Char('\''), "\\'");
        partes.append(nombre + "='" + citado + "'");
    }
    base.setConnectOptions(partes.join(QLatin1Char(' ')));
}

Servidor::Prueba Servidor::Probar() const
{
    return Cliente().Probar(opciones);
}

} // namespace qvx
