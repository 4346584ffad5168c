#pragma once

#include "support/Escenario.h"

// A fault by its name in a test's table, until it is repaired or goes:
//   "ocupada"       another program holds the plans
//   "confirmación"  whatever is written cannot be committed
//   "disco"         the disk is full (the embedded engine's)
//   "INSERT ON Producto", with "AFTER " before it and " WHEN condition on NEW and OLD" behind it: the event fails with
//   the text "falla"; with "sin efecto " before it, its rows are passed over
//   "" is none, and anything else a statement that another program runs; what it renamed gets its name back.
class Averia
{
public:
    Averia(const Escenario &escenario, const QString &nombre);
    void Reparar();

private:
    void Correr(const QStringList &sentencias);

    const Escenario &escenario;
    QString nombre;
    std::unique_ptr<OtroPrograma> otro; // as long as the fault lasts
    std::unique_ptr<DiscoLleno> disco;
};

// What the engine under test calls things.
namespace motor
{

bool EsPostgres();
// The first text on the embedded engine, the second on the server.
QString Segun(const QString &incrustado, const QString &servidor);
QString NoHayTabla(const QString &tabla);
QString NoHayColumna(const QString &columna);
QString Sintaxis(const QString &cerca);
QString ParteRepetida();
// By the program that holds the plan of a type.
QString Ocupada(const QString &tipoEquipo = "0900");
QString NoConfirma();
// In the trace.
QString Inicio();

} // namespace motor
