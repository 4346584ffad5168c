#pragma once

#include <QByteArray>
#include <QHash>
#include <QMutex>
#include <QThread>
#include <atomic>
#include <functional>
#include <memory>
#include <vector>

// The network between the application and the test server's socket: a loopback port that passes everything on until it
// is told to fail at a statement.
class Intermediario
{
public:
    enum class Falla {
        Ninguna,
        CortarAntes,     // the statement never reaches the server
        CortarDurante,   // the server carries it out, and its answer is lost
        CortarDespues,   // its answer arrives, and the connection ends with it
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

    int Conexiones() const { return conexiones; }

    // Ends every connection and takes none; takes connections at the same port again.
    void Cerrar();
    void Abrir();

private:
    struct Enlace {
        int cliente = -1;
        int servidor = -1;
        bool iniciado = false;
        bool perdido = false; // nothing more passes
        Falla enCurso = Falla::Ninguna;
        QByteArray pendiente; // of the client's, not a whole message yet
        QByteArray respuesta; // of the server's, while it is being held back
        QHash<QByteArray, QByteArray> preparadas;
    };

    void Correr();
    void Aceptar();
    bool DelCliente(Enlace &enlace);
    bool DelServidor(Enlace &enlace);
    bool Pasar(Enlace &enlace, const QByteArray &mensaje);
    static QByteArray Tomar(Enlace &enlace);
    static QByteArray Sentencia(Enlace &enlace, const QByteArray &mensaje);
    Falla Disparar(const QByteArray &sentencia);

    quint16 puerto = 0;
    int escucha = -1;
    int salida[2] = {-1, -1}; // a pipe: its end ends the thread
    std::unique_ptr<QThread> hilo;
    std::vector<Enlace> enlaces;
    std::atomic<int> conexiones = 0;

    mutable QMutex cerrojo;
    Falla armada = Falla::Ninguna;
    QByteArray buscado;
    std::function<void()> mientrasTanto;
};
