#pragma once

#include <QLabel>

// A label for sentences: they are broken where the window ends, and shown as they are written.
inline QLabel *RotuloLargo(const QString &nombre, const QString &texto = {})
{
    auto *rotulo = new QLabel(texto);
    rotulo->setObjectName(nombre);
    rotulo->setTextFormat(Qt::PlainText);
    rotulo->setWordWrap(true);
    return rotulo;
}
