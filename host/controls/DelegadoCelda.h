#pragma once

#include "system/Exporta.h"

#include <QStyledItemDelegate>

namespace QVX_EXPORTA SSDataWidgets_B_OLEDB
{

class SSOleDBGrid;

// Shows the cells of a grid in their columns' formats, with the button of the current key cell, and edits them.
class DelegadoCelda : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit DelegadoCelda(SSOleDBGrid &duena);

    // Where in a cell its button stands.
    static QRect AreaBoton(const QRect &celda);

    void paint(QPainter *pintor, const QStyleOptionViewItem &opcion, const QModelIndex &indice) const override;
    QSize sizeHint(const QStyleOptionViewItem &opcion, const QModelIndex &indice) const override;
    QWidget *createEditor(QWidget *padre, const QStyleOptionViewItem &opcion, const QModelIndex &indice) const override;
    void setEditorData(QWidget *editor, const QModelIndex &indice) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *modelo, const QModelIndex &indice) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &opcion,
                              const QModelIndex &indice) const override;
    bool helpEvent(QHelpEvent *evento, QAbstractItemView *vista, const QStyleOptionViewItem &opcion,
                   const QModelIndex &indice) override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

protected:
    void initStyleOption(QStyleOptionViewItem *opcion, const QModelIndex &indice) const override;

private:
    SSOleDBGrid &grid;
};

} // namespace SSDataWidgets_B_OLEDB
