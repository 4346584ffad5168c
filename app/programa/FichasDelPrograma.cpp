// The tabs of the programme's page, and the tables in them.

#include "app/programa/GraficaDeCarga.h"
#include "app/programa/HojasDePrograma.h"
#include "app/programa/ModeloPrograma.h"
#include "app/programa/PaginaPrograma.h"
#include "app/programa/TextosDePrograma.h"
#include "controls/ModeloTabla.h"
#include "controls/VistaTabla.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QSpinBox>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeView>

namespace
{

constexpr int DiasParaJuntar = 7;
constexpr int MaximoParaJuntar = 365;

// As a list shows it: dates are texts there, and sort as such.
QList<qvx::ColumnaDeTabla> ColumnasDe(const Hoja &hoja)
{
    using ClaseEnTabla = qvx::ColumnaDeTabla::Clase;
    QList<qvx::ColumnaDeTabla> columnas;
    for (const ColumnaDeHoja &columna : hoja.columnas)
        columnas.append({columna.titulo, columna.clase == ColumnaDeHoja::Clase::Numero   ? ClaseEnTabla::Numero
                                         : columna.clase == ColumnaDeHoja::Clase::Dinero ? ClaseEnTabla::Dinero
                                                                                         : ClaseEnTabla::Texto});
    return columnas;
}

QList<QVariantList> FilasDe(const Hoja &hoja)
{
    QList<QVariantList> filas = hoja.filas;
    for (QVariantList &fila : filas)
        for (qsizetype i = 0; i < fila.size(); ++i)
            if (!fila.at(i).isValid())
                continue;
            else if (hoja.columnas.at(i).clase == ColumnaDeHoja::Clase::Fecha)
                fila[i] = programa::Escrita(fila.at(i).toDate());
            else if (hoja.columnas.at(i).clase != ColumnaDeHoja::Clase::Texto)
                fila[i] = programa::Cantidad::De(fila.at(i).toDouble()).Redondeada(2).Numero();
    return filas;
}

QWidget *EnColumna(const QList<QWidget *> &cosas, QWidget *estirada)
{
    auto *ficha = new QWidget;
    auto *columna = new QVBoxLayout(ficha);
    for (QWidget *cosa : cosas)
        columna->addWidget(cosa, cosa == estirada ? 1 : 0);
    return ficha;
}

} // namespace

QWidget *PaginaPrograma::FichaDeFechas()
{
    lvPrograma->setObjectName("lvPrograma");
    lvPrograma->setAccessibleName("Fechas del programa");
    lvPrograma->setModel(modelo);
    lvPrograma->setRootIsDecorated(false);
    lvPrograma->setUniformRowHeights(true);
    lvPrograma->setAllColumnsShowFocus(true);
    lvPrograma->setAlternatingRowColors(true);
    lvPrograma->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvPrograma->setTextElideMode(Qt::ElideMiddle); // both ends of a path tell
    lvPrograma->setSortingEnabled(true);
    lvPrograma->sortByColumn(ModeloPrograma::Programada, Qt::AscendingOrder);
    lvPrograma->header()->setStretchLastSection(false);
    lvPrograma->installEventFilter(this);
    connect(lvPrograma, &QTreeView::doubleClicked, this, &PaginaPrograma::Abrir);
    lvTotales->Poner(totales, 0, -1);
    lvTotales->header()->setSectionsClickable(false);
    lvTotales->setSelectionMode(QAbstractItemView::NoSelection);
    lvTotales->setTabKeyNavigation(false);
    lvTotales->setFixedHeight(QFontMetrics(font()).height() * 6);
    return EnColumna({lvPrograma, lvTotales}, lvPrograma);
}

QWidget *PaginaPrograma::FichaDeCarga()
{
    connect(grafica, &GraficaDeCarga::Elegido, this, &PaginaPrograma::AlElegirCarga);
    auto *lados = new QSplitter(Qt::Vertical);
    lados->addWidget(grafica);
    lados->addWidget(AgregarTabla("lvCarga", "Mano de obra por oficio y mes",
                                  [this] { return programa::HojaDeCarga(*medido, *programado); }));
    lados->setStretchFactor(0, 2);
    lados->setStretchFactor(1, 1);
    return EnColumna({lados}, lados);
}

QWidget *PaginaPrograma::FichaDeCostos()
{
    auto *lista = AgregarTabla("lvCostosDePrograma", "Costos por mes",
                               [this] { return ConTotal(programa::HojaDeCostos(*medido, *programado)); });
    return EnColumna({lista, lblLargoPlazo}, lista);
}

QWidget *PaginaPrograma::FichaDeParos()
{
    spnDias->setObjectName("spnDiasEntreParos");
    spnDias->setRange(1, MaximoParaJuntar);
    spnDias->setValue(DiasParaJuntar);
    spnDias->setSuffix(" días");
    auto *juntar = new QWidget;
    auto *fila = new QHBoxLayout(juntar);
    fila->setContentsMargins(0, 0, 0, 0);
    auto *titulo = new QLabel("&Juntar los paros que distan hasta");
    titulo->setBuddy(spnDias);
    fila->addWidget(titulo);
    fila->addWidget(spnDias);
    fila->addWidget(lblAhorro, 1);
    auto *paros = AgregarTabla("lvParos", "Paros por fecha",
                               [this] { return ConTotal(programa::HojaDeParos(*medido, *programado)); });
    auto *juntos = AgregarTabla("lvParosJuntos", "Paros que se pueden juntar", [this] { return HojaDeJuntos(); });
    connect(spnDias, &QSpinBox::valueChanged, this, [this] {
        for (Tabla &tabla : tablas)
            tabla.porPoner = tabla.porPoner || tabla.vista->objectName() == "lvParosJuntos";
        MostrarFicha();
    });
    auto *abajo = EnColumna({juntar, juntos}, juntos);
    auto *lados = new QSplitter(Qt::Vertical);
    lados->addWidget(paros);
    lados->addWidget(abajo);
    return EnColumna({lados}, lados);
}

QWidget *PaginaPrograma::FichaDeApartes()
{
    return AgregarTabla("lvSinProgramar", "Servicios sin programar",
                        [this] { return programa::HojaDeApartes(*medido, *programado); });
}

qvx::VistaTabla *PaginaPrograma::AgregarTabla(const QString &nombre, const QString &titulo,
                                              const std::function<Hoja()> &hoja)
{
    auto *vista = new qvx::VistaTabla(nombre, titulo);
    tablas.append({vista, hoja});
    return vista;
}

// The tables of a tab are made when it is looked at.
void PaginaPrograma::MostrarFicha()
{
    if (!programado)
        return;
    for (Tabla &tabla : tablas) {
        if (!tabla.porPoner || !fichas->currentWidget()
            || (tabla.vista != fichas->currentWidget() && !fichas->currentWidget()->isAncestorOf(tabla.vista)))
            continue;
        const Hoja hoja = tabla.hoja();
        QAbstractItemModel *anterior = tabla.vista->model();
        const QByteArray disposicion = tabla.vista->Dispuesta() ? tabla.vista->Disposicion() : QByteArray();
        auto *nuevo = new qvx::ModeloTabla(ColumnasDe(hoja), 0, tabla.vista);
        nuevo->Llenar(FilasDe(hoja));
        tabla.vista->Poner(nuevo, EstiradaDe(hoja), -1);
        if (!disposicion.isEmpty())
            tabla.vista->Disponer(disposicion);
        delete anterior;
        tabla.porPoner = false;
    }
    lblAhorro->setText(TextoDeAhorro(*medido, *programado, spnDias->value()));
}
