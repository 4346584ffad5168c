#pragma once

#include "app/programa/PlanMedido.h"
#include "session/Sesion.h"

struct Argumentos;

// What an order of the command line works on, signed in: the plan of its equipment type, and the data of its programme,
// the kept ones changed by what the line says.
struct LecturaDePedido {
    // Raises an ErrorEjecucion for a type that is not on offer, and where nobody says from when on.
    explicit LecturaDePedido(const Argumentos &argumentos);

    std::unique_ptr<qvx::Sesion> sesion;
    QString base; // by which calendars know the database
    programa::PlanMedido medido;
    qvx::DatosDePrograma datos;
    bool conFecha = false; // somebody said from when on
};
