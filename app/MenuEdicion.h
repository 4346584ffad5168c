#pragma once

#include <QMenu>
#include <QPointer>

// The menu "Edición": what the box with the focus does with its text. The keys are the boxes' own, and are only shown
// here.
class MenuEdicion : public QMenu
{
    Q_OBJECT

public:
    explicit MenuEdicion(QWidget &ventana);

private:
    void Agregar(const QString &nombre, const QString &texto, const QString &tecla, const char *hacer, bool cambia);
    void PonerEstado();

    QWidget &ventana;
    QPointer<QWidget> caja; // the menu bar takes the focus while it is used by keyboard
};
