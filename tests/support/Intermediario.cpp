#include "support/Intermediario.h"

#include <QFile>
#include <QLocalSocket>
#include <QTcpSocket>
#include <QtEndian>

// A connection of the application's, and the one to the server that stands for it. Both end with it.
struct Intermediario::Enlace : QObject {
    explicit Enlace(QTcpSocket *aceptado) : QObject(aceptado), cliente(*aceptado) {}

    // The first whole message of what the client sent, "" while there is none. The one that begins a connection has no
    // type before its length.
    QByteArray Tomar()
    {
        const int antes = iniciado ? 1 : 0;
        if (pendiente.size() < antes + 4)
            return {};
        const auto tamano = antes + qFromBigEndian<qint32>(pendiente.constData() + antes);
        const QByteArray mensaje = pendiente.size() < tamano ? QByteArray() : pendiente.left(tamano);
        pendiente.remove(0, mensaje.size());
        iniciado = iniciado || !mensaje.isEmpty();
        return mensaje;
    }
    // The text of the statement that a message carries out. Preparing one carries out nothing.
    QByteArray Sentencia(const QByteArray &mensaje)
    {
        const QByteArray sql = mensaje.startsWith('Q') ? mensaje.mid(5).chopped(1) : QByteArray();
        const QList<QByteArray> palabras = sql.left(100).split(' ');
        if (palabras.value(0) == "EXECUTE")
            return preparadas.value(palabras.value(1)) + sql;
        if (palabras.value(0) != "PREPARE")
            return sql;
        preparadas.insert(palabras.value(1), sql);
        return {};
    }
    void Cortar()
    {
        servidor.abort();
        cliente.abort();
    }

    QTcpSocket &cliente;
    QLocalSocket servidor;
    bool iniciado = false;
    bool perdido = false; // nothing more passes
    Falla enCurso = Falla::Ninguna;
    QByteArray pendiente; // of the client's, not a whole message yet
    QByteArray respuesta; // of the server's, while it is being held back
    QHash<QByteArray, QByteArray> preparadas;
};

Intermediario::Intermediario()
{
    enHilo.moveToThread(&hilo);
    hilo.start();
    Abrir();
}

Intermediario::~Intermediario()
{
    Cerrar();
    hilo.quit();
    hilo.wait();
}

void Intermediario::Abrir()
{
    const auto abrir = [this] {
        escucha = std::make_unique<QTcpServer>();
        QObject::connect(escucha.get(), &QTcpServer::newConnection, &enHilo, [this] { Aceptar(); });
        if (!escucha->listen(QHostAddress::LocalHost, puerto))
            qFatal("Intermediario: %s", qPrintable(escucha->errorString()));
        puerto = escucha->serverPort();
    };
    QMetaObject::invokeMethod(&enHilo, abrir, Qt::BlockingQueuedConnection);
}

void Intermediario::Cerrar()
{
    const auto cerrar = [this] {
        for (QTcpSocket *cliente : escucha->findChildren<QTcpSocket *>())
            cliente->abort();
        escucha.reset();
    };
    if (escucha)
        QMetaObject::invokeMethod(&enHilo, cerrar, Qt::BlockingQueuedConnection);
}

int Intermediario::Conexiones()
{
    int cuantas = 0;
    const auto contar = [&] {
        for (const QTcpSocket *cliente : escucha->findChildren<QTcpSocket *>())
            cuantas += cliente->state() == QAbstractSocket::ConnectedState ? 1 : 0;
    };
    QMetaObject::invokeMethod(&enHilo, contar, Qt::BlockingQueuedConnection);
    return cuantas;
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

void Intermediario::Aceptar()
{
    auto *enlace = new Enlace(escucha->nextPendingConnection()); // the listener's, and ends with it
    const auto cortar = [enlace] { enlace->Cortar(); };
    QObject::connect(&enlace->cliente, &QTcpSocket::readyRead, enlace, [this, enlace] { DelCliente(*enlace); });
    QObject::connect(&enlace->cliente, &QTcpSocket::disconnected, enlace, cortar);
    QObject::connect(&enlace->servidor, &QLocalSocket::readyRead, enlace, [this, enlace] { DelServidor(*enlace); });
    QObject::connect(&enlace->servidor, &QLocalSocket::disconnected, enlace, cortar);
    enlace->servidor.connectToServer(QFile::decodeName(qgetenv("QVX_PRUEBA_SERVIDOR")) + "/.s.PGSQL."
                                     + qEnvironmentVariable("QVX_PRUEBA_PUERTO"));
    if (!enlace->servidor.waitForConnected())
        enlace->Cortar();
}

void Intermediario::DelCliente(Enlace &enlace)
{
    enlace.pendiente += enlace.cliente.readAll();
    bool iniciado = enlace.iniciado;
    for (QByteArray mensaje = enlace.Tomar(); !mensaje.isEmpty(); mensaje = enlace.Tomar()) {
        const Falla falla = iniciado ? Disparar(enlace.Sentencia(mensaje)) : Falla::Ninguna;
        iniciado = true;
        if (enlace.perdido || falla == Falla::CortarAntes)
            return enlace.Cortar();
        if (falla == Falla::Detener)
            mientrasTanto();
        else
            enlace.enCurso = falla;
        enlace.servidor.write(mensaje);
        enlace.servidor.flush();
    }
}

void Intermediario::DelServidor(Enlace &enlace) const
{
    enlace.respuesta += enlace.servidor.readAll();
    // "Ready for the next", with a letter for the transaction, ends an answer.
    if (enlace.enCurso != Falla::Ninguna && !enlace.respuesta.chopped(1).endsWith(QByteArray("Z\0\0\0\5", 5)))
        return;
    if (enlace.enCurso == Falla::CortarDurante)
        return enlace.Cortar();
    enlace.perdido = enlace.enCurso == Falla::CortarSiguiente;
    enlace.enCurso = Falla::Ninguna;
    enlace.cliente.write(std::exchange(enlace.respuesta, {}));
    enlace.cliente.flush();
}
