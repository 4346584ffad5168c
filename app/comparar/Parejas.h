#pragma once

#include "plan/FilasDelPlan.h"

namespace comparar
{

// A row and what became of it; one of the two may be missing.
struct Pareja {
    const qvx::FilaDelPlan *antes = nullptr;
    const qvx::FilaDelPlan *despues = nullptr;

    const qvx::FilaDelPlan &Una() const { return despues ? *despues : *antes; }
};

// Services of one part and one type, those together that have most in common; porFolio: before that, those with one
// folio. In the order of the later ones, those that are gone last.
QList<Pareja> ParejasDeServicios(const QList<qvx::FilaDelPlan> &antes, const QList<qvx::FilaDelPlan> &despues,
                                 bool porFolio);
// Lines of one service: of one kind and product, those with one quantity first.
QList<Pareja> ParejasDeLineas(const QList<const qvx::FilaDelPlan *> &antes,
                              const QList<const qvx::FilaDelPlan *> &despues);

} // namespace comparar
