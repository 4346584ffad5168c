#pragma once

#include "data/Conexion.h"
#include "system/Exporta.h"

namespace QVX_EXPORTA qvx
{

// Makes all that is read while it lives be of one moment. For a command, which no event of a window stands around.
class Momento
{
public:
    explicit Momento(Conexion &conexion_) : conexion(conexion_) { conexion.EmpezarMomento(); }
    ~Momento() { conexion.TerminarMomento(); }
    Momento(const Momento &) = delete;
    Momento &operator=(const Momento &) = delete;

private:
    Conexion &conexion;
};

} // namespace qvx
