#include "support/Intermediario.h"

#include <QFile>
#include <QtEndian>
#include <arpa/inet.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

void Comprobar(bool hecho, const char *que)
{
    if (!hecho)
        qFatal("Intermediario: %s: %s", que, qPrintable(qt_error_string()));
}

bool Enviar(int enchufe, const QByteArray &datos, int banderas = 0)
{
    for (qsizetype enviado = 0; enviado < datos.size();) {
        const auto n = send(enchufe, datos.constData() + enviado, static_cast<size_t>(datos.size() - enviado),
                            banderas | MSG_NOSIGNAL);
        if (n < 0)
            return false;
        enviado += n;
    }
    return true;
}

QByteArray Recibir(int enchufe)
{
    QByteArray datos(65536, Qt::Uninitialized);
    const auto n = recv(enchufe, datos.data(), static_cast<size_t>(datos.size()), 0);
    datos.resize(n > 0 ? n : 0);
    return datos;
}

int AlServidor()
{
    sockaddr_un direccion{};
    direccion.sun_family = AF_UNIX;
    const QByteArray ruta = qgetenv("QVX_PRUEBA_SERVIDOR") + "/.s.PGSQL." + qgetenv("QVX_PRUEBA_PUERTO");
    Comprobar(static_cast<size_t>(ruta.size()) < sizeof direccion.sun_path, "socket");
    qstrcpy(direccion.sun_path, ruta.constData());
    const int enchufe = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(enchufe, reinterpret_cast<const sockaddr *>(&direccion), sizeof direccion) == 0)
        return enchufe;
    close(enchufe);
    return -1;
}

} // namespace

Intermediario::Intermediario()
{
    Abrir();
}

Intermediario::~Intermediario()
{
    Cerrar();
}

void Intermediario::Abrir()
{
    sockaddr_in direccion{};
    direccion.sin_family = AF_INET;
    direccion.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    direccion.sin_port = htons(puerto);
    escucha = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int si = 1;
    setsockopt(escucha, SOL_SOCKET, SO_REUSEADDR, &si, sizeof si);
    Comprobar(bind(escucha, reinterpret_cast<const sockaddr *>(&direccion), sizeof direccion) == 0, "bind");
    Comprobar(listen(escucha, 8) == 0, "listen");
    socklen_t tamano = sizeof direccion;
    getsockname(escucha, reinterpret_cast<sockaddr *>(&direccion), &tamano);
    puerto = ntohs(direccion.sin_port);
    Comprobar(pipe2(salida, O_CLOEXEC) == 0, "pipe");
    hilo.reset(QThread::create([this] { Correr(); }));
    hilo->start();
}

void Intermediario::Cerrar()
{
    if (!hilo)
        return;
    close(salida[1]);
    hilo->wait();
    hilo.reset();
    close(salida[0]);
    close(escucha);
    for (const Enlace &enlace : enlaces) {
        close(enlace.cliente);
        close(enlace.servidor);
    }
    enlaces.clear();
    conexiones = 0;
}

void Intermediario::Armar(Falla falla, const QByteArray &texto, const std::function<void()> &mientras)
{
    const QMutexLocker candado(&cerrojo);
    armada = falla;
    buscado = texto;
    mientrasTanto = mientras;
}

bool Intermediario::Ocurrio() const
{
    const QMutexLocker candado(&cerrojo);
    return armada == Falla::Ninguna;
}

Intermediario::Falla Intermediario::Disparar(const QByteArray &sentencia)
{
    const QMutexLocker candado(&cerrojo);
    if (armada == Falla::Ninguna || !sentencia.contains(buscado))
        return Falla::Ninguna;
    return std::exchange(armada, Falla::Ninguna);
}

