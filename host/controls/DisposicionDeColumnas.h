#pragma once

#include "system/Exporta.h"

#include <QObject>

class QTreeView;

namespace QVX_EXPORTA qvx
{

// How a person lays the columns of a list out: widths, order, sorting.
class DisposicionDeColumnas : public QObject
{
    Q_OBJECT

public:
    explicit DisposicionDeColumnas(QTreeView &vista);

    // He has, or what he had was put back: nothing fits the columns by itself any more.
    bool Tocada() const { return tocada; }
    void Olvidar() { tocada = false; }
    // To what, for another time. False for what does not fit these columns.
    QByteArray Bytes() const;
    bool Reponer(const QByteArray &bytes);

private:
    void AlTocarTitulos();

    QTreeView &vista;
    bool tocada = false;
};

} // namespace qvx
