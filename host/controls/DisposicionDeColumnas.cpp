#include "controls/DisposicionDeColumnas.h"

#include <QApplication>
#include <QDataStream>
#include <QHeaderView>
#include <QIODevice>
#include <QTreeView>

namespace qvx
{

DisposicionDeColumnas::DisposicionDeColumnas(QTreeView &vista_) : QObject(&vista_), vista(vista_)
{
    const QHeaderView *titulos = vista.header();
    connect(titulos, &QHeaderView::sectionClicked, this, [this] { tocada = true; });
    connect(titulos, &QHeaderView::sectionMoved, this, &DisposicionDeColumnas::AlTocarTitulos);
    connect(titulos, &QHeaderView::sectionResized, this, &DisposicionDeColumnas::AlTocarTitulos);
}

// The toolkit tells of its own changes too: a person holds the button.
void DisposicionDeColumnas::AlTocarTitulos()
{
    if (QApplication::mouseButtons() & Qt::LeftButton && vista.isVisible())
        tocada = true;
}

QByteArray DisposicionDeColumnas::Bytes() const
{
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << vista.header()->count() << vista.header()->saveState();
    return bytes;
}

// The toolkit would take the state of other columns as it comes.
bool DisposicionDeColumnas::Reponer(const QByteArray &bytes)
{
    int columnas = 0;
    QByteArray estado;
    QDataStream(bytes) >> columnas >> estado;
    if (estado.isEmpty() || columnas != vista.header()->count() || !vista.header()->restoreState(estado))
        return false;
    tocada = true;
    return true;
}

} // namespace qvx
