#include "controls/VistaTabla.h"

#include "controls/ModeloTabla.h"

#include <QApplication>
#include <QDataStream>
#include <QHeaderView>
#include <QIODevice>

namespace qvx
{

namespace
{

constexpr int AnchoMenor = 200; // of the column that takes the room

} // namespace

VistaTabla::VistaTabla(const QString &nombre, const QString &titulo, QWidget *padre) : QTreeView(padre)
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
    connect(header(), &QHeaderView::sectionClicked, this, [this] { dispuesta = true; });
    connect(header(), &QHeaderView::sectionMoved, this, &VistaTabla::AlTocarTitulos);
    connect(header(), &QHeaderView::sectionResized, this, &VistaTabla::AlTocarTitulos);
}

// The toolkit tells of its own changes too: a person holds the button.
void VistaTabla::AlTocarTitulos()
{
    if (QApplication::mouseButtons() & Qt::LeftButton && isVisible())
        dispuesta = true;
}

QByteArray VistaTabla::Disposicion() const
{
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << header()->count() << header()->saveState();
    return bytes;
}

// The toolkit would take the state of other columns as it comes.
bool VistaTabla::Disponer(const QByteArray &bytes)
{
    int columnas = 0;
    QByteArray estado;
    QDataStream(bytes) >> columnas >> estado;
    if (estado.isEmpty() || columnas != header()->count() || !header()->restoreState(estado))
        return false;
    dispuesta = true;
    sortByColumn(header()->sortIndicatorSection(), header()->sortIndicatorOrder());
    return true;
}

void VistaTabla::Poner(ModeloTabla *modelo, int estirada_, int orden)
{
    estirada = estirada_;
    dispuesta = false;
    setModel(modelo);
    header()->setSortIndicator(orden, Qt::AscendingOrder);
    setSortingEnabled(true);
    if (isVisible())
        AjustarColumnas();
}

void VistaTabla::AjustarColumnas()
{
    if (!model() || dispuesta) // shown before it is filled
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
