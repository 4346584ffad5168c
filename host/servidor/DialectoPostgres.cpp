// The shared server's dialect. The server knows "dbo." functions itself.

#include "servidor/DialectoPostgres.h"

#include "servidor/Controlador.h"
#include "servidor/Resultado.h"

#include <QHash>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <poll.h>

namespace qvx
{

namespace
{

Enlace &EnlaceDe(const QSqlDatabase &base)
{
    return static_cast<ControladorPq *>(base.driver())->SuEnlace();
}

// Of the server's text its first line, without "ERROR:" and the code that the toolkit appends.
QString PrimerRenglon(const QString &texto)
{
    static const QRegularExpression rotulo("^[A-ZÁÉÍÓÚ]+:\\s+");
    static const QRegularExpression codigo("\\([0-9A-Z]{5}\\)$");
    return texto.section(QLatin1Char('\n'), 0, 0).remove(rotulo).remove(codigo).trimmed();
}

// Codes of the server.
const QString NoSeDio = "55P03";
const QString SinPermiso = "42501";
const QString Interbloqueo = "40P01";

class Postgres : public Dialecto
{
public:
    // To the embedded engine's LIKE upper and lower case are one. A sign before a value leaves open what it is.
    QString Reescribir(const QString &forma) const override
    {
        static const QRegularExpression parecido("\\bLIKE\\b", QRegularExpression::CaseInsensitiveOption);
        static const QRegularExpression negativo("(?<=[(,=])(\\s*)-\\s*\\?");
        return ReescribirComun(forma).replace(parecido, "ILIKE").replace(negativo, "\\1- CAST(? AS numeric)");
    }

    QString InicioDeTransaccion() const override { return "BEGIN"; }

    QString InicioDeLectura() const override { return "BEGIN ISOLATION LEVEL REPEATABLE READ, READ ONLY"; }

    bool TerminarLectura(const QSqlDatabase &base) const override { return EnlaceDe(base).TerminarLectura(); }

    QString Explicar(const QSqlError &error) const override
    {
        const QString codigo = error.nativeErrorCode();
        if (codigo == NoSeDio)
            return QString("Otra persona cambia los mismos datos y no terminó en %1 segundos. Inténtelo de nuevo más "
                           "tarde.")
                .arg(SegundosDeEspera);
        if (codigo == SinPermiso)
            return "Su usuario del servidor no tiene permiso para esto. (" + PrimerRenglon(Dialecto::Explicar(error))
                   + ")";
        if (codigo == Interbloqueo)
            return "Otra persona cambia los mismos planes al mismo tiempo. Inténtelo de nuevo.";
        return PrimerRenglon(Dialecto::Explicar(error));
    }

    ClaseDeFallo Clasificar(const QSqlError &error) const override
    {
        static const QHash<QString, ClaseDeFallo> clases{
            {"23505", ClaseDeFallo::ClaveRepetida}, {"42601", ClaseDeFallo::Apostrofo},
            {"25006", ClaseDeFallo::SoloLectura},   {"53100", ClaseDeFallo::DiscoLleno},
            {"58030", ClaseDeFallo::Disco},         {"23502", ClaseDeFallo::DatoInvalido},
            {"23514", ClaseDeFallo::DatoInvalido},  {"22P02", ClaseDeFallo::DatoInvalido},
            {"22003", ClaseDeFallo::DatoInvalido},  {"42P01", ClaseDeFallo::SinTablas},
            {"42703", ClaseDeFallo::SinTablas},     {"XX001", ClaseDeFallo::Danada},
        };
        return clases.value(error.nativeErrorCode(), ClaseDeFallo::Otra);
    }

    QSqlError Examinar(QSqlDatabase &base, const QString &sql) const override
    {
        Enlace &enlace = EnlaceDe(base);
        return enlace.Examinar(sql.toUtf8()) ? QSqlError() : ErrorDe(enlace, QSqlError::StatementError);
    }

    // Nothing is due on an idle connection: what there is to read is its end, perhaps after the server's farewell.
    bool SigueAbierta(const QSqlDatabase &base) const override
    {
        PGconn *enlace = EnlaceDe(base).Pq();
        if (!base.isOpen() || PQstatus(enlace) != CONNECTION_OK)
            return false;
        pollfd enchufe{PQsocket(enlace), POLLIN, 0};
        while (poll(&enchufe, 1, 0) > 0 && PQconsumeInput(enlace) == 1) {
        }
        return PQstatus(enlace) == CONNECTION_OK;
    }

    // The server says so by itself, also when that changes.
    bool SoloLectura(const QSqlDatabase &base) const override { return EnlaceDe(base).SoloLee(); }

    bool SigueEnTransaccion(const QSqlDatabase &base) const override { return EnlaceDe(base).EnTransaccion(); }

    // Sessions hear of errors alone, but for what the server says of a commit.
    QSqlError Confirmar(const QSqlDatabase &base, const QString &constancia, QString &aviso) const override
    {
        Enlace &enlace = EnlaceDe(base);
        const QString orden =
            constancia.isEmpty() ? "COMMIT" : "SET LOCAL client_min_messages = warning; " + constancia + "; COMMIT";
        if (!enlace.Correr(orden.toUtf8()))
            return ErrorDe(enlace, QSqlError::StatementError);
        aviso = enlace.TomarAviso();
        return {};
    }

    std::optional<bool> SeConfirmo(const QSqlDatabase &base, const QString &buscar,
                                   const QElapsedTimer &desde) const override
    {
        return EnlaceDe(base).SeConfirmo(buscar.toUtf8(), desde);
    }

    QStringList Funciones() const override
    {
        return Dialecto::Funciones() + QStringList{"TIMESTAMP", "CLOCK_TIMESTAMP", "TRIM_SCALE"};
    }

    bool EstaLejos() const override { return true; }

    bool Aplazar(const QSqlQuery &preparada, const QVariantList &valores, QList<int> &afectadas) const override
    {
        return static_cast<const ResultadoPq *>(preparada.result())->Aplazar(valores, afectadas);
    }

    QSqlError Asentar(const QSqlDatabase &base, QList<int> &afectadas) const override
    {
        Enlace &enlace = EnlaceDe(base);
        return enlace.Asentar(afectadas) ? QSqlError() : ErrorDe(enlace, QSqlError::StatementError);
    }

    bool SeAgotoLaEspera(const QString &codigo) const override { return codigo == NoSeDio; }
};

} // namespace

std::unique_ptr<Dialecto> NuevoDialectoPostgres()
{
    return std::make_unique<Postgres>();
}

} // namespace qvx
