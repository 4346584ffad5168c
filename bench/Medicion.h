#pragma once

#include <QString>
#include <functional>

// One job of the real component and its baseline. Each gives how many milliseconds its own part took; what it prepares
// does not count.
struct Tarea {
    QString nombre;
    double limite = 0; // the ratio must be at most this; 0: only shown
    std::function<double()> nuestro;
    std::function<double()> crudo;
    qint64 sentencias = 0;
    qint64 debidas = 0; // how many statements the screen runs for it; 0: as many as there are
};

struct Medida {
    double nuestro = 0; // medians, milliseconds
    double crudo = 0;
};

double Milisegundos(const std::function<void()> &pasos);

// Runs both, one after the other and in changing order, that many rounds: more of them until three seconds have passed,
// and no new one after half a minute. The first round of a short job only warms up. sinCrudo: the component alone.
Medida Medir(const Tarea &tarea, int rondas, bool sinCrudo);
