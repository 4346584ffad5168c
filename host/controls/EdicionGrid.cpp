// The person's work in the grid: moving, typing, the search button, removing rows.

#include "controls/DelegadoCelda.h"
#include "controls/NumeroEscrito.h"
#include "controls/SSOleDBGrid.h"
#include "controls/Teclas.h"
#include "data/Texto.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <algorithm>
#include <utility>

namespace SSDataWidgets_B_OLEDB
{

namespace
{

constexpr int LargoNumero = 30; // characters that may be typed in a number

}

bool SSOleDBGrid::EsEditable(const QModelIndex &indice) const
{
    return indice.isValid() && isEnabled() && !ColumnaDe(indice).bloqueada;
}

bool SSOleDBGrid::TieneBoton(const QModelIndex &indice) const
{
    return EsEditable(indice) && ColumnaDe(indice).boton;
}

bool SSOleDBGrid::EnBoton(const QPoint &posicion) const
{
    return TieneBoton(currentIndex()) && DelegadoCelda::AreaBoton(visualRect(currentIndex())).contains(posicion);
}

bool SSOleDBGrid::edit(const QModelIndex &indice, EditTrigger motivo, QEvent *evento)
{
    return EsEditable(indice) && QTableWidget::edit(indice, motivo, evento);
}

void SSOleDBGrid::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint sugerencia)
{
    const bool conElFoco = editor && editor == window()->focusWidget();
    QTableWidget::closeEditor(editor, sugerencia);
    if (conElFoco) // also while the window is not active again yet after a message
        setFocus();
    DevolverSiVacio();
}

// What is wrong with the text in the open editor, "" when nothing is.
QString SSOleDBGrid::ReparoDelEditor() const
{
    const auto *editor = qobject_cast<QLineEdit *>(indexWidget(currentIndex()));
    if (!editor || ColumnaDe(currentIndex()).formato.isEmpty())
        return {};
    const QString anterior = Texto(Row(), currentColumn());
    if (editor->text() == anterior)
        return {};
    return qvx::ReparoDeNumero(editor->text(), LargoNumero, anterior.startsWith(QLatin1Char('-')));
}

// False when the text is to be kept and cannot be: the editor stays. Also when the grid went with a message.
bool SSOleDBGrid::CerrarEditor(bool guardar)
{
    const QPointer<SSOleDBGrid> viva = this;
    QWidget *editor = indexWidget(currentIndex());
    if (!editor) {
        AvisarCambio();
        return viva;
    }
    if (const QString reparo = guardar ? ReparoDelEditor() : QString(); !reparo.isEmpty()) {
        qvx::Rechazar(static_cast<QLineEdit &>(*editor), reparo);
        return false;
    }
    if (guardar)
        commitData(editor);
    AvisarCambio();
    if (!viva)
        return false;
    if (indexWidget(currentIndex()) == editor) // a handler may have moved on or removed the row
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    return true;
}

// Typing in the blank line makes it a row.
void SSOleDBGrid::EmpezarRenglon()
{
    if (Row() != Rows())
        return;
    nueva = model()->index(Row(), 0);
    RenglonBlancoEmpieza();
}

// A row that was begun and holds nothing is the blank line again.
void SSOleDBGrid::DevolverSiVacio()
{
    if (!nueva.isValid() || nueva.row() != Rows() - 1)
        return;
    for (int columna = 0; columna < columnCount(); ++columna)
        if (!Texto(nueva.row(), columna).isEmpty())
            return;
    nueva = cambiada = QPersistentModelIndex();
    removeRow(Rows());
    MarcarRenglon(Rows(), "*");
}

void SSOleDBGrid::GuardarEdicion(int fila, int columna, const QString &texto)
{
    QString nuevo = texto;
    if (!columnas.at(columna).formato.isEmpty()) {
        const auto numero = qvx::TextoANumero(texto);
        nuevo = numero ? qvx::NumeroATexto(*numero) : QString();
    }
    if (nuevo == Texto(fila, columna))
        return;
    EmpezarRenglon();
    PonerTexto(fila, columna, nuevo);
    porAvisar = columna;
}

