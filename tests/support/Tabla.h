#pragma once

#include <QTest>

// The data of a test: the names of its columns, and then a call for each row, with its name first.
template <class... Tipos>
class Tabla
{
public:
    template <class... Nombres>
    explicit Tabla(Nombres... columnas)
    {
        (QTest::addColumn<Tipos>(columnas), ...);
    }
    void operator()(const QString &nombre, const Tipos &...valores) const
    {
        QTestData &fila = QTest::newRow(qUtf8Printable(nombre));
        (fila << ... << valores);
    }
};
