#include "controls/FormatoLista.h"

#include "controls/ListView.h"

#include <QFontMetricsF>
#include <QHeaderView>
#include <algorithm>
#include <cmath>

namespace qvx
{

namespace
{

// The width of a text as the sum of its characters': never less than when it is laid out, since kerning only narrows.
// Laying out every text of a long list would take longer than reading it.
class Anchos
{
public:
    explicit Anchos(const QFont &fuente) : medidas(fuente) {}

    qreal De(const QString &texto)
    {
        qreal ancho = 0;
        for (const QChar c : texto) {
            const auto hallado = anchos.constFind(c);
            ancho += hallado != anchos.constEnd() ? *hallado : *anchos.insert(c, medidas.horizontalAdvance(c));
        }
        return ancho;
    }
    qreal Dispuesto(const QString &texto) const { return medidas.horizontalAdvance(texto); }

private:
    QFontMetricsF medidas;
    QHash<QChar, qreal> anchos;
};

// What the widest text of a column takes in the control.
int AnchoDe(const comunesQVX::ListView &lista, int columna, Anchos &anchos)
{
    int mayor = -1;
    qreal ancho = -1;
    for (int fila = 0; fila < lista.Count(); ++fila)
        if (const qreal otro = anchos.De(lista.Texto(fila, columna)); otro > ancho) {
            ancho = otro;
            mayor = fila;
        }
    if (mayor < 0)
        return 0;
    const qreal holgura = std::max<qreal>(0, ancho - anchos.Dispuesto(lista.Texto(mayor, columna)));
    return lista.sizeHintForIndex(lista.model()->index(mayor, columna)).width() + static_cast<int>(std::ceil(holgura));
}

} // namespace

void FormatoLista::Aplicar(comunesQVX::ListView &lista) const
{
    Anchos anchos(lista.font());
    for (int columna = 0; columna < lista.columnCount(); ++columna)
        lista.setColumnWidth(columna,
                             std::max(lista.header()->sectionSizeHint(columna), AnchoDe(lista, columna, anchos)));
    lista.header()->setStretchLastSection(true);
}

} // namespace qvx