void Intermediario::Correr()
{
    for (;;) {
        std::vector<pollfd> puestos{{salida[0], POLLIN, 0}, {escucha, POLLIN, 0}};
        for (const Enlace &enlace : enlaces) {
            puestos.push_back({enlace.cliente, POLLIN, 0});
            puestos.push_back({enlace.servidor, POLLIN, 0});
        }
        if (poll(puestos.data(), puestos.size(), -1) < 0)
            continue;
        if (puestos[0].revents)
            return;
        for (auto i = enlaces.size(); i-- > 0;) {
            Enlace &enlace = enlaces[i];
            if ((puestos[2 * i + 2].revents && !DelCliente(enlace))
                || (puestos[2 * i + 3].revents && !DelServidor(enlace))) {
                close(enlace.cliente);
                close(enlace.servidor);
                enlaces.erase(enlaces.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        if (puestos[1].revents)
            Aceptar();
        conexiones = static_cast<int>(enlaces.size());
    }
}

void Intermediario::Aceptar()
{
    Enlace enlace;
    enlace.cliente = accept4(escucha, nullptr, nullptr, SOCK_CLOEXEC);
    if (enlace.cliente < 0)
        return;
    enlace.servidor = AlServidor();
    if (enlace.servidor < 0)
        close(enlace.cliente);
    else
        enlaces.push_back(enlace);
}

// The first whole message of what the client sent, "" while there is none. The one that begins a connection has no type
// before its length.
QByteArray Intermediario::Tomar(Enlace &enlace)
{
    const int antes = enlace.iniciado ? 1 : 0;
    if (enlace.pendiente.size() < antes + 4)
        return {};
    const auto tamano = antes + qFromBigEndian<qint32>(enlace.pendiente.constData() + antes);
    if (enlace.pendiente.size() < tamano)
        return {};
    const QByteArray mensaje = enlace.pendiente.left(tamano);
    enlace.pendiente.remove(0, tamano);
    enlace.iniciado = true;
    return mensaje;
}

// The text of the statement that a message carries out. Preparing one carries out nothing.
QByteArray Intermediario::Sentencia(Enlace &enlace, const QByteArray &mensaje)
{
    if (!mensaje.startsWith('Q'))
        return {};
    const QByteArray sql = mensaje.mid(5).chopped(1);
    const QList<QByteArray> palabras = sql.left(100).split(' ');
    if (palabras.value(0) == "PREPARE") {
        enlace.preparadas.insert(palabras.value(1), sql);
        return {};
    }
    return palabras.value(0) == "EXECUTE" ? enlace.preparadas.value(palabras.value(1)) + sql : sql;
}

bool Intermediario::Pasar(Enlace &enlace, const QByteArray &mensaje)
{
    if (enlace.perdido)
        return false;
    const Falla falla = enlace.iniciado ? Disparar(Sentencia(enlace, mensaje)) : Falla::Ninguna;
    if (falla == Falla::CortarAntes)
        return false;
    if (falla == Falla::Detener)
        mientrasTanto();
    else
        enlace.enCurso = falla;
    return Enviar(enlace.servidor, mensaje);
}

bool Intermediario::DelCliente(Enlace &enlace)
{
    const QByteArray datos = Recibir(enlace.cliente);
    enlace.pendiente += datos;
    for (QByteArray mensaje = Tomar(enlace); !mensaje.isEmpty(); mensaje = Tomar(enlace))
        if (!Pasar(enlace, mensaje))
            return false;
    return !datos.isEmpty();
}

bool Intermediario::DelServidor(Enlace &enlace)
{
    const QByteArray datos = Recibir(enlace.servidor);
    if (datos.isEmpty())
        return false;
    if (enlace.enCurso == Falla::Ninguna)
        return Enviar(enlace.cliente, datos);
    enlace.respuesta += datos;
    if (!enlace.respuesta.chopped(1).endsWith(QByteArray("Z\0\0\0\5", 5)))
        return true; // "ready for the next", with a letter for the transaction, ends an answer
    if (enlace.enCurso == Falla::CortarDurante)
        return false;
    if (enlace.enCurso == Falla::CortarDespues) {
        Enviar(enlace.cliente, enlace.respuesta, MSG_MORE); // leaves with the end of the connection, not before it
        return false;
    }
    enlace.perdido = true;
    enlace.enCurso = Falla::Ninguna;
    return Enviar(enlace.cliente, enlace.respuesta);
}
