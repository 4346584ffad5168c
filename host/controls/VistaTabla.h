#pragma once

#include <QTreeView>

namespace qvx
{

class ModeloTabla;

// Shows the rows of a ModeloTabla, one chosen at a time; a click on a title sorts. One column takes the room that the
// others leave.
class VistaTabla : public QTreeView
{
    Q_OBJECT

public:
    // nombre: of the control; titulo: for who cannot see it.
    VistaTabla(const QString &nombre, const QString &titulo, QWidget *padre = nullptr);

    // estirada: the column that takes the room; orden: the one that the rows come sorted by, -1 for their own order.
    void Poner(ModeloTabla *modelo, int estirada, int orden);
    // The columns as wide as what they show.
    void AjustarColumnas();

protected:
    void showEvent(QShowEvent *evento) override;

private:
    int estirada = 0;
};

} // namespace qvx
