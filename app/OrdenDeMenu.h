#pragma once

#include <QKeySequence>
#include <functional>

class QAction;
class QMenu;
class Ventana;

// A command of the window's menu, off while the window is busy. nombre: of the action.
QAction *AgregarOrden(QMenu &menu, const Ventana &ventana, const QString &nombre, const QString &texto,
                      const QKeySequence &tecla, const std::function<void()> &hacer);
