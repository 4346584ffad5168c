#pragma once

#include "controls/EntradaPendiente.h"
#include "system/Exporta.h"

#include <QTableWidget>
#include <QTimer>

namespace QVX_EXPORTA SSDataWidgets_B_OLEDB
{

struct Columna {
    QString nombre = {}; // found in any letter case
    QString titulo = {};
    QString formato = {};   // number format of the display ("#,##0.00#######"), "" for a text column
    int ancho = 96;         // pixels at scale 1
    bool bloqueada = false; // not typed into
    bool boton = false;     // key cell: a search button, also F3; the column behind it describes the key
};

// The host's grid: named columns, cells that hold plain text (numbers unrounded, "1234.5") and show it in the column's
// format, a blank line at the end in which a new row is typed. Only rows that were begun count.
class SSOleDBGrid : public QTableWidget, public qvx::EntradaPendiente
{
    Q_OBJECT

public:
    explicit SSOleDBGrid(QWidget *padre = nullptr);

    void DefinirColumnas(const QList<Columna> &nuevas);
    QString NombreColumna(int columna) const;
    int IndiceColumna(const QString &nombre) const; // raises ElementoNoEncontrado

    int Rows() const; // rows begun, without the blank line
    int Row() const;  // current row; Rows() on the blank line, -1 when there is none

    // The plain text of a cell, "" where there is none.
    QString Celda(int fila, const QString &columna) const;
    // Changes a cell (on the blank line: begins a row). Raises no event.
    void setCelda(int fila, const QString &columna, const QString &texto);
    // The number of a cell, 0 when it is empty or no number.
    double Numero(int fila, const QString &columna) const;
    bool EsNumerico(int fila, const QString &columna) const;

    int AddItem(); // adds an empty row at the end, gives its index
    void RemoveItem(int fila);
    void RemoveAll();

    // Ends the typing in the current cell and the row's update (AfterColUpdate, BeforeUpdate).
    bool ConfirmarEntrada() override;

Q_SIGNALS:
    void AfterColUpdate(int columna); // the person changed this column of the current row
    void BtnClick(int columna);       // the button of a key cell of the current row
    void BeforeUpdate();              // the current row, changed since the last time, is left or confirmed
    void KeyPress(int codigo);        // a key that the grid did not use itself (13: Enter)

protected:
    using QTableWidget::edit;
    bool edit(const QModelIndex &indice, EditTrigger motivo, QEvent *evento) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint sugerencia) override;
    bool focusNextPrevChild(bool siguiente) override;
    void keyboardSearch(const QString & /*texto*/) override {} // what is typed in a locked cell goes nowhere
    void keyPressEvent(QKeyEvent *evento) override;
    void mousePressEvent(QMouseEvent *evento) override;
    void mouseReleaseEvent(QMouseEvent *evento) override;
    void contextMenuEvent(QContextMenuEvent *evento) override;
    void focusInEvent(QFocusEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;
    void showEvent(QShowEvent *evento) override;
    void changeEvent(QEvent *evento) override;

private:
    friend class DelegadoCelda;
    friend class SeleccionGrid;

    // Cells and rows
    const Columna &ColumnaDe(const QModelIndex &indice) const { return columnas.at(indice.column()); }
    QString Texto(int fila, int columna) const;
    void PonerTexto(int fila, int columna, const QString &texto);
    void MarcarClave(int fila, int columna, bool desconocida);
    void AgregarRenglonBlanco();
    void RenglonBlancoEmpieza();
    void MarcarRenglon(int fila, const QString &marca);
    void ExigirRenglon(int fila, int hasta) const;
    int ColumnaElastica() const;
    void AjustarColumnas();
    void AjustarRenglones();

    // The person's work
    bool EsEditable(const QModelIndex &indice) const;
    bool TieneBoton(const QModelIndex &indice) const;
    bool EnBoton(const QPoint &posicion) const;
    bool AntesDeMover(const QPersistentModelIndex &destino);
    void AlCambiarFoco(const QWidget *control);
    void EmpezarRenglon();
    void DevolverSiVacio();
    void GuardarEdicion(int fila, int columna, const QString &texto);
    QString ReparoDelEditor() const;
    bool CerrarEditor(bool guardar);
    void AvisarCambio();
    void MarcarCambio();
    void ActualizarRenglon();
    bool TeclaEnEditor(const QKeyEvent &tecla);
    QModelIndex EditableDesdeActual(bool siguiente) const;
    void PulsarBoton();
    void Suprimir();
    void QuitarRenglones(QModelIndexList filas);
    void MostrarMenu(const QPoint &lugar);

    QList<Columna> columnas;
    QList<int> contenidos;          // widest text of each column that was shown so far
    QTimer ajuste;                  // one fitting of the columns for any number of changes
    QPersistentModelIndex cambiada; // the row changed since its last update
    QPersistentModelIndex nueva;    // the row that the person began and has not left yet
    int porAvisar = -1;             // the column that was changed, until AfterColUpdate says so
    bool anchosDePersona = false;   // a person's own column widths are left alone
    bool ajustando = false;
    bool moviendo = false;
    bool conFoco = false;
    bool botonPulsado = false;
};

} // namespace SSDataWidgets_B_OLEDB
