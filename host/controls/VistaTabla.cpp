#include "controls/VistaTabla.h"

#include "controls/ModeloTabla.h"

#include <QHeaderView>

namespace qvx
{

namespace
{

constexpr int AnchoMenor = 200; // of the column that takes the room

} // namespace

VistaTabla::VistaTabla(const QString &nombre, const QString &titulo, QWidget *padre)
    : QTreeView(padre), disposicion(new DisposicionDeColumnas(*this))
{
    setObjectName(nombre);
    setAccessibleName(titulo);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(true);
    header()->setFirstSectionMovable(true);
}

bool VistaTabla::Disponer(const QByteArray &bytes)
{
    if (!disposicion->Reponer(bytes))
        return false;
    sortByColumn(header()->sortIndicatorSection(), header()->sortIndicatorOrder());
    return true;
}

void VistaTabla::Poner(ModeloTabla *modelo, int estirada_, int orden)
{
    estirada = estirada_;
    disposicion->Olvidar();
    setModel(modelo);
    header()->setSortIndicator(orden, Qt::AscendingOrder);
    setSortingEnabled(true);
    if (isVisible())
        AjustarColumnas();
}

void VistaTabla::AjustarColumnas()
{
    if (!model() || Dispuesta()) // shown before it is filled
        return;
    int otras = 0;
    for (int columna = 0; columna < header()->count(); ++columna) {
        resizeColumnToContents(columna);
        otras += columna == estirada ? 0 : columnWidth(columna);
    }
    // Where there is no room to take, the list is wider than its place.
    const bool cabe = otras + AnchoMenor <= viewport()->width();
    header()->setSectionResizeMode(estirada, cabe ? QHeaderView::Stretch : QHeaderView::Interactive);
    if (!cabe)
        setColumnWidth(estirada, AnchoMenor);
}

// In the letter and the look that it is shown in.
void VistaTabla::showEvent(QShowEvent *evento)
{
    QTreeView::showEvent(evento);
    AjustarColumnas();
}

} // namespace qvx
