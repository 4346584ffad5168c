#pragma once

#include <QCursor>
#include <QGuiApplication>

// The hourglass pointer, for as long as the object lives; nothing in a command without a window.
class Espera
{
public:
    Espera() : conPuntero(qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
    {
        if (conPuntero)
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~Espera()
    {
        if (conPuntero)
            QGuiApplication::restoreOverrideCursor();
    }
    Espera(const Espera &) = delete;
    Espera &operator=(const Espera &) = delete;

private:
    bool conPuntero;
};
