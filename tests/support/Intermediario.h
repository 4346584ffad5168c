#pragma once

#include <QString>
#include <atomic>
#include <thread>
#include <vector>

// Stands between a program and the server of the tests: what comes in by a loopback port goes to the server's socket
// and back, until it is told to be silent. Then everything stays open and nothing passes. It counts how often the way
// is gone there and back and waited for: the first byte that the server answers to what came since its last one.
class Intermediario
{
public:
    Intermediario();
    ~Intermediario();
    Intermediario(const Intermediario &) = delete;
    Intermediario &operator=(const Intermediario &) = delete;

    QString Direccion(const QString &usuario, const QString &base, const QString &opciones) const;
    void Callar(bool si) { callado = si; }
    // What the server says once it was told to commit is lost; that it goes away is not.
    void PerderConfirmaciones() { pierde = true; }
    // As a machine that is gone: nobody gets in any more.
    void NoRecibir() { recibe = false; }
    int Puerto() const { return puerto; }
    int Cruces() const { return cruces; }

private:
    void Pasar();
    void Contar(std::size_t punta, const QByteArray &dicho);

    int entrada = -1;
    int puerto = 0;
    std::vector<int> puntas;  // each connection's two, one beside the other
    std::vector<bool> espera; // at a program's end: it has said something that is not answered yet
    std::atomic<int> cruces{0};
    std::atomic<bool> callado{false};
    std::atomic<bool> pierde{false};
    std::atomic<bool> recibe{true};
    bool confirmada = false;
    std::atomic<bool> termina{false};
    std::thread hilo;
};
