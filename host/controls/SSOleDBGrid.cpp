#include "controls/SSOleDBGrid.h"

#include "controls/DelegadoCelda.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"

#include <QApplication>
#include <QHeaderView>
#include <QIcon>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>
#include <numeric>

namespace SSDataWidgets_B_OLEDB
{

namespace
{

// A longer text might stand for a number too large for one; a painted cell must not raise errors.
constexpr int LargoNumeroMostrado = 300;

// Seen on light and on dark cells alike.
constexpr QColor ColorDeAviso(242, 193, 78, 90);

// Holds the plain text and shows it in its column's format; a text that is no number is shown as it stands.
class ItemNumero : public QTableWidgetItem
{
public:
    ItemNumero(const QString &texto, QString formato_) : QTableWidgetItem(texto), formato(std::move(formato_)) {}

    QVariant data(int papel) const override
    {
        const QVariant valor = QTableWidgetItem::data(papel);
        if (papel != Qt::DisplayRole || valor.toString().size() > LargoNumeroMostrado)
            return valor;
        const auto numero = qvx::TextoANumero(valor.toString());
        return numero ? qvx::NumeroConFormato(*numero, formato) : valor;
    }

private:
    QString formato;
};

} // namespace

// Every change of the current cell, by mouse, key or code, passes here.
class SeleccionGrid : public QItemSelectionModel
{
public:
    explicit SeleccionGrid(SSOleDBGrid &duena) : QItemSelectionModel(duena.model(), &duena) {}

    void setCurrentIndex(const QModelIndex &indice, SelectionFlags orden) override
    {
        const QPersistentModelIndex destino = indice;
        SSOleDBGrid *grid = Grid();
        if (grid && indice.isValid() && indice != currentIndex() && !grid->AntesDeMover(destino))
            return;
        if (destino.isValid() || !indice.isValid()) // a handler may have removed the row
            QItemSelectionModel::setCurrentIndex(destino, orden);
    }

    // Nothing else is selected while the current cell cannot be left.
    using QItemSelectionModel::select;
    void select(const QItemSelection &seleccion, SelectionFlags orden) override
    {
        const SSOleDBGrid *grid = Grid();
        if (!grid || grid->ReparoDelEditor().isEmpty())
            QItemSelectionModel::select(seleccion, orden);
    }

private:
    // None while it is being destroyed: its rows go last.
    SSOleDBGrid *Grid() const { return qobject_cast<SSOleDBGrid *>(parent()); }
};

SSOleDBGrid::SSOleDBGrid(QWidget *padre) : QTableWidget(padre)
{
    delete selectionModel();
    setSelectionModel(new SeleccionGrid(*this));
    setItemDelegate(new DelegadoCelda(*this));
    setEditTriggers(AnyKeyPressed | EditKeyPressed | DoubleClicked);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setCornerButtonEnabled(false);
    setToolTip("F3 busca la clave · Ctrl+Supr quita el renglón");
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setResizeContentsPrecision(0); // the rows in sight only
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
    verticalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);

    AjustarRenglones();

    ajuste.setSingleShot(true);
    const auto pedirAjuste = [this] {
        if (!ajuste.isActive())
            ajuste.start(0);
    };
    connect(&ajuste, &QTimer::timeout, this, &SSOleDBGrid::AjustarColumnas);
    connect(model(), &QAbstractItemModel::dataChanged, this, pedirAjuste);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, pedirAjuste);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] { anchosDePersona |= !ajustando; });
    connect(verticalHeader(), &QWidget::customContextMenuRequested, this, [this](const QPoint &lugar) {
        selectRow(verticalHeader()->logicalIndexAt(lugar));
        MostrarMenu(verticalHeader()->viewport()->mapToGlobal(lugar));
    });
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget *, const QWidget *ahora) { AlCambiarFoco(ahora); });
    // Also when the form raises it for a key that was chosen in the search dialog.
    connect(this, &SSOleDBGrid::AfterColUpdate, this, &SSOleDBGrid::MarcarCambio);
}

