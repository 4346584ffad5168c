#pragma once

#include "data/Conexion.h"
#include "system/Exporta.h"

namespace QVX_EXPORTA qvx
{

// A transaction that is taken back unless it is confirmed. Begins and ends as the connection's own, with its errors.
class Transaccion
{
public:
    explicit Transaccion(Conexion &conexion_) : conexion(conexion_) { conexion.BeginTrans(); }
    ~Transaccion()
    {
        if (abierta)
            conexion.RollbackTrans();
    }
    Transaccion(const Transaccion &) = delete;
    Transaccion &operator=(const Transaccion &) = delete;

    void Confirmar()
    {
        conexion.CommitTrans();
        abierta = false;
    }

private:
    Conexion &conexion;
    bool abierta = true;
};

} // namespace qvx
