// What became of a commit whose answer was lost.

#include "servidor/Enlace.h"

#include <chrono>
#include <thread>

namespace qvx
{

namespace
{

// Of one attempt's steps: the library takes no fewer for each of the server's places.
constexpr std::chrono::seconds Paso{2};
// Past the deadline of an answer.
constexpr std::chrono::seconds Prorroga{5};
constexpr std::chrono::milliseconds Pausa{250};

// One that takes changes: what another has may be old.
Servidor::Opciones DeUnIntento(const Servidor::Opciones &opciones)
{
    const QString paso = QString::number(Paso.count());
    Servidor::Opciones otras = opciones;
    otras.removeIf(
        [](const auto &opcion) { return opcion.first == "connect_timeout" || opcion.first == "target_session_attrs"; });
    return otras
           + Servidor::Opciones{
               {"connect_timeout", paso}, {"target_session_attrs", "read-write"}, {Servidor::Espera, paso}};
}

} // namespace

// Where it waits for a copy of the server, the copy is not there. While a server comes back, or another one takes its
// place, nobody answers.
std::optional<bool> Enlace::SeConfirmo(const QByteArray &buscar, const QElapsedTimer &desde)
{
    const auto lugares = Opcion("host").count(QLatin1Char(',')) + 1;
    const auto ultimo = std::chrono::seconds{segundos} + Prorroga - Paso * (lugares + 1);
    Enlace otro(DeUnIntento(opciones));
    otro.sinOpciones = sinOpciones;
    for (;;) {
        otro.tregua = QDeadlineTimer(0);
        if (otro.Abrir("-c synchronous_commit=local"))
            if (const Respuesta respuesta = otro.Correr(buscar)) {
                tregua = QDeadlineTimer(0);
                return QByteArray(PQcmdTuples(respuesta.get())).toInt() == 0;
            }
        if (std::chrono::milliseconds{desde.elapsed()} + Pausa >= ultimo)
            break;
        std::this_thread::sleep_for(Pausa);
    }
    tregua = otro.tregua;
    return std::nullopt;
}

} // namespace qvx
