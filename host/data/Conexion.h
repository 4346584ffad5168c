#pragma once

#include "data/Dialecto.h"
#include "data/Lexico.h"
#include "data/Recordset.h"
#include "data/Reglas.h"
#include "data/Traza.h"
#include "system/Exporta.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QHash>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <deque>
#include <functional>
#include <memory>

namespace qvx
{
class Adelanto;
class ErrorEjecucion;
class Numeracion;
struct Familia;
struct PreguntaDeNumero;
} // namespace qvx

namespace QVX_EXPORTA qvx
{

// The one way to the database. Statements stay as they were composed; one at a time, and only SELECT, INSERT, UPDATE,
// DELETE. Every failure is an ErrorEjecucion with the engine's own text. A connection that was lost is an error of the
// running statement; the next one finds a new connection or says why not.
class Conexion
{
public:
    // Takes an open database, and whoever knows its tables. Every statement is appended to the trace file ("" : none),
    // one per line: row count, statement, transaction marks.
    Conexion(const QSqlDatabase &base, std::unique_ptr<Dialecto> dialecto, std::unique_ptr<Reglas> reglas,
             const QString &traza = qEnvironmentVariable("QVX_TRAZA"));
    ~Conexion();
    Conexion(const Conexion &) = delete;
    Conexion &operator=(const Conexion &) = delete;

    // A change of what a history is kept of has a transaction of its own when none is open.
    Recordset Execute(const QString &sql);
    // A statement of the host's own, whose values take the places of its "?" in their order: numbers as numbers, all
    // else as text. The text is the program's, with no value in it, and so any shape of the four verbs is allowed.
    Recordset Execute(const QString &sql, const QVariantList &valores);
    // Is called before each statement.
    void AlEjecutar(std::function<void()> aviso) { alEjecutar = std::move(aviso); }
    // Is called before the engine begins a transaction, or changes something outside of one: nothing is locked and
    // nothing is read then. It raises nothing.
    void AntesDeEscribir(std::function<void()> aviso) { antesDeEscribir = std::move(aviso); }

    // Is told, in a sentence for the person, what there is to know of a change that was saved: that the answer was lost
    // and the change found saved, or that the engine has it in one place alone. Nothing is open then.
    void AlAvisar(std::function<void(const QString &)> aviso) { alAvisar = std::move(aviso); }

    // A failed statement dooms its transaction: the engine takes it back at once, and until RollbackTrans every
    // statement and the commit fail. The embedded engine begins its own with the first statement that writes, or reads
    // what transactions keep to themselves; it raises an ErrorDeComienzo when another program writes: that stands for
    // the one of BeginTrans.
    void BeginTrans();
    void CommitTrans();
    // Without a transaction it does nothing.
    void RollbackTrans();
    // Some changes of a transaction go to a far engine one behind the other, and none is waited for. Waits for them
    // here, and raises the first one's error. All that tells something does so first: the commit, a query that the
    // engine answers, a message, and an error of another statement or of the program's.
    void Asentar();

    // Makes a table that is this connection's own, where the host gathers rows, or empties it; false where the engine
    // has none. It goes with the transaction in which it was made, when that is taken back. Raises data errors.
    bool TablaPropia(const QString &nombre, const QString &columnas);
    // For SinDisparadores.
    bool Disparadores(bool activos) { return dialecto->Disparadores(base, activos); }

    // The text of the engine's last error as messages show it, and what it means to the person, "" when that is not
    // known.
    struct Fallo {
        QString texto;
        QString aclaracion;
    };
    const Fallo &UltimoFallo() const { return fallo; }

    // Whether nothing can be changed: on a copy that follows a server, or where that was asked for. BeginTrans then
    // raises a data error, as each change does.
    bool SoloLectura() const { return dialecto->SoloLectura(base); }
    bool EnTransaccion() const { return estado != Estado::Libre; }
    const Reglas &Conocedor() const { return *reglas; }
    Reglas &Conocedor() { return *reglas; }
    // Takes back a transaction that its event left open, and logs it.
    void CerrarAbandonada();

