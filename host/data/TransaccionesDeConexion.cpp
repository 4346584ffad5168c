// A connection's transactions: how they begin, what they keep to themselves, how they end.

#include "data/Conexion.h"

#include "data/ErrorEjecucion.h"
#include "data/Lexico.h"

#include <QLoggingCategory>
#include <QSqlError>
#include <QUuid>

namespace qvx
{

Q_DECLARE_LOGGING_CATEGORY(registroDatos)

namespace
{

const QString SinReplica =
    "pero no se sabe que su réplica lo tenga, si la hay: si el servidor se pierde ahora, el cambio "
    "puede perderse con él. Avise a quien lo administra.";

} // namespace

void Conexion::BeginTrans()
{
    if (estado != Estado::Libre)
        throw ErrorEjecucion(errores::Datos, "Ya hay una transacción abierta");
    Disponer(false);
    ExigirEscritura();
    porComenzar = dialecto->ComienzaConLaPrimera();
    comienzoAnotado = !porComenzar;
    if (!porComenzar)
        Ordenar(dialecto->InicioDeTransaccion());
    OlvidarLoLeido();
    Estrenar();
}

// Before anybody is asked whether he wants what cannot be.
void Conexion::ExigirEscritura() const
{
    if (SoloLectura())
        throw ErrorEjecucion(
            errores::Datos,
            "Aquí solo se puede mirar: se entró con --lectura, o el servidor es la réplica de otro. Los "
            "cambios se hacen en el servidor principal.");
}

void Conexion::Estrenar()
{
    reservadas.clear();
    haCambiado = false;
    registrando = false;
    reglas->AlEmpezar();
    estado = Estado::Abierta;
}

// Whether a statement needs no transaction of the engine's yet. One that is none is told so when it runs.
bool Conexion::PuedeEsperar(const QString &sql) const
{
    try {
        const Sentencia sentencia = Analizar(sql);
        return sentencia.lectura && reglas->Conocer(sentencia.forma, dialecto->Funciones()).ajena;
    } catch (const ErrorEjecucion &) {
        return false;
    }
}

// The engine's own transaction, which waited for a statement that needs it: what came before, a document that was read,
// a catalogue, a question that was asked, held no lock.
void Conexion::Comenzar()
{
    if (antesDeEscribir)
        antesDeEscribir();
    try {
        QSqlQuery consulta(base);
        const QString orden = dialecto->InicioDeTransaccion();
        if (!consulta.exec(orden)) {
            Anotar("!", orden + "  <" + dialecto->Explicar(consulta.lastError()) + ">");
            Rechazar(consulta.lastError(), orden);
        }
        AnotarComienzo();
        OlvidarLoLeido();
        porComenzar = false;
    } catch (const ErrorEjecucion &error) {
        estado = Estado::Condenada;
        motivoCondena = error.Descripcion();
        throw ErrorDeComienzo(error);
    }
}

// The trace shows the transaction as the screens see it.
void Conexion::AnotarComienzo()
{
    if (!std::exchange(comienzoAnotado, true))
        Anotar("-", dialecto->InicioDeTransaccion());
}

void Conexion::CommitTrans()
{
    if (estado == Estado::Libre)
        throw ErrorEjecucion(errores::Datos, "No hay una transacción abierta");
    if (estado == Estado::Condenada)
        throw ErrorEjecucion(errores::Datos, "La transacción falló y debe deshacerse: " + motivoCondena);
    if (porComenzar)
        Comenzar();
    Asentar();
    try {
        // The engine would answer the commit of a transaction that it has taken back with a rollback.
        if (!dialecto->SigueEnTransaccion(base))
            throw ErrorEjecucion(errores::Datos, "El servidor deshizo la transacción: no se guardó nada.", "COMMIT");
        Cerrar();
        const QString aviso = Confirmar();
        Anotar("-", "COMMIT");
        OlvidarLoLeido();
        estado = Estado::Libre;
        Avisar(aviso);
    } catch (const ErrorEjecucion &error) {
        Condenar(error);
        throw;
    }
}

void Conexion::Condenar(const ErrorEjecucion &error)
{
    Deshacer();
    estado = Estado::Condenada;
    motivoCondena = error.Descripcion();
}

void Conexion::EmpezarSola()
{
    ExigirEscritura();
    const QString orden = dialecto->InicioDeTransaccion();
    QSqlQuery consulta(base);
    if (!consulta.exec(orden))
        Rechazar(consulta.lastError(), orden);
    Estrenar();
    sola = true;
}

void Conexion::TerminarSola()
{
    if (!sola)
        return;
    Cerrar();
    const QString aviso = Confirmar();
    sola = false;
    estado = Estado::Libre;
    Avisar(aviso);
}

// Ends the engine's transaction for good. Of one that is lost on its way the engine is asked what became of it.
QString Conexion::Confirmar()
{
    const auto &constancia = reglas->ComoConstar();
    const QString ficha = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const auto con = [&](QString sentencia) { return sentencia.replace(QLatin1Char('?'), '\'' + ficha + '\''); };
    const bool consta = constancia && haCambiado;
    QElapsedTimer desde;
    desde.start();
    QString aviso;
    const QSqlError error = dialecto->Confirmar(base, consta ? con(constancia->dejar) : QString(), aviso);
    if (!error.isValid())
        return aviso.isEmpty() ? QString()
                               : "El cambio quedó guardado en el servidor, " + SinReplica + " (" + aviso + ")";
    std::optional<bool> quedo;
    if (!base.isOpen() && consta)
        quedo = dialecto->SeConfirmo(base, con(constancia->buscar), desde);
    if (!quedo.value_or(false)) {
        if (!sola)
            Anotar("!", "COMMIT  <" + dialecto->Explicar(error) + ">");
        Rechazar(error, "COMMIT", !quedo);
    }
    preparadas.clear();
    const QString motivo = " (" + dialecto->Explicar(error) + ")";
    if (error.nativeErrorCode() == CodigoNoResponde) // it may have waited for its copy
        return "El servidor no contestó mientras guardaba. Se le preguntó de nuevo: el cambio quedó guardado en él, "
               + SinReplica + motivo;
    return "Se perdió la conexión con el servidor mientras guardaba. Se le preguntó de nuevo: el cambio quedó guardado."
           + motivo;
}

void Conexion::Avisar(const QString &aviso)
{
    if (aviso.isEmpty())
        return;
    qCWarning(registroDatos).noquote() << aviso;
    if (alAvisar)
        alAvisar(aviso);
}

void Conexion::RollbackTrans()
{
    Retirar({});
}

void Conexion::CerrarAbandonada()
{
    Retirar("ABANDONADA");
}

// Of a transaction that the engine would not begin there is nothing to take back, and nothing to tell.
void Conexion::Retirar(const QString &nota)
{
    try {
        Asentar();
    } catch (const ErrorEjecucion &) { // all is taken back, and that one is in the trace
    }
    const bool sinComenzar = porComenzar;
    const bool nunca = estado == Estado::Condenada && sinComenzar;
    if (estado == Estado::Abierta && sinComenzar)
        AnotarComienzo();
    if (!nota.isEmpty() && !nunca) {
        qCWarning(registroDatos) << "Se deshizo una transacción que su evento dejó abierta";
        Anotar("-", nota);
    }
    if (estado == Estado::Abierta)
        Deshacer();
    porComenzar = false;
    estado = Estado::Libre;
}

void Conexion::Ordenar(const QString &orden)
{
    QSqlQuery consulta(base);
    if (!consulta.exec(orden)) {
        Anotar("!", orden + "  <" + dialecto->Explicar(consulta.lastError()) + ">");
        Rechazar(consulta.lastError(), orden);
    }
    Anotar("-", orden);
}

// The engine may have taken the transaction back by itself (a full disk does that, and so does a lost connection);
// closing ends whatever is left.
void Conexion::Deshacer()
{
    OlvidarLoLeido();
    if (!sola)
        Anotar("-", "ROLLBACK");
    if (std::exchange(porComenzar, false))
        return;
    QSqlQuery consulta(base);
    if (base.isOpen() && consulta.exec("ROLLBACK"))
        return;
    preparadas.clear();
    base.close();
}

// What a transaction reads of what it keeps to itself stays so, the next keys are its own, and nobody else writes
// there.
void Conexion::Reservar(const QString &clave)
{
    if (reservadas.contains(clave))
        return;
    Asentar();
    const Reserva &reserva = *reglas->ComoReservar();
    if (!Preguntar(reserva.intento, clave).toBool()) {
        const QString ocupante = Preguntar(reserva.ocupante, clave).toString();
        try {
            Preguntar(reserva.espera, clave);
        } catch (const ErrorEjecucion &error) {
            if (!base.isOpen() || !dialecto->SeAgotoLaEspera(error.CodigoMotor()) || ocupante.isEmpty())
                throw;
            throw ErrorEjecucion(errores::Datos, reglas->Ocupado(ocupante, clave), error.Sentencia(),
                                 error.CodigoMotor());
        }
    }
    reservadas.insert(clave);
}

QVariant Conexion::Preguntar(const QString &orden, const QString &clave)
{
    QSqlQuery consulta(base);
    consulta.prepare(orden);
    consulta.bindValue(0, clave);
    if (!consulta.exec())
        Rechazar(consulta.lastError(), orden);
    return consulta.next() ? consulta.value(0) : QVariant();
}

} // namespace qvx
