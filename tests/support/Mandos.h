#pragma once

#include "support/Planificador.h"

// A command of the screen that changes the plan 0900 of SembrarPlan, and where each of its failures is told, as
// "module|identifier".
struct Mando {
    const char *nombre;
    void (*correr)(Planificador &planificador, const Escenario &escenario);
    QByteArray ultimo;   // in its last change before the commit; a change without a transaction is its own commit
    QString alEmpezar;   // when there is no connection
    QString alCambiar;   // when its last change fails
    QString alConfirmar; // when the commit fails
    QString alLeer;      // when what it reads afterwards fails
};

const QList<Mando> &Mandos();
const Mando &MandoDe(const QString &nombre);
