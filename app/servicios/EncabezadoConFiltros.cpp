#include "app/servicios/EncabezadoConFiltros.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QLineEdit>
#include <QScrollBar>

EncabezadoConFiltros::EncabezadoConFiltros(QWidget *padre) : QHeaderView(Qt::Horizontal, padre)
{
    setSectionsClickable(true);
    setSectionsMovable(true);
    setHighlightSections(false);
    setStretchLastSection(false);
    connect(this, &QHeaderView::sectionResized, this, &EncabezadoConFiltros::Colocar);
    connect(this, &QHeaderView::sectionMoved, this, &EncabezadoConFiltros::Colocar);
}

void EncabezadoConFiltros::PonerFiltros(const QStringList &nombres, const QStringList &ayudas)
{
    for (int columna = 0; columna < nombres.size(); ++columna) {
        auto *caja = new QLineEdit(this);
        caja->setObjectName("txtFiltro" + QString::number(columna));
        caja->setAccessibleName("Filtro de " + nombres.at(columna));
        caja->setToolTip(ayudas.at(columna));
        caja->setPlaceholderText("Filtrar");
        caja->setClearButtonEnabled(true);
        caja->installEventFilter(this);
        connect(caja, &QLineEdit::textChanged, this,
                [this, columna](const QString &texto) { Q_EMIT Filtrado(columna, texto); });
        cajas.append(caja);
    }
    if (auto *vista = qobject_cast<QAbstractItemView *>(parentWidget()))
        connect(vista->horizontalScrollBar(), &QScrollBar::valueChanged, this, &EncabezadoConFiltros::Colocar);
    updateGeometries();
}

void EncabezadoConFiltros::Vaciar()
{
    for (QLineEdit *caja : std::as_const(cajas))
        caja->clear();
}

QSize EncabezadoConFiltros::sizeHint() const
{
    QSize tamano = QHeaderView::sizeHint();
    if (!cajas.isEmpty())
        tamano.rheight() += cajas.constFirst()->sizeHint().height() + 2;
    return tamano;
}

void EncabezadoConFiltros::updateGeometries()
{
    setViewportMargins(0, 0, 0, cajas.isEmpty() ? 0 : cajas.constFirst()->sizeHint().height() + 2);
    QHeaderView::updateGeometries();
    Colocar();
}

void EncabezadoConFiltros::Colocar()
{
    const int arriba = QHeaderView::sizeHint().height();
    for (int columna = 0; columna < cajas.size() && columna < count(); ++columna) {
        QLineEdit *caja = cajas.at(columna);
        caja->setGeometry(sectionViewportPosition(columna), arriba, sectionSize(columna), caja->sizeHint().height());
        caja->setVisible(!isSectionHidden(columna));
    }
}

bool EncabezadoConFiltros::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::FocusIn)
        Q_EMIT Entrado(static_cast<int>(cajas.indexOf(static_cast<QLineEdit *>(objeto))));
    return QHeaderView::eventFilter(objeto, evento);
}
