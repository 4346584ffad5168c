#include "data/Servidor.h"

#include "data/ClienteServidor.h"
#include "data/Dialecto.h"
#include "data/ErrorEjecucion.h"

#include <QRegularExpression>
#include <QSqlDriver>

namespace qvx
{

namespace
{

// Those that an address need not name. A server that went away is noticed by the kernel, a lock that is not given ends
// the wait, and names mean the schema's own objects and nothing that somebody else may have put before them.
const Servidor::Opciones Predeterminadas{
    {"connect_timeout", "10"}, {"keepalives_idle", "30"},     {"keepalives_interval", "10"},
    {"keepalives_count", "3"}, {"tcp_user_timeout", "20000"}, {"application_name", "quorvex"},
    {Servidor::Espera, "30"},
};
const QString OpcionesDeSesion =
    QString("-c search_path=dbo,pg_temp -c lock_timeout=%1s -c standard_conforming_strings=on "
            "-c client_min_messages=error")
        .arg(SegundosDeEspera);

constexpr int MayorEspera = 3600;

// The address is never repeated when it carries one, nor is what libpq has against it.
bool LlevaContrasena(const QString &direccion)
{
    static const QRegularExpression trasElUsuario("^[a-z]+://[^/@\\[]*:(?!\\d*/)[^@]*@");
    static const QRegularExpression entreLasOpciones("[?&](ssl)?password=");
    return trasElUsuario.match(direccion).hasMatch() || entreLasOpciones.match(direccion).hasMatch();
}

// This system's own option, which libpq does not know. Null where the address has none.
QString QuitarEspera(QString &direccion)
{
    static const QRegularExpression opcion("([?&])espera=([^&]*)(&|$)");
    const auto hallada = opcion.match(direccion);
    if (!hallada.hasMatch())
        return {};
    bool entero = false;
    const int segundos = hallada.captured(2).toInt(&entero);
    if (!entero || segundos < 1 || segundos > MayorEspera)
        throw ErrorEjecucion(errores::Datos, QString("La espera de la dirección del servidor es un número de segundos "
                                                     "de 1 a %1: «espera=30».")
                                                 .arg(MayorEspera));
    direccion.replace(hallada.capturedStart(), hallada.capturedLength(),
                      hallada.captured(3).isEmpty() ? QString() : hallada.captured(1));
    return QString::number(segundos);
}

} // namespace

Servidor::Servidor(const QString &direccion) : probado(std::make_shared<std::unique_ptr<QSqlDriver>>())
{
    if (LlevaContrasena(direccion))
        throw ErrorEjecucion(errores::Datos, "La dirección del servidor no puede llevar la contraseña.");
    if (!direccion.startsWith("postgresql://") && !direccion.startsWith("postgres://"))
        throw ErrorEjecucion(errores::Datos, "La dirección del servidor es postgresql://USUARIO@EQUIPO:PUERTO/BASE.");
    QString sinEspera = direccion;
    const QString espera = QuitarEspera(sinEspera);
    opciones = Cliente().LeerDireccion(sinEspera);
    if (!Opcion("password").isEmpty() || !Opcion("sslpassword").isEmpty())
        throw ErrorEjecucion(errores::Datos, "La dirección del servidor no puede llevar la contraseña.");
    if (!espera.isNull())
        Poner(Espera, espera);
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

void Servidor::setUsuario(const QString &usuario)
{
    Poner("user", usuario);
    probado = std::make_shared<std::unique_ptr<QSqlDriver>>();
}

void Servidor::setContrasena(const QString &contrasena)
{
    Poner("password", contrasena);
    probado = std::make_shared<std::unique_ptr<QSqlDriver>>();
}

Servidor::Prueba Servidor::Probar() const
{
    return Cliente().Probar(opciones, *probado);
}

std::unique_ptr<QSqlDriver> Servidor::Controlador(const Opciones &ajustes) const
{
    return Cliente().Controlador(opciones, ajustes, std::move(*probado));
}

Servidor Servidor::ConEspera(int segundos) const
{
    Servidor otro = *this;
    otro.Poner(Espera, QString::number(segundos));
    return otro;
}

} // namespace qvx
