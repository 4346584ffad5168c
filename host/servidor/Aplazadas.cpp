// Changes that are sent and not waited for: the server works on them while the program goes on.

#include "servidor/Enlace.h"

#include "servidor/Valores.h"

#include <chrono>

namespace qvx
{

namespace
{

// Without an answer. Then the program waits for half of them: the progress that it shows is not far ahead of the work.
constexpr int MaximoEnCamino = 2000;
// That the socket has not taken.
constexpr qsizetype MaximoPorEnviar = qsizetype{1024} * 1024;
// That go together.
constexpr int EnUnEnvio = 32;

} // namespace

bool Enlace::Aplazar(const QByteArray &texto, const QVariantList &valores, QList<int> &afectadas)
{
    const auto preparada = preparadas.constFind(texto);
    if (preparada == preparadas.constEnd() || !porEnviar.isEmpty() || !EstaAbierto() || aplazadas.fallida)
        return false;
    const auto textos = Textos(valores, preparada->parametros);
    if (!textos || (PQpipelineStatus(pq) == PQ_PIPELINE_OFF && PQenterPipelineMode(pq) != 1)
        || !Enviar(preparada->nombre, *textos))
        return false;
    ++aplazadas.enCamino;
    for (const QByteArray &uno : *textos)
        aplazadas.octetos += uno.size();
    Avanzar();
    afectadas.append(std::exchange(contestadas, {}));
    return true;
}

// What the socket takes and gives without waiting, unless too much is on its way.
void Enlace::Avanzar()
{
    const bool demasiadas = aplazadas.enCamino >= MaximoEnCamino;
    const bool demasiado = aplazadas.octetos >= MaximoPorEnviar;
    if (!demasiadas && !demasiado && aplazadas.enCamino % EnUnEnvio != 0)
        return;
    if (demasiadas)
        PQsendFlushRequest(pq);
    if (demasiado)
        Esperar(QDeadlineTimer(std::chrono::seconds{segundos}), false);
    if (!EstaAbierto())
        return;
    if (PQflush(pq) == 0)
        aplazadas.octetos = 0;
    PQconsumeInput(pq);
    while (aplazadas.enCamino > 0 && !aplazadas.fallida && EstaAbierto()
           && (PQisBusy(pq) == 0 || (demasiadas && aplazadas.enCamino > MaximoEnCamino / 2)))
        if (EsperarRespuesta())
            Contestar({PQgetResult(pq), PQclear});
}

bool Enlace::Asentar(QList<int> &afectadas)
{
    if (aplazadas.enCamino == 0 && PQpipelineStatus(pq) == PQ_PIPELINE_OFF)
        return true;
    if (EstaAbierto() && PQpipelineSync(pq) != 1) {
        Anotar();
        Cerrar();
    }
    for (bool sigue = true; sigue && EsperarRespuesta();) { // of a lost connection there is one more to take
        const Respuesta respuesta(PQgetResult(pq), PQclear);
        sigue = PQresultStatus(respuesta.get()) != PGRES_PIPELINE_SYNC && EstaAbierto();
        Contestar(respuesta);
    }
    if (EstaAbierto())
        PQexitPipelineMode(pq);
    else if (pq && !aplazadas.fallida)
        Anotar();
    const bool bien = EstaAbierto() && !aplazadas.fallida;
    afectadas.append(std::exchange(contestadas, {}));
    aplazadas = {};
    return bien;
}

// Each answer has the whole time: a server that works its way through many responds.
bool Enlace::EsperarRespuesta()
{
    return Esperar(QDeadlineTimer(std::chrono::seconds{segundos}));
}

// The first failure counts; those behind it were not tried.
void Enlace::Contestar(const Respuesta &respuesta)
{
    if (!respuesta)
        return;
    switch (PQresultStatus(respuesta.get())) {
    case PGRES_COMMAND_OK:
    case PGRES_TUPLES_OK:
        --aplazadas.enCamino;
        contestadas.append(QByteArray(PQcmdTuples(respuesta.get())).toInt());
        break;
    case PGRES_FATAL_ERROR:
        if (!std::exchange(aplazadas.fallida, true))
            fallo = FalloDe(respuesta.get());
        break;
    default:
        break;
    }
}

} // namespace qvx
