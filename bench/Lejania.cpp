#include "bench/Lejania.h"

#include <QtGlobal>
#include <arpa/inet.h>
#include <chrono>
#include <deque>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace
{

using Reloj = std::chrono::steady_clock;

// What was said, and is not there yet.
struct EnCamino {
    Reloj::time_point llegada;
    int destino = -1;
    std::vector<char> bytes; // none for the end
};

sockaddr_in DelEquipo(int puerto)
{
    return {AF_INET, htons(static_cast<in_port_t>(puerto)), {htonl(INADDR_LOOPBACK)}, {}};
}

int SinEsperas(int enchufe)
{
    const int si = 1;
    setsockopt(enchufe, IPPROTO_TCP, TCP_NODELAY, &si, sizeof si);
    return enchufe;
}

int Conectar(int puerto)
{
    const int enchufe = socket(AF_INET, SOCK_STREAM, 0);
    const sockaddr_in sitio = DelEquipo(puerto);
    if (connect(enchufe, reinterpret_cast<const sockaddr *>(&sitio), sizeof sitio) != 0)
        qFatal("Sin servidor en el puerto %d", puerto);
    return SinEsperas(enchufe);
}

void Entregar(const EnCamino &dicho)
{
    std::size_t van = 0;
    while (van < dicho.bytes.size()) {
        const ssize_t dados = send(dicho.destino, dicho.bytes.data() + van, dicho.bytes.size() - van, MSG_NOSIGNAL);
        if (dados <= 0)
            return; // it went away
        van += static_cast<std::size_t>(dados);
    }
    if (dicho.bytes.empty())
        shutdown(dicho.destino, SHUT_RDWR);
}

} // namespace

Lejania::Lejania(int puerto, int vuelta) : entrada(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in sitio = DelEquipo(0);
    socklen_t largo = sizeof sitio;
    auto *general = reinterpret_cast<sockaddr *>(&sitio);
    if (bind(entrada, general, largo) != 0 || listen(entrada, SOMAXCONN) != 0
        || getsockname(entrada, general, &largo) != 0)
        qFatal("Sin puerto para la red");
    propio = ntohs(sitio.sin_port);
    hilo = std::thread([this, puerto, vuelta] { Pasar(puerto, vuelta); });
}

Lejania::~Lejania()
{
    termina = true;
    hilo.join();
    close(entrada);
}

void Lejania::Pasar(int servidor, int vuelta)
{
    constexpr int SinPrisa = 10;
    const std::chrono::microseconds ida{vuelta * 500};
    std::vector<int> puntas; // each connection's two, one beside the other
    std::deque<EnCamino> camino;
    while (!termina) {
        std::vector<pollfd> todos{{entrada, POLLIN, 0}};
        for (const int punta : puntas)
            todos.push_back({punta, POLLIN, 0});
        poll(todos.data(), todos.size(), camino.empty() ? SinPrisa : 0);
        for (; !camino.empty() && camino.front().llegada <= Reloj::now(); camino.pop_front())
            Entregar(camino.front());
        for (std::size_t i = 1; i < todos.size(); ++i) {
            if (todos[i].revents == 0)
                continue;
            std::vector<char> bytes(65536);
            const ssize_t leidos = read(puntas[i - 1], bytes.data(), bytes.size());
            bytes.resize(leidos > 0 ? static_cast<std::size_t>(leidos) : 0);
            if (bytes.empty())
                puntas[i - 1] = -1; // poll leaves it out
            const std::size_t otra = (i - 1) ^ 1U;
            if (puntas[otra] >= 0)
                camino.push_back({Reloj::now() + ida, puntas[otra], std::move(bytes)});
        }
        if (todos[0].revents != 0) {
            puntas.push_back(SinEsperas(accept(entrada, nullptr, nullptr)));
            puntas.push_back(Conectar(servidor));
        }
    }
}
