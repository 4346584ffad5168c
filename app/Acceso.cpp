#include "app/Acceso.h"

#include "app/Argumentos.h"
#include "app/DialogoEntrada.h"
#include "app/Reporte.h"
#include "app/respaldo/CopiaDelDia.h"
#include "data/Conexion.h"
#include "plan/Instalador.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"

#include <QFileInfo>

using qvx::Servidor;

namespace
{

[[noreturn]] void Rechazar(const Servidor &servidor, const QString &motivo)
{
    throw SinAcceso("No se pudo entrar a la base de datos " + servidor.Nombre() + ".", motivo);
}

// Nobody is there to be asked.
void EntrarSinPreguntar(const Servidor &servidor)
{
    const auto [acceso, motivo] = servidor.Probar();
    if (acceso == Servidor::Acceso::PideContrasena && motivo.isEmpty())
        Rechazar(servidor, "El servidor pide la contraseña de " + servidor.Usuario()
                               + ": póngala en la variable PGPASSWORD o en el archivo de contraseñas.");
    if (acceso != Servidor::Acceso::Abierto)
        Rechazar(servidor, motivo);
}

bool EntrarPreguntando(Servidor &servidor)
{
    const auto [acceso, motivo] = ProbarEnEspera(servidor);
    if (acceso == Servidor::Acceso::Rechazado)
        Rechazar(servidor, motivo);
    return acceso == Servidor::Acceso::Abierto || DialogoEntrada(servidor, motivo).exec() == QDialog::Accepted;
}

} // namespace

void ExigirBase(const Argumentos &argumentos)
{
    if (!argumentos.servidor && !QFileInfo::exists(argumentos.baseDatos))
        throw qvx::ErrorEjecucion(qvx::errores::Datos, "La base de datos «" + argumentos.baseDatos + "» no existe.");
}

std::unique_ptr<qvx::Conexion> AbrirBase(const Argumentos &argumentos)
{
    if (!argumentos.servidor)
        return qvx::AbrirBaseDeDatos(argumentos.baseDatos, !argumentos.sinEjemplos);
    EntrarSinPreguntar(*argumentos.servidor);
    auto conexion = qvx::AbrirServidor(*argumentos.servidor);
    conexion->AlAvisar([](const QString &aviso) { Escribir(stderr, aviso); });
    return conexion;
}

std::unique_ptr<qvx::Conexion> AbrirBaseConVentana(const Argumentos &argumentos)
{
    if (!argumentos.servidor)
        return AbrirBase(argumentos);
    Servidor servidor = *argumentos.servidor;
    if (!EntrarPreguntando(servidor))
        return nullptr;
    return qvx::AbrirServidor(servidor);
}

qvx::CambioDeEsquema CambiarEsquema(const Argumentos &argumentos)
{
    EntrarSinPreguntar(*argumentos.servidor);
    return argumentos.crearEsquema ? qvx::CrearEsquema(*argumentos.servidor, argumentos.conEjemplos)
                                   : qvx::ActualizarEsquema(*argumentos.servidor);
}

QString OperadorDe(const Argumentos &argumentos, qvx::Conexion &conexion)
{
    const QString operador = argumentos.servidor ? qvx::OperadorDelServidor(conexion) : argumentos.operador;
    if (const QString error = Argumentos::RevisarOperador(operador); !error.isEmpty())
        throw qvx::ErrorEjecucion(qvx::errores::Datos, error);
    return operador;
}

std::unique_ptr<qvx::Sesion> IniciarSesion(const Argumentos &argumentos, std::unique_ptr<qvx::Conexion> conexion,
                                           std::unique_ptr<qvx::Interaccion> interaccion)
{
    qvx::Conexion &base = *conexion; // lives as long as the session
    const QString operador = OperadorDe(argumentos, base);
    if (!argumentos.servidor) {
        auto sesion = std::make_unique<qvx::Sesion>(std::move(conexion), operador, std::move(interaccion));
        respaldo::CopiarCadaDia(*sesion, argumentos.baseDatos, [](const QString &motivo) { Escribir(stderr, motivo); });
        return sesion;
    }
    return std::make_unique<qvx::Sesion>(std::move(conexion), operador, std::move(interaccion),
                                         [&base] { return qvx::HoraDelServidor(base); });
}
