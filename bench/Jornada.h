#pragma once

#include <QString>
#include <QStringList>

constexpr int Planificadores = 8;
// Equipment types: everybody's, and from there on each planner's own, for everything, for copies and for imports.
constexpr int Compartido = 1000;
constexpr int Propios = 1100;
constexpr int Copias = 1200;
constexpr int Importados = 1300;

// One planner's work, in a process with a screen of its own: commands at random, as long as it lasts. argumentos:
// the seconds, and what CorrerJuntos gives. Prints each command ("mando", its name, milliseconds, statements, outcome),
// each refusal ("mensaje", its text), and in lines of any other kind what is not as this planner was told.
//
// A service belongs to the planner who made it: its price is a number that no other service has, and nobody else
// changes it. Everybody changes everybody's parts.
void TrabajarComoPlanificador(const QStringList &argumentos);
// What a command's name means.
QString EnIngles(const QString &mando);
