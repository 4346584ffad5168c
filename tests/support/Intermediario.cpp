#include "support/Intermediario.h"

#include <QByteArray>
#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace
{

int ConectarAlServidor()
{
    sockaddr_un sitio{AF_UNIX, {}};
    const QByteArray ruta = qgetenv("QVX_PRUEBA_SERVIDOR") + "/.s.PGSQL." + qgetenv("QVX_PRUEBA_PUERTO");
    qstrncpy(sitio.sun_path, ruta.constData(), sizeof sitio.sun_path);
    const int enchufe = socket(AF_UNIX, SOCK_STREAM, 0);
    if (connect(enchufe, reinterpret_cast<const sockaddr *>(&sitio), sizeof sitio) != 0)
        qFatal("%s: sin servidor", ruta.constData());
    return enchufe;
}

} // namespace

Intermediario::Intermediario() : entrada(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in sitio{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    socklen_t largo = sizeof sitio;
    auto *general = reinterpret_cast<sockaddr *>(&sitio);
    if (bind(entrada, general, largo) != 0 || listen(entrada, SOMAXCONN) != 0
        || getsockname(entrada, general, &largo) != 0)
        qFatal("Sin puerto para el intermediario");
    puerto = ntohs(sitio.sin_port);
    hilo = std::thread([this] { Pasar(); });
}

Intermediario::~Intermediario()
{
    termina = true;
    hilo.join();
    for (const int punta : puntas)
        close(punta);
    if (entrada >= 0)
        close(entrada);
}

QString Intermediario::Direccion(const QString &usuario, const QString &base, const QString &opciones) const
{
    return QString("postgresql://%1@127.0.0.1:%2/%3?%4").arg(usuario).arg(puerto).arg(base, opciones);
}

void Intermediario::Pasar()
{
    constexpr int Pausa = 10;
    while (!termina) {
        if (!recibe && entrada >= 0)
            close(std::exchange(entrada, -1));
        std::vector<pollfd> todos{{entrada, POLLIN, 0}};
        for (const int punta : puntas)
            todos.push_back({callado ? -1 : punta, POLLIN, 0});
        if (poll(todos.data(), todos.size(), Pausa) <= 0)
            continue;
        for (std::size_t i = 1; i < todos.size(); ++i) {
            char bytes[8192];
            const ssize_t leidos = todos[i].revents != 0 ? read(puntas[i - 1], bytes, sizeof bytes) : -1;
            const int otra = puntas[(i - 1) ^ 1U];
            if (leidos > 0)
                Contar(i - 1, QByteArray::fromRawData(bytes, static_cast<qsizetype>(leidos)));
            if (leidos > 0 && i % 2 != 0
                && QByteArray::fromRawData(bytes, static_cast<qsizetype>(leidos)).contains("COMMIT"))
                confirmada = true;
            if (leidos > 0 && !(pierde && confirmada && i % 2 == 0))
                send(otra, bytes, static_cast<std::size_t>(leidos), MSG_NOSIGNAL);
            else if (leidos == 0)
                shutdown(otra, SHUT_RDWR);
        }
        if (todos[0].revents != 0) {
            puntas.push_back(accept(entrada, nullptr, nullptr));
            puntas.push_back(ConectarAlServidor());
            espera.resize(puntas.size());
        }
    }
}

// The program's ends have the even places. It does not wait for the end of what it only read.
void Intermediario::Contar(std::size_t punta, const QByteArray &dicho)
{
    static const QByteArray finDeLectura("Q\0\0\0\rROLLBACK\0", 14);
    if (punta % 2 == 0)
        espera[punta] = espera[punta] || dicho != finDeLectura;
    else if (espera[punta - 1]) {
        espera[punta - 1] = false;
        ++cruces;
    }
}
