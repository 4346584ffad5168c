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
    {"keepalives_idle", "30"},     {"keepalives_interval", "10"},   {"keepalives_count", "3"},
    {"tcp_user_timeout", "20000"}, {"application_name", "quorvex"}, {Servidor::Espera, "30"},
};
const QString OpcionesDeSesion =
    QString("-c search_path=dbo,pg_temp -c lock_timeout=%1s -c standard_conforming_strings=on "
            "-c client_min_messages=error")
        .arg(SegundosDeEspera);

constexpr int MayorEspera = 3600;

// Seconds for each of so many places of a server: the last one is come to before a person gives up.
QString EsperaDeEntrada(qsizetype lugares)
{
    constexpr qsizetype ParaTodos = 30;
    constexpr qsizetype ParaUno = 10;
    constexpr qsizetype Minima = 2;
    return QString::number(qMax(Minima, qMin(ParaUno, ParaTodos / lugares)));
}

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
        PonerSiFalta(nombre, valor);
    const auto lugares = Lugares().size();
    PonerSiFalta("connect_timeout", EsperaDeEntrada(lugares));
    if (lugares > 1) // the one that takes changes, whichever it is by now
        PonerSiFalta("target_session_attrs", "read-write");
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

void Servidor::PonerSiFalta(const QString &nombre, const QString &valor)
{
    if (Opcion(nombre).isEmpty())
        Poner(nombre, valor);
}

QString Servidor::Nombre() const
{
    const QString equipos = Opcion("host").split(QLatin1Char(',')).join(", ");
    return "«" + Base() + "»" + (equipos.isEmpty() ? QString() : " de " + equipos);
}

// One port may stand for all places.
QStringList Servidor::Lugares() const
{
    const QStringList equipos =
        (Opcion("host").isEmpty() ? Opcion("hostaddr") : Opcion("host")).split(QLatin1Char(','));
    const QStringList puertos = Opcion("port").split(QLatin1Char(','));
    QStringList lugares;
    for (qsizetype i = 0; i < equipos.size(); ++i) {
        const QString equipo = equipos.at(i).isEmpty() ? QString("este equipo") : equipos.at(i);
        const QString puerto = puertos.value(puertos.size() == 1 ? 0 : i);
        lugares.append(puerto.isEmpty() ? equipo : equipo + ':' + puerto);
    }
    return lugares;
}

QString Servidor::Equipo() const
{
    return Lugares().join(", ");
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

Servidor Servidor::DeSoloLectura() const
{
    Servidor otro = *this;
    otro.Poner("target_session_attrs", "prefer-standby");
    otro.Poner("options", Opcion("options") + " -c default_transaction_read_only=on");
    otro.probado = std::make_shared<std::unique_ptr<QSqlDriver>>();
    return otro;
}

Servidor Servidor::ConEspera(int segundos) const
{
    Servidor otro = *this;
    otro.Poner(Espera, QString::number(segundos));
    return otro;
}

} // namespace qvx
