#pragma once

#include "data/ErrorEjecucion.h"

#include <cstdint>
#include <limits>

// A counter of 16 bits, as the screen's walks over rows count: past 32,767 it raises "Desbordamiento", and never wraps.
class Contador16
{
public:
    Contador16 &operator++()
    {
        if (valor == std::numeric_limits<std::int16_t>::max())
            throw qvx::ErrorEjecucion(qvx::errores::Desbordamiento, "Desbordamiento");
        ++valor;
        return *this;
    }
    operator int() const { return valor; }

private:
    std::int16_t valor = 0;
};
