#pragma once

#include <atomic>
#include <thread>

// A network between here and a server of this machine: a loopback port, from which the way there and back takes so
// long.
class Lejania
{
public:
    // puerto: the server's on the loopback; vuelta: milliseconds there and back.
    Lejania(int puerto, int vuelta);
    ~Lejania();
    Lejania(const Lejania &) = delete;
    Lejania &operator=(const Lejania &) = delete;

    int Puerto() const { return propio; }

private:
    void Pasar(int servidor, int vuelta);

    int entrada = -1;
    int propio = 0;
    std::atomic<bool> termina{false};
    std::thread hilo;
};