// Not while the toolkit takes the text over: it would not outlive a form that goes with a message of its handler.
void SSOleDBGrid::AvisarCambio()
{
    if (porAvisar >= 0)
        Q_EMIT AfterColUpdate(std::exchange(porAvisar, -1));
}

void SSOleDBGrid::MarcarCambio()
{
    if (Row() < 0 || Row() == Rows() || (cambiada.isValid() && cambiada.row() == Row()))
        return;
    cambiada = model()->index(Row(), 0);
    MarcarRenglon(Row(), "✎");
}

void SSOleDBGrid::ActualizarRenglon()
{
    if (!cambiada.isValid())
        return;
    MarcarRenglon(cambiada.row(), {});
    nueva = cambiada = QPersistentModelIndex();
    Q_EMIT BeforeUpdate();
}

// False when the current cell cannot be left.
bool SSOleDBGrid::AntesDeMover(const QPersistentModelIndex &destino)
{
    if (!currentIndex().isValid())
        return true;
    if (!moviendo) {
        moviendo = true;
        const QPointer<SSOleDBGrid> viva = this;
        const bool cerrado = CerrarEditor(true);
        if (viva)
            moviendo = false;
        if (!cerrado)
            return false;
    }
    if (destino.row() != Row())
        ActualizarRenglon();
    return true;
}

bool SSOleDBGrid::ConfirmarEntrada()
{
    if (!CerrarEditor(true))
        return false;
    ActualizarRenglon();
    return true;
}

// Neither the grid's own editor nor another window, also a message, leaves the row.
void SSOleDBGrid::AlCambiarFoco(const QWidget *control)
{
    if (!control || control->window() != window())
        return;
    const bool dentro = control == this || isAncestorOf(control);
    const bool sale = conFoco && !dentro;
    conFoco = dentro;
    if (sale)
        AlSalir(*this, ReparoDelEditor().isEmpty());
}

void SSOleDBGrid::focusInEvent(QFocusEvent *evento)
{
    QTableWidget::focusInEvent(evento);
    const QModelIndex primera = EditableDesdeActual(true);
    if (!currentIndex().isValid() && primera.isValid())
        setCurrentIndex(primera);
}

// The next or previous cell to be typed into; none past the ends, so that the Tab key leaves the grid there.
QModelIndex SSOleDBGrid::EditableDesdeActual(bool siguiente) const
{
    const int celdas = rowCount() * columnCount();
    const int antesDeTodas = siguiente ? -1 : celdas;
    int celda = currentIndex().isValid() ? currentRow() * columnCount() + currentColumn() : antesDeTodas;
    for (celda += siguiente ? 1 : -1; celda >= 0 && celda < celdas; celda += siguiente ? 1 : -1) {
        const QModelIndex indice = model()->index(celda / columnCount(), celda % columnCount());
        if (EsEditable(indice))
            return indice;
    }
    return {};
}

bool SSOleDBGrid::focusNextPrevChild(bool siguiente)
{
    const QWidget *foco = QApplication::focusWidget();
    if (foco != this && isAncestorOf(foco) && !foco->isVisible()) { // an editor whose row was removed: nobody moves
        setFocus();
        return true;
    }
    const QModelIndex destino = EditableDesdeActual(siguiente);
    if (!isVisible() || !destino.isValid())
        return QTableWidget::focusNextPrevChild(siguiente);
    setCurrentIndex(destino);
    return true;
}

void SSOleDBGrid::keyPressEvent(QKeyEvent *evento)
{
    const bool editaba = state() == EditingState;
    switch (evento->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT KeyPress(comunesQVX::tecla::Enter);
        return;
    case Qt::Key_F3:
        if (!TieneBoton(currentIndex()))
            break;
        PulsarBoton();
        return;
    case Qt::Key_Delete:
        if (evento->modifiers() & Qt::ControlModifier)
            QuitarRenglones({currentIndex()});
        else
            Suprimir();
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (!CerrarEditor(true))
            return;
        break;
    default:
        break;
    }
    QTableWidget::keyPressEvent(evento);
    if (!editaba && state() == EditingState)
        evento->accept();
    const int codigo = comunesQVX::CodigoTecla(evento->key());
    if (!evento->isAccepted() && codigo != 0)
        Q_EMIT KeyPress(codigo);
}

