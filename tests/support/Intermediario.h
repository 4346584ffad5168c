#pragma once

#include <QByteArray>
#include <QHash>
#include <QMutex>
#include <QTcpServer>
#include <QThread>
#include <functional>
#include <memory>

// The network between the application and the test server's socket: a loopback port that passes everything on until it
// is told to fail at a statement.
class Intermediario
{
public:
    enum class Falla {
        Ninguna,
        CortarAntes,     // the statement never reaches the server
        CortarDurante,   // the server carries it out, and its answer is lost
        CortarSiguiente, // its answer arrives; whatever is sent next is lost
        Detener          // it waits until something was done to the server
    };

    Intermediario();
    ~Intermediario();
    Intermediario(const Intermediario &) = delete;
    Intermediario &operator=(const Intermediario &) = delete;

    quint16 Puerto() const { return puerto; }
    // Fails once, at the first statement from now on that contains the text. mientras runs in the intermediary's
    // thread.
    void Armar(Falla falla, const QByteArray &texto, const std::function<void()> &mientras = {});
    // Whether the failure that was armed last has happened.
    bool Ocurrio() const;

    // How many connections to the server there are.
    int Conexiones();
    // Ends every connection and takes none; takes connections at the same port again.
    void Cerrar();
    void Abrir();

private:
    struct Enlace;

    void Aceptar();
    void DelCliente(Enlace &enlace);
    void DelServidor(Enlace &enlace) const;
    Falla Disparar(const QByteArray &sentencia);

    QThread hilo;
    QObject enHilo; // whose thread is that
    std::unique_ptr<QTcpServer> escucha;
    quint16 puerto = 0;

    mutable QMutex cerrojo;
    Falla armada = Falla::Ninguna;
    QByteArray buscado;
    std::function<void()> mientrasTanto;
};
