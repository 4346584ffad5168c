#pragma once

#include "data/Dialecto.h"

namespace qvx
{

std::unique_ptr<Dialecto> NuevoDialectoPostgres();

} // namespace qvx
