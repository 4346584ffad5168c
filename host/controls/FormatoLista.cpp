#include "controls/FormatoLista.h"

#include "controls/Comunes.h"

#include <QHeaderView>

namespace qvx
{

void FormatoLista::Aplicar(comunesQVX::ListView &lista) const
{
    for (int columna = 0; columna < lista.columnCount(); ++columna)
        lista.resizeColumnToContents(columna);
    lista.header()->setStretchLastSection(true);
}

} // namespace qvx
