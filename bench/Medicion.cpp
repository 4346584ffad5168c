#include "bench/Medicion.h"

#include <QElapsedTimer>
#include <algorithm>
#include <vector>

namespace
{

double Mediana(std::vector<double> tiempos)
{
    std::sort(tiempos.begin(), tiempos.end());
    const size_t medio = tiempos.size() / 2;
    return tiempos.size() % 2 == 1 ? tiempos[medio] : (tiempos[medio - 1] + tiempos[medio]) / 2;
}

} // namespace

double Milisegundos(const std::function<void()> &pasos)
{
    QElapsedTimer reloj;
    reloj.start();
    pasos();
    return static_cast<double>(reloj.nsecsElapsed()) / 1e6;
}

Medida Medir(const Tarea &tarea, int rondas, bool sinCrudo)
{
    constexpr double Corto = 5'000;
    constexpr qint64 Poco = 3'000;
    constexpr qint64 Bastante = 30'000;
    const std::function<double()> crudo = sinCrudo ? [] { return 0.0; } : tarea.crudo;
    std::vector<double> nuestros;
    std::vector<double> crudos;
    QElapsedTimer reloj;
    reloj.start();
    for (int ronda = 0; ronda <= rondas || reloj.elapsed() < Poco; ++ronda) {
        if (!nuestros.empty() && reloj.elapsed() >= Bastante)
            break;
        const bool primero = ronda % 2 == 0;
        const double antes = primero ? tarea.nuestro() : crudo();
        const double despues = primero ? crudo() : tarea.nuestro();
        if (ronda == 0 && antes < Corto)
            continue;
        nuestros.push_back(primero ? antes : despues);
        crudos.push_back(primero ? despues : antes);
    }
    return {Mediana(nuestros), Mediana(crudos)};
}
