#pragma once

#include "support/Escenario.h"

// A small plan with the cases that matter, beside the catalogues of every database:
//   type 0900 BOMBA DE PRUEBA   0001 CUERPO ─ 0002 IMPULSOR (services 000001, 000002, both with lines)
//                                           └ 0003 SELLO, retired (service 000003) ─ 0004 RESORTE
//                               0005 MOTOR;  0006 SUELTA, whose parent is missing
//   type 0901 SIN PLAN; type 0902 AJENA with a part 0001 too (service 000077); type 0903, cancelled
// Products 9000000001 (labour 150.25), 9000000002 and 9000000004 (spare parts 80.1, 10), 9000000003 (tool), 9000000009
// (retired). Expense types 9001, 9009 (retired). Service type 9001, priority 9001, unit HRS.
void SembrarPlan(const Escenario &escenario);
// An equipment type GRANDE with that many parts, ten under each, twice as many services and ten times as many lines.
void SembrarGrande(const Escenario &escenario, const QString &tipo, int partes);