    // What one event of the application reads is of one moment: a plan that others change meanwhile is exported, and
    // shown, as it was when the event began to read. Nothing stays open on the server after the event, or after the
    // first one inside it: a form may stay open for hours.
    void EntrarEnEvento() { ++eventos; }
    void SalirDeEvento();
    // Likewise from here to there, whatever events there are in between.
    void EmpezarMomento();
    void TerminarMomento();

private:
    enum class Estado { Libre, Abierta, Condenada };
    struct Preparada {
        QSqlQuery consulta;
        std::shared_ptr<const QStringList> campos;
        Conocida conocida;
        std::shared_ptr<const Familia> familia;
        std::shared_ptr<const PreguntaDeNumero> pregunta;
    };
    // A line of the trace that waits behind a change whose answer is not here.
    struct PorSaber {
        QString marca; // "" of the change itself
        QString sql;
    };

    Recordset Correr(const QString &sql, const std::function<Sentencia()> &analizar);
    std::shared_ptr<Preparada> Preparar(const Sentencia &sentencia, const QString &sql);
    Recordset Leer(Preparada &preparada, const QString &sql);
    Recordset Tomar(Preparada &preparada, const QString &sql);
    Recordset Dar(const Recordset &filas, const QString &sql);
    bool PuedeAdelantar(const Preparada &preparada) const;
    std::optional<Recordset> Saber(const Preparada &preparada, const Sentencia &sentencia, const QString &sql);
    bool PuedeContar() const;
    std::optional<Recordset> HoraSabida() const;
    void AnotarHora(const Recordset &respuesta);
    void OlvidarLoCambiado(const Preparada &preparada, const Sentencia &sentencia);
    void AlContestar(const Preparada &preparada, const Sentencia &sentencia, const Recordset &respuesta);
    static Recordset UnRenglon();
    void AnotarContestadas(const QList<int> &afectadas);
    bool Aplazar(const Preparada &preparada, const Sentencia &sentencia, const QString &sql);
    Recordset LeerFamilia(const QString &texto, const QVariantList &valores, const QString &sql);
    void OlvidarLoLeido();
    void ExigirEscritura() const;
    void Estrenar();
    QString Confirmar();
    void Avisar(const QString &aviso);
    void EmpezarSola();
    void TerminarSola();
    void Registrar(const Conocida &conocida, const Sentencia &sentencia);
    void Cerrar();
    void EjecutarOrden(const SentenciaConValores &orden);
    void Reservar(const QString &clave);
    QVariant Preguntar(const QString &orden, const QString &clave);
    void Disponer(bool lectura);
    void AbrirLectura();
    void CerrarLectura();
    void MostrarAlMotor(const QString &sql);
    void Ordenar(const QString &orden);
    bool PuedeEsperar(const QString &sql) const;
    void Comenzar();
    void AnotarComienzo();
    void Condenar(const ErrorEjecucion &error);
    void Deshacer();
    void Retirar(const QString &nota);
    void AsegurarAbierta();
    [[noreturn]] void Rechazar(const QSqlError &error, const QString &sql, bool desenlaceIncierto = false);
    void Anotar(const QString &marca, const QString &sql);

    QSqlDatabase base;
    std::unique_ptr<Dialecto> dialecto;
    std::unique_ptr<Reglas> reglas;
    QHash<QString, std::shared_ptr<Preparada>> preparadas; // by shape; the host's own behind a mark
    QSet<QString> reservadas;                              // keys of what the transaction keeps to itself
    std::optional<Traza> traza;
    Estado estado = Estado::Libre;
    bool porComenzar = false; // the engine does not know of the transaction yet
    bool comienzoAnotado = false;
    bool sola = false;        // the transaction is one statement's own, which nobody sees
    bool haCambiado = false;  // it holds a change
    bool registrando = false; // and one of what a history is kept of
    int eventos = 0;
    int momentos = 0;
    bool leyendo = false;
    QString motivoCondena;
    Fallo fallo;
    std::function<void()> alEjecutar;
    std::function<void()> antesDeEscribir;
    std::function<void(const QString &)> alAvisar;
    std::unique_ptr<Adelanto> adelanto;     // none where it is switched off
    QSet<QString> cambiadas;                // tables that the transaction has changed
    std::unique_ptr<Numeracion> numeracion; // likewise
    Recordset hora;                         // the engine's, when it was asked last
    QDateTime horaPropia;                   // and this machine's
    QElapsedTimer desdeLaHora;
    std::deque<PorSaber> porSaber; // empty where nothing is waited for
};

} // namespace qvx
