#pragma once

#include <QWidget>
#include <functional>

class QTimer;

// What hands do at a form. A control is found by its name; without it the program ends.
template <class Control>
Control &En(const QWidget &forma, const QString &nombre)
{
    auto *control = forma.findChild<Control *>(nombre);
    if (!control)
        qFatal("No existe el control %s", qPrintable(nombre));
    return *control;
}

// Types into a text box and leaves it, as a person does.
void Escribir(QWidget &caja, const QString &texto);
// Types into a cell of a grid and ends with Tab.
void EscribirCelda(QWidget &grid, int fila, const QString &columna, const QString &texto);
// Clicks a command of a toolbar by its name ("B2", "Aceptar").
void Pulsar(QWidget &barra, const QString &comando);
// Clicks the node with this key.
void ElegirNodo(QWidget &arbol, const QString &clave);
// Does something in the next modal form, as soon as it is active, and closes it if the steps did not. What waits for
// it. menos: a form that is open already.
QTimer *EnElDialogo(const std::function<void(QWidget &)> &pasos, const QWidget *menos = nullptr);