void SSOleDBGrid::DefinirColumnas(const QList<Columna> &nuevas)
{
    const QScopedValueRollback guarda(ajustando, true);
    setRowCount(0);
    columnas = nuevas;
    contenidos = QList<int>(nuevas.size(), 0);
    setColumnCount(static_cast<int>(nuevas.size()));
    for (int columna = 0; columna < columnCount(); ++columna) {
        auto *titulo = new QTableWidgetItem(nuevas.at(columna).titulo);
        titulo->setTextAlignment(Qt::AlignVCenter
                                 | (nuevas.at(columna).formato.isEmpty() ? Qt::AlignLeft : Qt::AlignRight));
        setHorizontalHeaderItem(columna, titulo);
        setColumnWidth(columna, nuevas.at(columna).ancho);
    }
    AgregarRenglonBlanco();
}

QString SSOleDBGrid::NombreColumna(int columna) const
{
    return columnas.at(columna).nombre;
}

int SSOleDBGrid::IndiceColumna(const QString &nombre) const
{
    for (int columna = 0; columna < columnas.size(); ++columna)
        if (columnas.at(columna).nombre.size() == nombre.size()
            && columnas.at(columna).nombre.compare(nombre, Qt::CaseInsensitive) == 0)
            return columna;
    throw qvx::ErrorEjecucion(qvx::errores::ElementoNoEncontrado, "No existe la columna " + nombre);
}

int SSOleDBGrid::Rows() const
{
    return std::max(0, rowCount() - 1);
}

int SSOleDBGrid::Row() const
{
    return currentRow();
}

void SSOleDBGrid::ExigirRenglon(int fila, int hasta) const
{
    if (fila < 0 || fila > hasta)
        throw qvx::ErrorEjecucion(qvx::errores::ElementoNoEncontrado, QString("No existe el renglón %1").arg(fila));
}

QString SSOleDBGrid::Texto(int fila, int columna) const
{
    const QTableWidgetItem *celda = item(fila, columna);
    return celda ? celda->data(Qt::EditRole).toString() : QString();
}

void SSOleDBGrid::PonerTexto(int fila, int columna, const QString &texto)
{
    const QString &formato = columnas.at(columna).formato;
    if (QTableWidgetItem *celda = item(fila, columna))
        celda->setText(texto);
    else if (!texto.isEmpty())
        setItem(fila, columna, formato.isEmpty() ? new QTableWidgetItem(texto) : new ItemNumero(texto, formato));
    // A key is known when it is given its description.
    if (columnas.at(columna).boton)
        MarcarClave(fila, columna, !texto.isEmpty());
    else if (columna > 0 && columnas.at(columna - 1).boton)
        MarcarClave(fila, columna - 1, texto.isEmpty() && !Texto(fila, columna - 1).isEmpty());
}

void SSOleDBGrid::MarcarClave(int fila, int columna, bool desconocida)
{
    QTableWidgetItem *celda = item(fila, columna);
    if (!celda || desconocida == celda->data(Qt::DecorationRole).isValid())
        return;
    celda->setData(Qt::DecorationRole, desconocida ? QIcon(":/controls/mensaje_exclamacion.svg") : QVariant());
    celda->setData(Qt::BackgroundRole, desconocida ? QBrush(ColorDeAviso) : QVariant());
    celda->setToolTip(desconocida ? "La clave no está en el catálogo, o está dada de baja" : QString());
}

QString SSOleDBGrid::Celda(int fila, const QString &columna) const
{
    return Texto(fila, IndiceColumna(columna));
}

void SSOleDBGrid::setCelda(int fila, const QString &columna, const QString &texto)
{
    const int indice = IndiceColumna(columna);
    ExigirRenglon(fila, Rows());
    if (fila == Rows()) {
        if (texto.isEmpty())
            return;
        RenglonBlancoEmpieza();
    }
    PonerTexto(fila, indice, texto);
}

double SSOleDBGrid::Numero(int fila, const QString &columna) const
{
    return qvx::TextoANumero(Celda(fila, columna)).value_or(0);
}

bool SSOleDBGrid::EsNumerico(int fila, const QString &columna) const
{
    return qvx::TextoANumero(Celda(fila, columna)).has_value();
}

int SSOleDBGrid::AddItem()
{
    const int fila = Rows();
    insertRow(fila);
    return fila;
}

void SSOleDBGrid::RemoveItem(int fila)
{
    ExigirRenglon(fila, Rows() - 1);
    const bool actual = fila == Row();
    removeRow(fila);
    if (actual)
        setCurrentCell(fila, std::max(0, currentColumn())); // the row that follows takes its place
}

