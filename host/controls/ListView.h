#pragma once

#include "session/Lista.h"
#include "system/Exporta.h"

#include <QList>
#include <QTreeWidget>

namespace QVX_EXPORTA comunesQVX
{

// A list of rows of texts; operations on a row take its first column as the key.
class ListView : public QTreeWidget, public qvx::Lista
{
    Q_OBJECT

public:
    explicit ListView(QWidget *padre = nullptr);

    void AgregarColumna(const QString &titulo, Qt::Alignment alineacion, int ancho);
    void Clear() override;
    void AgregarFila(const QStringList &textos) override;
    int Count() const { return topLevelItemCount(); }
    QString Texto(int fila, int columna = 0) const;
    bool Seleccionada(int fila) const;
    // First column of the selected row that has the focus, else of the first selected one; nothing selected: false.
    bool HaySeleccion() const;
    QString TextoSeleccionado() const;

    // 0: rows are not dragged; 1: they are, as text, copy effect only.
    void setOLEDragMode(int modo) { setDragEnabled(modo == 1); }

Q_SIGNALS:
    void DblClick(); // a double click on a row, or Enter on the list
    void KeyDown(int codigo);
    // A drag of the selected rows begins: the handler sets the text to be dragged; empty: nothing is dragged.
    void OLEStartDrag(QString &texto);

protected:
    bool event(QEvent *evento) override;
    void keyPressEvent(QKeyEvent *evento) override;
    void mouseDoubleClickEvent(QMouseEvent *evento) override;
    void startDrag(Qt::DropActions acciones) override;

private:
    void AjustarTitulos();

    QList<Qt::Alignment> alineaciones;
    QList<int> titulos; // the widths of the first ones, in the letter and look of now
};

} // namespace comunesQVX
