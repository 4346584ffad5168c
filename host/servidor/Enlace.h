#pragma once

#include "data/Servidor.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QVariantList>
#include <functional>
#include <libpq-fe.h>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace qvx
{

using Respuesta = std::unique_ptr<PGresult, decltype(&PQclear)>;

// One connection to the server. Whatever is asked of it is answered within its deadline, or the connection ends and
// says that the server does not respond: the person's window waits for it.
class Enlace
{
public:
    // What went wrong last. A connection that was lost has no code, but for the deadline's.
    struct Fallo {
        QString texto;
        QString codigo; // SQLSTATE
    };

    // With libpq's options and Servidor::Espera, the deadline in seconds.
    explicit Enlace(const Servidor::Opciones &opciones) { PonerOpciones(opciones); }
    ~Enlace() { Cerrar(); }
    Enlace(const Enlace &) = delete;
    Enlace &operator=(const Enlace &) = delete;

    void PonerOpciones(const Servidor::Opciones &opciones);
    // deSesion: settings of the session ("-c NAME=VALUE"). Just after a deadline it is not tried: the statements that
    // follow in one procedure would each wait anew.
    bool Abrir(const QString &deSesion);
    // Just after that: whether what stands between here and the server, if anything does, leaves a session to itself.
    bool RevisarMediador(const QString &deSesion);
    // Whether the session may only look, as it was asked to or as the server says.
    bool SoloLee() const;
    void Cerrar();
    bool EstaAbierto() const { return PQstatus(pq) == CONNECTION_OK; }
    PGconn *Pq() const { return pq; }

    // A text of one or more statements; the last one's answer. Null for a failure, as the next ones. A BEGIN is good at
    // once: it goes with what comes next.
    Respuesta Correr(const QByteArray &guion);
    // Prepares a text with $1, $2, … once for the connection, and runs it.
    Respuesta Correr(const QByteArray &texto, const QVariantList &valores);
    // One statement that goes with what comes next, and again if that fails.
    void Anteponer(const QByteArray &sentencia) { porEnviar = sentencia; }
    bool EnTransaccion() const { return PorComenzar() || PQtransactionStatus(pq) == PQTRANS_INTRANS; }
    // Sends a change and waits for no answer: true when it is on its way, false when it has to be run, since its text
    // is not prepared yet or one before it has failed. Nothing else is asked for until they are settled. afectadas:
    // gains the rows that were changed by those whose answers have come, in their order.
    bool Aplazar(const QByteArray &texto, const QVariantList &valores, QList<int> &afectadas);
    // Waits until all that were sent so are answered; false for a failure. afectadas: likewise, up to that one.
    bool Asentar(QList<int> &afectadas);
    // Ends a transaction that only read. Nobody waits for the answer, which is there when the next statement is sent.
    bool TerminarLectura();
    // What the server warned of since this was asked last, "" for nothing.
    QString TomarAviso() { return std::exchange(aviso, {}); }
    // What became of a transaction whose commit was sent then and this connection lost. buscar, on a connection of its
    // own, changes no row where it is done. Nothing where no server that takes changes answers before the deadline is
    // over, and a little longer.
    std::optional<bool> SeConfirmo(const QByteArray &buscar, const QElapsedTimer &desde);
    // What the server says against a text, which is not run. Gives whether it says nothing.
    bool Examinar(const QByteArray &texto);

    const Fallo &UltimoFallo() const { return fallo; }

private:
    struct Preparada {
        QByteArray nombre;
        QList<Oid> parametros;
    };

    // Of the changes that were sent and not waited for.
    struct Aplazadas {
        int enCamino = 0;      // without an answer yet
        qsizetype octetos = 0; // given to the library since it had sent all
        bool fallida = false;
    };

    bool Esperar(const QDeadlineTimer &plazo, bool respuesta = true);
    bool EsperarRespuesta();
    std::optional<std::vector<QByteArray>> Textos(const QVariantList &valores, const QList<Oid> &tipos);
    bool Enviar(const QByteArray &nombre, const std::vector<QByteArray> &valores);
    void Avanzar();
    void Contestar(const Respuesta &respuesta);
    bool PorComenzar() const { return porEnviar.startsWith("BEGIN"); }
    QString Opcion(const char *nombre) const;
    void PonerEnSesion(const QString &ajustes);
    int Proceso();
    bool Recibir();
    Respuesta Nada() const;
    void Reponer(const QByteArray &antes);
    Respuesta Volar(const QByteArray &texto, const std::vector<QByteArray> &valores, bool correr);
    Respuesta Recoger(bool enviada);
    Respuesta RecogerVuelo(const std::function<void(int, const PGresult *)> &alLlegar);
    Respuesta Juzgar(Respuesta respuesta);
    void NoResponde(const QString &como);
    void Anotar();

    Servidor::Opciones opciones;
    int segundos = 0;
    bool sinOpciones = false; // settings go by a statement: a pooler takes none with the sign-in
    PGconn *pq = nullptr;
    QHash<QByteArray, Preparada> preparadas; // by text
    int contadas = 0;
    QByteArray porEnviar;
    bool porRecibir = false; // the answer to the end of a reading
    Aplazadas aplazadas;
    QList<int> contestadas; // the rows that those changed which are answered
    QDeadlineTimer tregua{0};
    Fallo fallo;
    QString aviso;
};

} // namespace qvx
