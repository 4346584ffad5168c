#pragma once

#include <QString>
#include <QStringList>

constexpr int Planificadores = 8;
// Everybody's equipment type. 110n, 120n and 130n are planner n's own, for everything, for copies and for imports.
inline const QString Compartido = "1000";
enum class Serie { Propia = 11, Copias = 12, Importaciones = 13 };
QString Tipo(Serie serie, int numero);
// How long the planners work.
int Segundos();

// One planner's work, in a process with a screen of its own: commands at random, as long as it lasts. argumentos:
// database, number, seed, journal, and the two files of Encontrarse. What was reported as saved, and every message,
// goes to the journal, one per line with its fields between tabs.
//
// A service belongs to the planner who made it: its price is a number that no other service has, and nobody else
// changes it. Everybody changes everybody's parts.
void TrabajarComoPlanificador(const QStringList &argumentos);
