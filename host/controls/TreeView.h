#pragma once

#include "controls/EntradaPendiente.h"
#include "controls/ImageList.h"
#include "system/Exporta.h"

#include <QHash>
#include <QTreeWidget>
#include <optional>

namespace QVX_EXPORTA comunesQVX
{

class TreeView;

class Nodo : public QTreeWidgetItem
{
public:
    QString Key() const { return clave; }
    QString Text() const { return text(0); }
    void setText(const QString &texto) { QTreeWidgetItem::setText(0, texto); }
    int Image() const { return imagen; }
    void setImage(int indice);
    Nodo *Parent() const { return static_cast<Nodo *>(parent()); }
    Nodo *Child() const { return childCount() > 0 ? static_cast<Nodo *>(child(0)) : nullptr; }
    QVariant Tag;

    QVariant data(int columna, int papel) const override;

private:
    friend class TreeView;
    Nodo(const QString &claveNodo, const QString &texto);
    QString clave;
    int imagen = 0;
};

// A tree of keyed nodes. Choosing a node by mouse or by keyboard raises NodeClick; selecting it in code does not.
class TreeView : public QTreeWidget, public qvx::EntradaPendiente
{
    Q_OBJECT

public:
    explicit TreeView(QWidget *padre = nullptr);

    void setImageList(const ImageList &lista) { imagenes = lista; }
    const ImageList &Imagenes() const { return imagenes; }

    void Clear();
    // Adds a node under the node with the key padre ("" : at the top). Raises NodoNoEncontrado for an unknown parent
    // and ClaveRepetida for a key that the tree has already.
    Nodo *Add(const QString &padre, const QString &clave, const QString &texto, int imagen);
    int Count() const { return static_cast<int>(porClave.size()); }
    bool Contains(const QString &clave) const { return porClave.contains(clave); }
    // Raises NodoNoEncontrado.
    Nodo *Item(const QString &clave) const;
    Nodo *Primero() const;
    // Removes a node with all below it; a selected one leaves nothing selected. Raises NodoNoEncontrado.
    void Remove(const QString &clave);

    Nodo *SelectedItem() const;
    void setSelectedItem(Nodo *nodo);
    void EnsureVisible(Nodo *nodo);
    void StartLabelEdit();
    // Ends the editing of a label as Enter does.
    bool ConfirmarEntrada() override;

    // 0: takes no drops; 1: takes dropped text.
    void setOLEDropMode(int modo) { modoSoltar = modo; }
    Nodo *HitTest(const QPoint &posicion) const;
    Nodo *DropHighlight() const { return resaltado; }
    // Highlights the node that a drop would reach, nullptr for none.
    void setDropHighlight(Nodo *nodo);

Q_SIGNALS:
    void NodeClick(comunesQVX::Nodo *nodo);
    // After the person ended the editing of the selected node's label; the handler may cancel it or change the text.
    // The tree may be rebuilt in it.
    void AfterLabelEdit(bool &cancelar, QString &texto);
    void KeyDown(int codigo);
    void Expand(comunesQVX::Nodo *nodo);
    void Collapse(comunesQVX::Nodo *nodo);
    void OLEDragOver(const QPoint &posicion);
    // Dropped text; raised after the last OLEDragOver and after the drag has ended, so that the handler may ask.
    void OLEDragDrop(const QString &texto);

protected:
    using QTreeWidget::edit;
    bool edit(const QModelIndex &indice, EditTrigger motivo, QEvent *evento) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &indice,
                                                         const QEvent *evento = nullptr) const override;
    void focusInEvent(QFocusEvent *evento) override;
    void keyPressEvent(QKeyEvent *evento) override;
    void mousePressEvent(QMouseEvent *evento) override;
    void mouseReleaseEvent(QMouseEvent *evento) override;
    void dragEnterEvent(QDragEnterEvent *evento) override;
    void dragMoveEvent(QDragMoveEvent *evento) override;
    void dragLeaveEvent(QDragLeaveEvent *evento) override;
    void dropEvent(QDropEvent *evento) override;
    void scrollContentsBy(int dx, int dy) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint fin) override;

private:
    class Delegado;
    struct Edicion {
        QString clave;
        QString texto;
    };

    Nodo *Agregar(Nodo *padre, const QString &clave, const QString &texto, int imagen);
    void Olvidar(const Nodo *rama);
    QString ClaveElegida() const;
    void SubirSeleccion();
    void Elegido();
    bool MoverConTecla(int tecla);
    void DesecharEdicion();
    void TerminarEdicion(Edicion edicion);
    bool AceptaArrastre(const QDropEvent &evento) const;

    ImageList imagenes;
    QHash<QString, Nodo *> porClave;
    Nodo *resaltado = nullptr;
    int modoSoltar = 0;
    std::optional<Edicion> confirmada; // typed and committed, while its editor is still open
    QString claveEditada;              // node whose AfterLabelEdit runs; "" as soon as the tree no longer holds it
    QString claveAlPulsar;
    bool pulsado = false;          // the mouse went down on a node
    bool enfocadoAlPulsar = false; // and gave the tree the focus
    QPoint puntoArrastre;
};

} // namespace comunesQVX
