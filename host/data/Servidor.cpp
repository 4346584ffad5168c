#include "data/Servidor.h"

#include "data/BaseAbierta.h"
#include "data/ClienteServidor.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Instalador.h"
#include "plan/Formas.h"

#include <QRegularExpression>
#include <QSqlDatabase>

namespace qvx
{

namespace
{

// Codes of the server.
const QString EsquemaInexistente = "3F000";
const QString TablaInexistente = "42P01";
const QString SinPermiso = "42501";

// Those that an address need not name. A server that went away is noticed by the kernel, a lock that is not given ends
// the wait, and names mean the schema's own objects and nothing that somebody else may have put before them.
const Servidor::Opciones Predeterminadas{
    {"connect_timeout", "10"}, {"keepalives_idle", "30"},     {"keepalives_interval", "10"},
    {"keepalives_count", "3"}, {"tcp_user_timeout", "20000"}, {"application_name", "quorvex"},
};
const QString OpcionesDeSesion =
    "-c search_path=dbo,pg_temp -c lock_timeout=10s -c standard_conforming_strings=on -c client_min_messages=error";

[[noreturn]] void Rechazar(const Servidor &servidor, const QString &motivo, const QString &codigo = {})
{
    throw ErrorEjecucion(errores::Datos, "La base de datos " + servidor.Nombre() + " " + motivo, {}, codigo);
}

[[noreturn]] void Rechazar(const Servidor &servidor, const QSqlError &error)
{
    const QString codigo = error.nativeErrorCode();
    if (codigo == EsquemaInexistente || codigo == TablaInexistente)
        Rechazar(servidor, "no tiene el esquema de Quorvex. Lo crea su administrador con --crear-esquema.", codigo);
    if (codigo == SinPermiso)
        Rechazar(servidor,
                 "no da permiso al usuario " + servidor.Usuario()
                     + ". Su administrador se lo da con el rol quorvex_planificadores.",
                 codigo);
    Rechazar(servidor, "no se puede usar: " + DialectoPostgres()->Explicar(error), codigo);
}

BaseAbierta Abrir(const Servidor &servidor, BaseAbierta::Rechazo rechazar)
{
    const auto preparar = [&](QSqlDatabase &base) { servidor.Preparar(base); };
    return BaseAbierta("QPSQL", preparar, std::move(rechazar));
}

BaseAbierta Abrir(const Servidor &servidor)
{
    return Abrir(servidor, [servidor](const QSqlError &error) { Rechazar(servidor, error); });
}

// Who lacks a right here is the administrator.
BaseAbierta AbrirParaCrear(const Servidor &servidor)
{
    return Abrir(servidor, [servidor](const QSqlError &error) {
        if (error.nativeErrorCode() == SinPermiso)
            Rechazar(servidor,
                     "no deja crear el esquema al usuario " + servidor.Usuario()
                         + ": lo crea el dueño de la base de datos, con derecho de crear roles. ("
                         + DialectoPostgres()->Explicar(error) + ")",
                     SinPermiso);
        Rechazar(servidor, error);
    });
}

void Sembrar(BaseAbierta &base, bool conEjemplos)
{
    base.Ejecutar("SET search_path = dbo, pg_temp");
    base.Ejecutar(BaseAbierta::Guion("postgres/esquema.sql"));
    base.Ejecutar(BaseAbierta::Guion("catalogos.sql"));
    if (conEjemplos)
        base.Ejecutar(BaseAbierta::Guion("ejemplos.sql"));
    base.Ejecutar(BaseAbierta::Guion("postgres/permisos.sql"));
    base.Ejecutar(QString("INSERT INTO Esquema (Es_Version) VALUES (%1)").arg(VersionEsquema));
}

// Raises the error of a version that is not this program's.
void RevisarVersion(BaseAbierta &base, const Servidor &servidor)
{
    const int version = base.Valor("SELECT Es_Version FROM dbo.Esquema").toInt();
    if (version > VersionEsquema)
        Rechazar(servidor, "es de una versión más reciente de Quorvex: actualice el programa.");
    if (version < VersionEsquema)
        Rechazar(servidor, "es de una versión de Quorvex que este programa ya no lee.");
}

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

void Servidor::Preparar(QSqlDatabase &base) const
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
        QString citado = valor;
        citado.replace(QLatin1Char('\\'), "\\\\").replace(QLatin1Char('\''), "\\'");
        partes.append(nombre + "='" + citado + "'");
    }
    base.setConnectOptions(partes.join(QLatin1Char(' ')));
}

Servidor::Prueba Servidor::Probar() const
{
    return Cliente().Probar(opciones);
}

std::unique_ptr<Conexion> AbrirServidor(const Servidor &servidor)
{
    BaseAbierta base = Abrir(servidor);
    RevisarVersion(base, servidor);
    return std::make_unique<Conexion>(base.Entregar(), DialectoPostgres(), std::make_unique<Formas>());
}

bool CrearEsquema(const Servidor &servidor, bool conEjemplos)
{
    BaseAbierta base = AbrirParaCrear(servidor);
    base.Ejecutar("BEGIN");
    base.Ejecutar("SELECT pg_advisory_xact_lock(580)"); // two who create at the same time
    if (base.Valor("SELECT to_regclass('dbo.esquema') IS NOT NULL") == "true") {
        RevisarVersion(base, servidor);
        return false;
    }
    Sembrar(base, conEjemplos);
    base.Ejecutar("COMMIT");
    return true;
}

QString OperadorDelServidor(Conexion &conexion)
{
    return conexion.Execute("SELECT CAST(session_user AS text) AS Operador")["Operador"];
}

QDateTime HoraDelServidor(Conexion &conexion)
{
    const auto hora = conexion.Execute("SELECT CAST(clock_timestamp() AS timestamp(0)) AS Hora");
    return QDateTime::fromString(hora["Hora"], Qt::ISODate);
}

} // namespace qvx
