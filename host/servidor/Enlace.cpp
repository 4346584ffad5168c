#include "servidor/Enlace.h"

#include "data/Dialecto.h"
#include "servidor/Valores.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cmath>
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

void AlAdvertir(void *aviso, const PGresult *advertencia)
{
    if (qstrcmp(PQresultErrorField(advertencia, PG_DIAG_SEVERITY_NONLOCALIZED), "WARNING") == 0)
        *static_cast<QString *>(aviso) =
            QString::fromUtf8(PQresultErrorField(advertencia, PG_DIAG_MESSAGE_PRIMARY)).trimmed();
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

QString Enlace::Opcion(const char *nombre) const
{
    for (const auto &[presente, valor] : opciones)
        if (presente == QLatin1String(nombre))
            return valor;
    return {};
}

// The library tries each of the server's addresses for connect_timeout.
bool Enlace::Abrir(const QString &deSesion)
{
    Cerrar();
    aplazadas = {};
    contestadas.clear();
    if (!tregua.hasExpired()) {
        fallo = {"El servidor no responde.", CodigoNoResponde};
        return false;
    }
    std::vector<QByteArray> textos{"client_encoding", "UTF8"};
    qint64 limite = 0;
    for (const auto &[nombre, valor] : opciones) {
        if (nombre == "client_encoding")
            continue;
        if (nombre != "options" || !sinOpciones) {
            textos.push_back(nombre.toUtf8());
            textos.push_back((nombre == "options" ? valor + ' ' + deSesion + FormaDeLosValores : valor).toUtf8());
        }
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
    if (EstaAbierto() && PQsetnonblocking(pq, 1) == 0) {
        PQsetNoticeReceiver(pq, AlAdvertir, &aviso);
        if (sinOpciones)
            PonerEnSesion(deSesion + FormaDeLosValores);
        return true;
    }
    Anotar();
    if (!sinOpciones && fallo.texto.contains("unsupported startup parameter")) { // a pooler's own words
        sinOpciones = true;
        return Abrir(deSesion);
    }
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
    porEnviar.clear();
    porRecibir = false;
}

bool Enlace::TerminarLectura()
{
    if (PorComenzar()) {
        porEnviar.clear();
        return true;
    }
    porRecibir = EstaAbierto() && PQsendQuery(pq, "ROLLBACK") == 1 && PQflush(pq) >= 0;
    return porRecibir;
}

// False where the connection is lost, as the next statement would find.
bool Enlace::Recibir()
{
    return !std::exchange(porRecibir, false) || Recoger(true);
}

// What begins waits for what comes next, and goes with it; what is ended before that never was.
Respuesta Enlace::Correr(const QByteArray &guion)
{
    if (!Recibir())
        return {nullptr, PQclear};
    if (EstaAbierto() && porEnviar.isEmpty() && guion.startsWith("BEGIN")) {
        porEnviar = guion;
        return Nada();
    }
    if (EstaAbierto() && PorComenzar() && (guion == "COMMIT" || guion == "ROLLBACK")) {
        porEnviar.clear();
        return Nada();
    }
    if (guion.startsWith("BEGIN")) { // or what waits would be of the transaction, and be taken back with it
        const QByteArray antes = std::exchange(porEnviar, {});
        if (Recoger(PQsendQuery(pq, antes.constData()) == 1))
            return Correr(guion);
        Reponer(antes);
        return {nullptr, PQclear};
    }
    const QByteArray antes = std::exchange(porEnviar, {});
    Respuesta respuesta = Recoger(PQsendQuery(pq, (antes.isEmpty() ? guion : antes + ';' + guion).constData()) == 1);
    if (!respuesta)
        Reponer(antes);
    return respuesta;
}

Respuesta Enlace::Nada() const
{
    return {PQmakeEmptyPGresult(pq, PGRES_COMMAND_OK), PQclear};
}

// A setting went with what failed.
void Enlace::Reponer(const QByteArray &antes)
{
    if (EstaAbierto() && !antes.startsWith("BEGIN"))
        porEnviar = antes;
}

Respuesta Enlace::Correr(const QByteArray &texto, const QVariantList &valores)
{
    if (!Recibir())
        return {nullptr, PQclear};
    if (preparadas.size() >= MaximoPreparadas && !preparadas.contains(texto)
        && PQtransactionStatus(pq) != PQTRANS_INERROR) {
        if (!Correr("DEALLOCATE ALL"))
            return {nullptr, PQclear};
        preparadas.clear();
    }
    const bool fraccion = std::any_of(valores.begin(), valores.end(), [](const QVariant &valor) {
        return valor.typeId() == QMetaType::Double && valor.toDouble() != std::trunc(valor.toDouble());
    });
    if (fraccion && !preparadas.contains(texto) && !Volar(texto, {}, false))
        return {nullptr, PQclear};
    const auto textos = Textos(valores, preparadas.value(texto).parametros);
    return textos ? Volar(texto, *textos, true) : Respuesta(nullptr, PQclear);
}

std::optional<std::vector<QByteArray>> Enlace::Textos(const QVariantList &valores, const QList<Oid> &tipos)
{
    std::vector<QByteArray> textos;
    textos.reserve(static_cast<std::size_t>(valores.size()));
    for (qsizetype i = 0; i < valores.size(); ++i) {
        textos.push_back(ComoParametro(valores.at(i), tipos.value(i)));
        if (textos.back().contains('\0')) {
            fallo = {"Un texto contiene un carácter nulo", "22021"};
            return std::nullopt;
        }
    }
    return textos;
}

bool Enlace::Enviar(const QByteArray &nombre, const std::vector<QByteArray> &valores)
{
    std::vector<const char *> lugares;
    lugares.reserve(valores.size());
    for (const QByteArray &valor : valores)
        lugares.push_back(valor.isNull() ? nullptr : valor.constData());
    return PQsendQueryPrepared(pq, nombre.constData(), static_cast<int>(lugares.size()), lugares.data(), nullptr,
                               nullptr, 0)
           == 1;
}

// All in one crossing of the network: what waited to be sent, the preparing of a text that is new, and its running.
Respuesta Enlace::Volar(const QByteArray &texto, const std::vector<QByteArray> &valores, bool correr)
{
    const QByteArray antes = std::exchange(porEnviar, {});
    const bool nueva = !preparadas.contains(texto);
    Preparada preparada = nueva ? Preparada{"q" + QByteArray::number(++contadas), {}} : preparadas.value(texto);
    if (!nueva && antes.isEmpty())
        return Recoger(Enviar(preparada.nombre, valores));
    bool enviada = PQenterPipelineMode(pq) == 1;
    if (!antes.isEmpty())
        enviada = enviada && PQsendQueryParams(pq, antes.constData(), 0, nullptr, nullptr, nullptr, nullptr, 0) == 1;
    if (nueva)
        enviada = enviada && PQsendPrepare(pq, preparada.nombre.constData(), texto.constData(), 0, nullptr) == 1
                  && PQsendDescribePrepared(pq, preparada.nombre.constData()) == 1;
    enviada = enviada && (!correr || Enviar(preparada.nombre, valores)) && PQpipelineSync(pq) == 1;
    if (!enviada) {
        Anotar();
        Cerrar();
        return {nullptr, PQclear};
    }
    const int descripcion = antes.isEmpty() ? 1 : 2;
    Respuesta respuesta = RecogerVuelo([&](int cual, const PGresult *buena) {
        for (int i = 0; nueva && cual == descripcion && i < PQnparams(buena); ++i)
            preparada.parametros.append(PQparamtype(buena, i));
        if (nueva && cual == descripcion)
            preparadas.insert(texto, preparada);
    });
    if (!respuesta)
        Reponer(antes);
    return respuesta;
}

// Parsed on its own, since a text sent to be run may hold several statements.
bool Enlace::Examinar(const QByteArray &texto)
{
    return Recibir() && Recoger(PQsendPrepare(pq, "", texto.constData(), 0, nullptr) == 1);
}

// Until there is something to take, or at least all is sent; all the while sending what is still to be sent, and
// reading, or the server would stop to read.
bool Enlace::Esperar(const QDeadlineTimer &plazo, bool respuesta)
{
    for (;;) {
        const int falta = PQflush(pq);
        if (falta < 0 || !EstaAbierto() || (falta == 0 && (!respuesta || PQisBusy(pq) == 0)))
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

// Likewise of what went in one crossing. alLlegar: each good one, with its place.
Respuesta Enlace::RecogerVuelo(const std::function<void(int, const PGresult *)> &alLlegar)
{
    const QDeadlineTimer plazo(std::chrono::seconds{segundos});
    Respuesta ultima(nullptr, PQclear);
    bool bien = true;
    int buenas = 0;
    for (bool acabada = false; !acabada;) {
        if (!Esperar(plazo))
            return {nullptr, PQclear};
        Respuesta respuesta(PQgetResult(pq), PQclear);
        switch (PQresultStatus(respuesta.get())) {
        case PGRES_PIPELINE_SYNC:
            acabada = true;
            break;
        case PGRES_COMMAND_OK:
        case PGRES_TUPLES_OK:
            alLlegar(buenas++, respuesta.get());
            ultima = std::move(respuesta);
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
    const bool sigue = EstaAbierto() && PQexitPipelineMode(pq) == 1;
    if (bien && !sigue)
        Anotar();
    return bien && sigue ? std::move(ultima) : Respuesta(nullptr, PQclear);
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