void SSOleDBGrid::RemoveAll()
{
    setRowCount(0);
    contenidos.fill(0);
    AgregarRenglonBlanco();
}

void SSOleDBGrid::AgregarRenglonBlanco()
{
    const int fila = rowCount();
    insertRow(fila);
    MarcarRenglon(fila, "*");
    setRowHidden(fila, !isEnabled());
}

void SSOleDBGrid::RenglonBlancoEmpieza()
{
    MarcarRenglon(Rows(), {});
    setRowHidden(Rows(), false);
    AgregarRenglonBlanco();
}

// Without a mark the row shows its number.
void SSOleDBGrid::MarcarRenglon(int fila, const QString &marca)
{
    setVerticalHeaderItem(fila, marca.isEmpty() ? nullptr : new QTableWidgetItem(marca));
}

// The widest description, which takes the room that is left.
int SSOleDBGrid::ColumnaElastica() const
{
    int elastica = -1;
    for (int i = 0; i < columnas.size(); ++i) {
        const Columna &columna = columnas.at(i);
        if (columna.bloqueada && columna.formato.isEmpty()
            && (elastica < 0 || columna.ancho > columnas.at(elastica).ancho))
            elastica = i;
    }
    return elastica;
}

// Titles, keys and numbers are never cut off. Where there is too little room, the columns give up what their titles and
// texts do not need, each in proportion.
void SSOleDBGrid::AjustarColumnas()
{
    if (anchosDePersona || columnas.isEmpty() || !isVisible()) // a page that is not open yet is fitted when it is
        return;
    const QScopedValueRollback guarda(ajustando, true);
    QList<int> anchos;
    QList<int> minimos;
    for (int i = 0; i < columnas.size(); ++i) {
        const Columna &columna = columnas.at(i);
        contenidos[i] = std::max(contenidos.at(i), sizeHintForColumn(i));
        const bool entera = columna.boton || !columna.formato.isEmpty();
        const int contenido = entera ? contenidos.at(i) : std::min(contenidos.at(i), columna.ancho);
        minimos.append(std::max(contenido, horizontalHeader()->sectionSizeHint(i)));
        anchos.append(std::max(columna.ancho, minimos.at(i)));
    }
    const int total = std::accumulate(anchos.cbegin(), anchos.cend(), 0);
    const int holgura = total - std::accumulate(minimos.cbegin(), minimos.cend(), 0);
    const int falta = std::clamp(total - viewport()->width(), 0, holgura);
    // Each takes its part of what is left to take: rounding leaves nothing over.
    for (int i = 0, resto = falta, de = holgura; i < columnas.size() && resto > 0; ++i) {
        const int propia = anchos.at(i) - minimos.at(i);
        const int quita = de > 0 ? (resto * propia + de - 1) / de : 0;
        anchos[i] -= quita;
        resto -= quita;
        de -= propia;
    }
    const int sobra = viewport()->width() - std::accumulate(anchos.cbegin(), anchos.cend(), 0);
    if (const int elastica = ColumnaElastica(); elastica >= 0)
        anchos[elastica] = std::max(minimos.at(elastica), anchos.at(elastica) + sobra);
    for (int i = 0; i < columnas.size(); ++i)
        setColumnWidth(i, anchos.at(i));
}

// A long description shows in two lines.
void SSOleDBGrid::AjustarRenglones()
{
    const int alto = 2 * fontMetrics().lineSpacing() + 4;
    verticalHeader()->setDefaultSectionSize(std::max(verticalHeader()->defaultSectionSize(), alto));
}

void SSOleDBGrid::resizeEvent(QResizeEvent *evento)
{
    QTableWidget::resizeEvent(evento);
    AjustarColumnas();
}

void SSOleDBGrid::showEvent(QShowEvent *evento)
{
    QTableWidget::showEvent(evento);
    AjustarColumnas();
}

void SSOleDBGrid::changeEvent(QEvent *evento)
{
    QTableWidget::changeEvent(evento);
    if (evento->type() == QEvent::FontChange)
        AjustarRenglones();
    if (evento->type() == QEvent::EnabledChange && rowCount() > 0)
        setRowHidden(rowCount() - 1, !isEnabled());
}

} // namespace SSDataWidgets_B_OLEDB
