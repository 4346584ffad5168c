#include "app/catalogos/ListaDePlan.h"

#include <QHeaderView>
#include <QTreeView>

void AjustarColumnas(QTreeView &lista)
{
    constexpr int AnchoMayor = 260;
    lista.header()->setStretchLastSection(true);
    for (int columna = 0; columna < lista.model()->columnCount(); ++columna) {
        lista.resizeColumnToContents(columna);
        lista.setColumnWidth(columna, qMin(lista.columnWidth(columna), AnchoMayor));
    }
}
