#pragma once

#include "controls/DisposicionDeColumnas.h"
#include "system/Exporta.h"

#include <QTreeView>

namespace QVX_EXPORTA qvx
{

class ModeloTabla;

// Shows the rows of a ModeloTabla, one chosen at a time; a click on a title sorts. One column takes the room that the
// others leave, until the person lays the columns out.
class VistaTabla : public QTreeView
{
    Q_OBJECT

public:
    // nombre: of the control; titulo: for who cannot see it.
    VistaTabla(const QString &nombre, const QString &titulo, QWidget *padre = nullptr);

    // estirada: the column that takes the room; orden: the one that the rows come sorted by, -1 for their own order.
    void Poner(ModeloTabla *modelo, int estirada, int orden);
    // The columns as wide as what they show, unless the person has laid them out.
    void AjustarColumnas();
    // Whether he has: widths, order or sorting; and to what, for another time. False for what does not fit these
    // columns.
    bool Dispuesta() const { return disposicion->Tocada(); }
    QByteArray Disposicion() const { return disposicion->Bytes(); }
    bool Disponer(const QByteArray &disposicion);

protected:
    void showEvent(QShowEvent *evento) override;

private:
    DisposicionDeColumnas *disposicion;
    int estirada = 0;
};

} // namespace qvx
