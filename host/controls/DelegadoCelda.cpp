#include "controls/DelegadoCelda.h"

#include "controls/NumeroEscrito.h"
#include "controls/SSOleDBGrid.h"

#include <QApplication>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <algorithm>

namespace SSDataWidgets_B_OLEDB
{

namespace
{

constexpr int AnchoBoton = 24;

// The text that an editor began with, so that an edit counts once and only when it changed something.
constexpr auto TextoInicial = "textoInicial";

} // namespace

DelegadoCelda::DelegadoCelda(SSOleDBGrid &duena) : QStyledItemDelegate(&duena), grid(duena) {}

QRect DelegadoCelda::AreaBoton(const QRect &celda)
{
    const int ancho = std::min(AnchoBoton, celda.width());
    return {celda.right() - ancho + 1, celda.top(), ancho, celda.height()};
}

void DelegadoCelda::initStyleOption(QStyleOptionViewItem *opcion, const QModelIndex &indice) const
{
    QStyledItemDelegate::initStyleOption(opcion, indice);
    const Columna &columna = grid.ColumnaDe(indice);
    if (!columna.formato.isEmpty())
        opcion->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
    if (!columna.formato.isEmpty() || columna.boton)
        opcion->features.setFlag(QStyleOptionViewItem::WrapText, false); // only descriptions may take two lines
    if (columna.bloqueada && grid.isEnabled())
        opcion->backgroundBrush = opcion->palette.alternateBase();
}

void DelegadoCelda::paint(QPainter *pintor, const QStyleOptionViewItem &opcion, const QModelIndex &indice) const
{
    if (!grid.TieneBoton(indice) || indice != grid.currentIndex()) {
        QStyledItemDelegate::paint(pintor, opcion, indice);
        return;
    }
    QStyleOptionButton boton;
    boton.initFrom(&grid);
    boton.rect = AreaBoton(opcion.rect);
    boton.text = "…";
    boton.state = QStyle::State_Enabled | (grid.botonPulsado ? QStyle::State_Sunken : QStyle::State_Raised);
    QStyleOptionViewItem celda = opcion;
    celda.rect.setRight(boton.rect.left() - 1);
    QStyledItemDelegate::paint(pintor, celda, indice);
    grid.style()->drawControl(QStyle::CE_PushButton, &boton, pintor, &grid);
}

QSize DelegadoCelda::sizeHint(const QStyleOptionViewItem &opcion, const QModelIndex &indice) const
{
    const QSize tamano = QStyledItemDelegate::sizeHint(opcion, indice);
    return grid.ColumnaDe(indice).boton ? tamano + QSize(AnchoBoton, 0) : tamano;
}

QWidget *DelegadoCelda::createEditor(QWidget *padre, const QStyleOptionViewItem &, const QModelIndex &indice) const
{
    const Columna &columna = grid.ColumnaDe(indice);
    auto *editor = new QLineEdit(padre);
    editor->setObjectName("editorCelda");
    editor->setAccessibleName(columna.titulo);
    editor->setFrame(false);
    if (!columna.formato.isEmpty()) {
        editor->setMaxLength(qvx::LargoEscrito);
        editor->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    connect(editor, &QLineEdit::inputRejected, editor, &QApplication::beep);
    connect(editor, &QLineEdit::textEdited, &grid, &SSOleDBGrid::EmpezarRenglon);
    return editor;
}

void DelegadoCelda::setEditorData(QWidget *editor, const QModelIndex &indice) const
{
    const QString texto = indice.data(Qt::EditRole).toString();
    auto *linea = static_cast<QLineEdit *>(editor);
    linea->setProperty(TextoInicial, texto);
    linea->setMaxLength(std::max(linea->maxLength(), static_cast<int>(texto.size()))); // what is there is never cut
    linea->setText(texto);
}

void DelegadoCelda::setModelData(QWidget *editor, QAbstractItemModel *, const QModelIndex &indice) const
{
    const QString texto = static_cast<QLineEdit *>(editor)->text();
    if (texto == editor->property(TextoInicial).toString() || !grid.ReparoDelEditor().isEmpty())
        return;
    editor->setProperty(TextoInicial, texto);
    grid.GuardarEdicion(indice.row(), indice.column(), texto);
}

void DelegadoCelda::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &opcion,
                                         const QModelIndex &indice) const
{
    QRect area = opcion.rect;
    if (grid.TieneBoton(indice))
        area.setRight(AreaBoton(area).left() - 1);
    editor->setGeometry(area);
}

// A text that its cell cuts off can be read in full.
bool DelegadoCelda::helpEvent(QHelpEvent *evento, QAbstractItemView *vista, const QStyleOptionViewItem &opcion,
                              const QModelIndex &indice)
{
    if (evento->type() != QEvent::ToolTip || !indice.isValid() || !indice.data(Qt::ToolTipRole).toString().isEmpty())
        return QStyledItemDelegate::helpEvent(evento, vista, opcion, indice);
    QStyleOptionViewItem celda = opcion;
    initStyleOption(&celda, indice);
    const int ajuste = celda.features.testFlag(QStyleOptionViewItem::WrapText) ? Qt::TextWordWrap : 0;
    const QRect area = opcion.rect.adjusted(4, 0, -4, 0);
    if (area.contains(celda.fontMetrics.boundingRect(area, ajuste | Qt::AlignVCenter, celda.text)))
        return QStyledItemDelegate::helpEvent(evento, vista, opcion, indice);
    QToolTip::showText(evento->globalPos(), "<span>" + celda.text.toHtmlEscaped() + "</span>", vista);
    return true;
}

bool DelegadoCelda::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::KeyPress && grid.TeclaEnEditor(*static_cast<QKeyEvent *>(evento)))
        return true;
    if (evento->type() != QEvent::FocusOut)
        return QStyledItemDelegate::eventFilter(objeto, evento);
    // A form that is being closed has no use for what was typed last; what cannot be taken stays open.
    if (!qvx::EntradaPendiente::EsSalida(static_cast<QFocusEvent *>(evento)->reason()) || !grid.window()->isVisible()
        || !grid.ReparoDelEditor().isEmpty())
        return false;
    const bool resultado = QStyledItemDelegate::eventFilter(objeto, evento);
    SSOleDBGrid::TrasElFoco(grid, [this] { grid.AvisarCambio(); });
    return resultado;
}

} // namespace SSDataWidgets_B_OLEDB
