#pragma once

#include <QString>
#include <atomic>
#include <thread>
#include <vector>

// Stands between a program and the server of the tests: what comes in by a loopback port goes to the server's socket
// and back, until it is told to be silent. Then everything stays open and nothing passes.
class Intermediario
{
public:
    Intermediario();
    ~Intermediario();
    Intermediario(const Intermediario &) = delete;
    Intermediario &operator=(const Intermediario &) = delete;

    QString Direccion(const QString &usuario, const QString &base, const QString &opciones) const;
    void Callar(bool si) { callado = si; }

private:
    void Pasar();

    int entrada = -1;
    int puerto = 0;
    std::vector<int> puntas; // each connection's two, one beside the other
    std::atomic<bool> callado{false};
    std::atomic<bool> termina{false};
    std::thread hilo;
};
