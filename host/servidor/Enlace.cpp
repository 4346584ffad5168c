#include "servidor/Enlace.h"

#include "data/Dialecto.h"
#include "servidor/Valores.h"

#include <QElapsedTimer>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <poll.h>
#include <thread>
#include <utility>
#include <vector>

namespace qvx
{

namespace
{

// The server keeps what was prepared; past so many all of it goes at once.
constexpr int MaximoPreparadas = 512;
// Of one process, that wait for a server which does not take them either.
constexpr int MaximoCancelaciones = 8;
// Shorter than anybody takes to read that the server does not respond, and to give the next command.
constexpr std::chrono::seconds Tregua{1};

// As values are read here, whatever the address, the user or the database set.
const QString FormaDeLosValores = " -c datestyle=ISO -c bytea_output=hex";

std::atomic<int> cancelaciones{0};

// On a thread of its own: it makes a connection, for which the library waits without limit. It touches nothing but its
// own socket, and may be left waiting when the process ends.
void CancelarAparte(PGcancel *cancelacion)
{
    if (cancelacion && ++cancelaciones <= MaximoCancelaciones) {
        std::thread([cancelacion] {
            constexpr int Cabida = 256;
            char error[Cabida];
            PQcancel(cancelacion, error, Cabida);
            PQfreeCancel(cancelacion);
            --cancelaciones;
        }).detach();
        return;
    }
    if (cancelacion)
        --cancelaciones;
    PQfreeCancel(cancelacion);
}

QString Segundos(qint64 segundos)
{
    return QString::number(segundos) + (segundos == 1 ? " segundo" : " segundos");
}

} // namespace

void Enlace::PonerOpciones(const Servidor::Opciones &todas)
{
    opciones.clear();
    for (const auto &opcion : todas)
        if (opcion.first == Servidor::Espera)
            segundos = opcion.second.toInt();
        else
            opciones.append(opcion);
}

// The library tries each of the server's addresses for connect_timeout.
bool Enlace::Abrir(const QString &deSesion)
{
    Cerrar();
    if (!tregua.hasExpired()) {
        fallo = {"El servidor no responde.", CodigoNoResponde};
        return false;
    }
    std::vector<QByteArray> textos{"client_encoding", "UTF8"};
    qint64 limite = 0;
    for (const auto &[nombre, valor] : opciones) {
        if (nombre == "client_encoding")
            continue;
        textos.push_back(nombre.toUtf8());
        textos.push_back((nombre == "options" ? valor + ' ' + deSesion + FormaDeLosValores : valor).toUtf8());
        if (nombre == "connect_timeout")
            limite = valor.toInt();
    }
    std::vector<const char *> nombres;
    std::vector<const char *> valores;
    for (std::size_t i = 0; i < textos.size(); i += 2) {
        nombres.push_back(textos[i].constData());
        valores.push_back(textos[i + 1].constData());
    }
    nombres.push_back(nullptr);
    valores.push_back(nullptr);
    QElapsedTimer reloj;
    reloj.start();
    pq = PQconnectdbParams(nombres.data(), valores.data(), 0);
    if (EstaAbierto() && PQsetnonblocking(pq, 1) == 0)
        return true;
    Anotar();
    // Tried with and without TLS, it says the same twice.
    QStringList motivo = fallo.texto.split(QLatin1Char('\n'));
    motivo.removeDuplicates();
    fallo.texto = motivo.join(QLatin1Char('\n'));
    constexpr qint64 Mil = 1000;
    if (limite > 0 && reloj.elapsed() >= limite * Mil)
        NoResponde("no dio entrada en " + Segundos(reloj.elapsed() / Mil) + ". (" + motivo.constLast() + ")");
    return false;
}

void Enlace::Cerrar()
{
    PQfinish(pq);
    pq = nullptr;
    preparadas.clear();
}

Respuesta Enlace::Correr(const QByteArray &guion)
{
    return Recoger(PQsendQuery(pq, guion.constData()) == 1);
}

bool Enlace::Preparar(const QByteArray &texto)
{
    if (preparadas.contains(texto))
        return true;
    if (preparadas.size() >= MaximoPreparadas && PQtransactionStatus(pq) != PQTRANS_INERROR) {
        if (!Correr("DEALLOCATE ALL"))
            return false;
        preparadas.clear();
    }
    // Both in one crossing of the network.
    Preparada nueva{"q" + QByteArray::number(++contadas), {}};
    const bool enviada = PQenterPipelineMode(pq) == 1
                         && PQsendPrepare(pq, nueva.nombre.constData(), texto.constData(), 0, nullptr) == 1
                         && PQsendDescribePrepared(pq, nueva.nombre.constData()) == 1 && PQpipelineSync(pq) == 1;
    if (!enviada) {
        Anotar();
        Cerrar();
        return false;
    }
    if (!RecogerPreparacion(nueva))
        return false;
    preparadas.insert(texto, nueva);
    return true;
}

bool Enlace::RecogerPreparacion(Preparada &nueva)
{
    const QDeadlineTimer plazo(std::chrono::seconds{segundos});
    bool bien = true;
    for (bool acabada = false; !acabada;) {
        if (!Esperar(plazo))
            return false;
        const Respuesta respuesta(PQgetResult(pq), PQclear);
        switch (PQresultStatus(respuesta.get())) {
        case PGRES_PIPELINE_SYNC:
            acabada = true;
            break;
        case PGRES_COMMAND_OK:
            for (int i = 0; i < PQnparams(respuesta.get()); ++i)
                nueva.parametros.append(PQparamtype(respuesta.get(), i));
            break;
        case PGRES_FATAL_ERROR:
            if (respuesta && std::exchange(bien, false)) // of a lost connection the first word counts
                fallo = FalloDe(respuesta.get());
            acabada = !EstaAbierto();
            break;
        default:
            break;
        }
    }
    if (EstaAbierto() && PQexitPipelineMode(pq) == 1)
        return bien;
    if (bien)
        Anotar();
    return false;
}

Respuesta Enlace::Correr(const QByteArray &texto, const QVariantList &valores)
{
    if (!Preparar(texto))
        return {nullptr, PQclear};
    const Preparada &preparada = preparadas[texto];
    std::vector<QByteArray> textos;
    std::vector<const char *> lugares;
    textos.reserve(static_cast<std::size_t>(valores.size()));
    lugares.reserve(textos.capacity());
    for (qsizetype i = 0; i < valores.size(); ++i) {
        textos.push_back(ComoParametro(valores.at(i), preparada.parametros.value(i)));
        if (textos.back().contains('\0')) {
            fallo = {"Un texto contiene un carácter nulo", "22021"};
            return {nullptr, PQclear};
        }
    }
    for (const QByteArray &valor : textos)
        lugares.push_back(valor.isNull() ? nullptr : valor.constData());
    return Recoger(PQsendQueryPrepared(pq, preparada.nombre.constData(), static_cast<int>(lugares.size()),
                                       lugares.data(), nullptr, nullptr, 0)
                   == 1);
}

// Parsed on its own, since a text sent to be run may hold several statements.
bool Enlace::Examinar(const QByteArray &texto)
{
    return Recoger(PQsendPrepare(pq, "", texto.constData(), 0, nullptr) == 1) != nullptr;
}

// Until there is something to take, all the while sending what is still to be sent.
bool Enlace::Esperar(const QDeadlineTimer &plazo)
{
    for (;;) {
        const int falta = PQflush(pq);
        if (falta < 0 || !EstaAbierto() || (falta == 0 && PQisBusy(pq) == 0))
            return true; // what ended is told by the answer
        pollfd enchufe{PQsocket(pq), static_cast<short>(falta > 0 ? POLLIN | POLLOUT : POLLIN), 0};
        const int listo = poll(&enchufe, 1, static_cast<int>(plazo.remainingTime()));
        if (plazo.hasExpired() || (listo < 0 && errno != EINTR)) {
            CancelarAparte(PQgetCancel(pq));
            Cerrar();
            NoResponde("no contestó en " + Segundos(segundos) + ".");
            return false;
        }
        if (listo > 0 && (enchufe.revents & ~POLLOUT) != 0 && PQconsumeInput(pq) == 0)
            return true;
    }
}

// The last answer of those to come, or the first failure: of a lost connection, the server's farewell.
Respuesta Enlace::Recoger(bool enviada)
{
    if (!enviada) {
        Anotar();
        return {nullptr, PQclear};
    }
    const QDeadlineTimer plazo(std::chrono::seconds{segundos});
    Respuesta ultima(nullptr, PQclear);
    for (;;) {
        if (!Esperar(plazo))
            return {nullptr, PQclear};
        Respuesta respuesta(PQgetResult(pq), PQclear);
        if (!respuesta)
            return Juzgar(std::move(ultima));
        if (PQresultStatus(ultima.get()) != PGRES_FATAL_ERROR || !ultima)
            ultima = std::move(respuesta);
        if (const auto como = PQresultStatus(ultima.get()); como == PGRES_COPY_IN || como == PGRES_COPY_OUT) {
            fallo = {"El servidor quiere copiar archivos", "0A000"}; // nobody here goes on with that
            Cerrar();
            return {nullptr, PQclear};
        }
    }
}

Respuesta Enlace::Juzgar(Respuesta respuesta)
{
    const auto como = PQresultStatus(respuesta.get());
    if (respuesta && (como == PGRES_COMMAND_OK || como == PGRES_TUPLES_OK || como == PGRES_EMPTY_QUERY))
        return respuesta;
    if (respuesta)
        fallo = FalloDe(respuesta.get());
    else
        Anotar();
    return {nullptr, PQclear};
}

void Enlace::NoResponde(const QString &como)
{
    fallo = {"El servidor no responde: " + como, CodigoNoResponde};
    tregua.setRemainingTime(Tregua);
}

void Enlace::Anotar()
{
    fallo = {QString::fromUtf8(PQerrorMessage(pq)).trimmed(), {}};
}

} // namespace qvx
