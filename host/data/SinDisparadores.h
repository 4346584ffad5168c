#pragma once

#include "data/Conexion.h"

namespace qvx
{

// While it lives, and where the engine can, no trigger of the tables works for what the connection writes: who holds
// them back writes himself what they would have written.
class SinDisparadores
{
public:
    explicit SinDisparadores(Conexion &conexion_) : conexion(conexion_), reposan(conexion.Disparadores(false)) {}
    ~SinDisparadores()
    {
        if (reposan)
            conexion.Disparadores(true);
    }
    SinDisparadores(const SinDisparadores &) = delete;
    SinDisparadores &operator=(const SinDisparadores &) = delete;

    bool Reposan() const { return reposan; }

private:
    Conexion &conexion;
    const bool reposan;
};

} // namespace qvx
