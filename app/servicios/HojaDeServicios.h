#pragma once

#include "app/lectura/PlanLeido.h"
#include "app/reportes/Hoja.h"

// Services as a spreadsheet takes them: each with the keys behind its names, amounts and hours as numbers.
Hoja EnHoja(const lectura::Plan &plan, const QList<int> &cuales);