// What the keys of an open cell editor do; any other is the editor's own.
bool SSOleDBGrid::TeclaEnEditor(const QKeyEvent &tecla)
{
    switch (tecla.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (CerrarEditor(true))
            Q_EMIT KeyPress(comunesQVX::tecla::Enter);
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (CerrarEditor(true))
            focusNextPrevChild(tecla.key() == Qt::Key_Tab);
        return true;
    case Qt::Key_F3:
        if (!TieneBoton(currentIndex()))
            return false;
        PulsarBoton();
        return true;
    case Qt::Key_Delete:
        if (!(tecla.modifiers() & Qt::ControlModifier))
            return false;
        QuitarRenglones({currentIndex()});
        return true;
    default:
        return false;
    }
}

void SSOleDBGrid::mousePressEvent(QMouseEvent *evento)
{
    if (!ReparoDelEditor().isEmpty()) {
        CerrarEditor(true);
        return;
    }
    botonPulsado = evento->button() == Qt::LeftButton && EnBoton(evento->position().toPoint());
    if (!botonPulsado)
        QTableWidget::mousePressEvent(evento);
    viewport()->update();
}

void SSOleDBGrid::mouseReleaseEvent(QMouseEvent *evento)
{
    if (!botonPulsado) {
        QTableWidget::mouseReleaseEvent(evento);
        return;
    }
    botonPulsado = false;
    viewport()->update();
    if (EnBoton(evento->position().toPoint()))
        PulsarBoton();
}

void SSOleDBGrid::PulsarBoton()
{
    if (CerrarEditor(true) && TieneBoton(currentIndex()))
        Q_EMIT BtnClick(currentColumn());
}

// Rows chosen by their headers go as a whole; a cell is only emptied.
void SSOleDBGrid::Suprimir()
{
    const QModelIndexList enteras = selectionModel()->selectedRows();
    if (!enteras.isEmpty()) {
        QuitarRenglones(enteras);
    } else if (EsEditable(currentIndex())) {
        const QPointer<SSOleDBGrid> viva = this;
        GuardarEdicion(Row(), currentColumn(), {});
        AvisarCambio();
        if (viva)
            DevolverSiVacio();
    }
}

void SSOleDBGrid::QuitarRenglones(QModelIndexList filas)
{
    CerrarEditor(false);
    std::sort(filas.begin(), filas.end(), [](const auto &a, const auto &b) { return a.row() > b.row(); });
    for (const QModelIndex &fila : filas)
        if (fila.isValid() && fila.row() < Rows())
            RemoveItem(fila.row());
}

void SSOleDBGrid::contextMenuEvent(QContextMenuEvent *evento)
{
    const bool porTecla = evento->reason() == QContextMenuEvent::Keyboard;
    MostrarMenu(porTecla ? viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()) : evento->globalPos());
}

void SSOleDBGrid::MostrarMenu(const QPoint &lugar)
{
    const QPointer<QMenu> menu = new QMenu(this); // goes with the grid
    const QAction *buscar = TieneBoton(currentIndex()) ? menu->addAction("Buscar…\tF3") : nullptr;
    QAction *quitar = menu->addAction("Quitar renglón\tCtrl+Supr");
    quitar->setEnabled(isEnabled() && Row() >= 0 && Row() < Rows());
    const QAction *elegida = menu->exec(lugar);
    if (!menu)
        return;
    menu->deleteLater();
    if (elegida && elegida == buscar)
        PulsarBoton();
    else if (elegida == quitar)
        QuitarRenglones({currentIndex()});
}

} // namespace SSDataWidgets_B_OLEDB
