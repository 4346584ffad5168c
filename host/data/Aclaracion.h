#pragma once

#include "system/Exporta.h"

#include <QString>

namespace QVX_EXPORTA qvx
{

// What went wrong in the engine, as far as it says something to the person.
enum class ClaseDeFallo {
    Otra,
    Ocupada,
    SoloLectura,
    DiscoLleno,
    Disco,
    Danada,
    ClaveRepetida,
    DatoInvalido,
    Apostrofo,
    SinTablas
};

// What it means and what to do, in Spanish: the engine's own text stays the message. "" for ClaseDeFallo::Otra.
QString Aclaracion(ClaseDeFallo clase);

} // namespace qvx
