#pragma once

#include "bench/Base.h"

// Writes the plan: the same rows for the same size, on each engine.
void Sembrar(Crudo &base, const Tamano &tamano);
