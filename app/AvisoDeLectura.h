#pragma once

#include <QLabel>
#include <QTime>
#include <functional>

// Above a list, while what it shows could not be read anew: the list stays, and this says that it is not current.
class AvisoDeLectura : public QLabel
{
    Q_OBJECT

public:
    explicit AvisoDeLectura(const QString &nombre);

    // Reads; what goes wrong is told as ConTrampa does.
    void Intentar(int identificador, const std::function<void()> &leer);
    // The list is of something else now.
    void Olvidar() { leida = {}; }

private:
    QTime leida; // not valid before
};
