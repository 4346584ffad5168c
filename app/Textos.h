#pragma once

#include "data/Cuantos.h"

using qvx::Cuantos;
