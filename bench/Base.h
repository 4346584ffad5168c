#pragma once

#include "bench/Crudo.h"

#include <QTemporaryDir>

namespace qvx
{
class Conexion;
}

// What the plan of a benchmark holds. Everything else follows from the seed.
struct Tamano {
    int partes = 10'000; // in up to 6 levels
    int servicios = 20'000;
    int lineas = 100'000;
    int enLista = 1'000;  // services of the one part of the type Detalle
    int enServicio = 200; // lines of its first service
    unsigned semilla = 580;

    Tamano Por(int veces) const
    {
        return {partes * veces, servicios * veces, lineas * veces, enLista * veces, enServicio * veces, semilla};
    }
};

// As the plan of an ordinary equipment type.
constexpr Tamano Ordinario{30, 60, 300, 10, 8};

// The equipment types: the whole plan, an empty one for copies, the one with the long list.
namespace tipos
{
constexpr const char *Plan = "9001";
constexpr const char *Copia = "9002";
constexpr const char *Detalle = "9003";
} // namespace tipos

// A database with the plan, on either engine, that goes when the object does.
class Base
{
public:
    virtual ~Base() = default;
    // As the application opens it, signed in as the planner "banco".
    virtual std::unique_ptr<qvx::Conexion> Abrir() const = 0;
    virtual std::unique_ptr<Crudo> AbrirCrudo() const = 0;
    virtual bool EnServidor() const = 0;
};

std::unique_ptr<Base> BaseEnArchivo(const Tamano &tamano);
// On the server that tools/con_servidor runs.
std::unique_ptr<Base> BaseEnServidor(const Tamano &tamano);
// The same, so many milliseconds there and back away from the component.
std::unique_ptr<Base> BaseLejana(const Tamano &tamano, int vuelta);
