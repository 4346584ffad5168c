#include "plan/EsquemaServidor.h"

#include "data/BaseAbierta.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Servidor.h"
#include "plan/Formas.h"
#include "plan/Guion.h"

#include <QSqlError>

namespace qvx
{

namespace
{

// Codes of the server.
const QString EsquemaInexistente = "3F000";
const QString TablaInexistente = "42P01";
const QString SinPermiso = "42501";
const QString ClaveRepetida = "23505";

// Seconds that one step may take: it goes through all the rows that are there.
constexpr int EsperaDelEsquema = 3600;

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

// The server lets nobody write who does not say the version that he knows.
BaseAbierta Abrir(const Servidor &servidor, BaseAbierta::Rechazo rechazar)
{
    return {servidor.Controlador({{"quorvex.esquema", QString::number(VersionEsquema)}}), std::move(rechazar)};
}

// Who lacks a right here is the administrator. orden: what he is about to do to the schema.
BaseAbierta AbrirParaCambiar(const Servidor &servidor, const QString &orden)
{
    return Abrir(servidor.ConEspera(EsperaDelEsquema), [servidor, orden](const QSqlError &error) {
        const QString codigo = error.nativeErrorCode();
        const QString motivo = DialectoPostgres()->Explicar(error);
        if (codigo == SinPermiso)
            Rechazar(servidor,
                     "no deja " + orden + " el esquema al usuario " + servidor.Usuario()
                         + ": lo hace el dueño de la base de datos, con derecho de crear roles. (" + motivo + ")",
                     SinPermiso);
        if (codigo == EsquemaInexistente || codigo == TablaInexistente)
            Rechazar(servidor, error);
        if (codigo == ClaveRepetida)
            Rechazar(servidor,
                     "no se pudo " + orden
                         + ": otra persona lo hizo al mismo tiempo. Repita la orden para ver cómo quedó.",
                     codigo);
        // Lost on its way the commit may have been done.
        if ((codigo.isEmpty() || codigo == CodigoNoResponde) && error.type() != QSqlError::ConnectionError)
            Rechazar(servidor, "no se pudo " + orden + ": se perdió la conexión. Repita la orden para ver cómo quedó. ("
                                   + motivo + ")");
        Rechazar(servidor, "no se pudo " + orden + ": quedó como estaba. " + motivo, codigo);
    });
}

int VersionDelServidor(BaseAbierta &base)
{
    return base.Valor("SELECT Es_Version FROM dbo.Esquema").toInt();
}

// Raises the error of a version that nothing can be done with.
void RevisarQueSeConoce(int version, const Servidor &servidor)
{
    if (version > VersionEsquema)
        Rechazar(servidor, "es de una versión más reciente de Quorvex: actualice el programa.");
    if (version < VersionMasVieja)
        Rechazar(servidor, "es de una versión de Quorvex que este programa ya no lee.");
}

void RevisarVersion(BaseAbierta &base, const Servidor &servidor)
{
    const int version = VersionDelServidor(base);
    RevisarQueSeConoce(version, servidor);
    if (version < VersionEsquema)
        Rechazar(servidor, QString("es de la versión %1 de Quorvex y este programa usa la %2: su administrador la "
                                   "actualiza con --actualizar-esquema.")
                               .arg(QString::number(version), QString::number(VersionEsquema)));
}

void DarPermisos(BaseAbierta &base)
{
    base.Ejecutar(Guion("postgres/permisos.sql", Motor::Servidor));
}

void DarPasosEnServidor(BaseAbierta &base, int desde)
{
    base.Ejecutar("SET LOCAL search_path = dbo, pg_temp");
    for (const QString &guion : GuionesDesde(desde, Motor::Servidor))
        base.Ejecutar(Guion(guion, Motor::Servidor));
}

CambioDeEsquema Terminar(BaseAbierta &base, int antes)
{
    const QString pueden = base.Valor("SELECT has_function_privilege('quorvex_lectores', 'lo_create(oid)', 'EXECUTE') "
                                      "OR has_function_privilege('quorvex_lectores', 'pg_advisory_lock(bigint)', "
                                      "'EXECUTE')");
    base.Ejecutar("COMMIT");
    return {antes, pueden == "true"};
}

// Whoever holds the row of a plan's type holds the plan; its xmax is his transaction.
Reserva ReservaDePlan()
{
    return {"SELECT Reservar_Plan(?, false)",
            "SELECT usename FROM Plan_Reserva JOIN pg_locks ON locktype = 'transactionid' AND granted "
            "AND transactionid = Plan_Reserva.xmax JOIN pg_stat_activity USING (pid) WHERE Te_Cve_Tipo_Equipo = ?",
            "SELECT Reservar_Plan(?, true)"};
}

// Without naming the column: of what is there already nobody needs to read it.
Constancia ConstanciaDeTransaccion()
{
    return {"INSERT INTO Desenlace (Ds_Ficha) VALUES (?)",
            "INSERT INTO Desenlace (Ds_Ficha) VALUES (?) ON CONFLICT DO NOTHING"};
}

} // namespace

std::unique_ptr<Conexion> AbrirServidor(const Servidor &servidor)
{
    BaseAbierta base = Abrir(servidor, [servidor](const QSqlError &error) { Rechazar(servidor, error); });
    RevisarVersion(base, servidor);
    return std::make_unique<Conexion>(
        base.Entregar(), DialectoPostgres(),
        std::make_unique<Formas>(Motor::Servidor, ReservaDePlan(), ConstanciaDeTransaccion()));
}

CambioDeEsquema CrearEsquema(const Servidor &servidor, bool conEjemplos)
{
    BaseAbierta base = AbrirParaCambiar(servidor, "crear");
    base.Ejecutar("BEGIN");
    if (base.Valor("SELECT to_regclass('dbo.esquema') IS NOT NULL") == "true") {
        RevisarVersion(base, servidor);
        return {VersionEsquema, false};
    }
    DarPasosEnServidor(base, 0); // whoever creates it at the same time waits at its first statement, and is told
    base.Ejecutar(Guion("catalogos.sql", Motor::Servidor));
    if (conEjemplos)
        base.Ejecutar(Guion("ejemplos.sql", Motor::Servidor));
    DarPermisos(base);
    base.Ejecutar(QString("INSERT INTO Esquema (Es_Version) VALUES (%1)").arg(VersionEsquema));
    return Terminar(base, 0);
}

CambioDeEsquema ActualizarEsquema(const Servidor &servidor)
{
    BaseAbierta base = AbrirParaCambiar(servidor, "actualizar");
    base.Ejecutar("BEGIN");
    const QString duenio = base.Valor("SELECT quote_ident(pg_get_userbyid(nspowner)) FROM pg_namespace "
                                      "WHERE nspname = 'dbo'");
    if (base.Valor("SELECT pg_has_role(session_user, nspowner, 'MEMBER') FROM pg_namespace WHERE nspname = 'dbo'")
        == "false")
        Rechazar(servidor,
                 "no deja actualizar el esquema al usuario " + servidor.Usuario() + ": lo hace su dueño, " + duenio
                     + ".",
                 SinPermiso);
    // Another administrator, and whoever asks for the version to open the database, wait here; below, whoever is
    // saving is waited for.
    base.Ejecutar("LOCK TABLE dbo.Esquema IN ACCESS EXCLUSIVE MODE");
    const int antes = VersionDelServidor(base);
    RevisarQueSeConoce(antes, servidor);
    base.Ejecutar("LOCK TABLE dbo.Tipo_Equipo_Parte, dbo.Plan_Mantenimiento, dbo.Plan_Mantenimiento_Detalle, "
                  "dbo.Registro_Cambio, dbo.Bitacora IN ACCESS EXCLUSIVE MODE");
    // What a superuser makes is the owner's all the same.
    base.Ejecutar("SET LOCAL ROLE " + duenio);
    DarPasosEnServidor(base, antes);
    base.Ejecutar(QString("UPDATE Esquema SET Es_Version = %1").arg(VersionEsquema));
    base.Ejecutar("SET LOCAL ROLE NONE");
    DarPermisos(base);
    return Terminar(base, antes);
}

QString OperadorDelServidor(Conexion &conexion)
{
    return conexion.Execute("SELECT CAST(session_user AS text) AS Operador")["Operador"];
}

QDateTime HoraDelServidor(Conexion &conexion)
{
    const auto hora = conexion.Execute(PreguntaDeHora);
    return QDateTime::fromString(hora["Hora"], Qt::ISODate);
}

} // namespace qvx
