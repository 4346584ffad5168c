#include "app/comparar/VistaComparacion.h"

#include "app/Rotulo.h"
#include "app/Textos.h"
#include "app/catalogos/DialogoExportarCatalogo.h"
#include "app/comparar/ModeloComparacion.h"
#include "app/comparar/TextoDeComparacion.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>

namespace
{

constexpr int RenglonesAbiertos = 300; // beyond that only the parts are seen at first

} // namespace

VistaComparacion::VistaComparacion(QWidget *padre)
    : QWidget(padre)
    , modelo(new ModeloComparacion(this))
    , lvComparacion(new QTreeView)
    , lblLados(RotuloLargo("lblLados"))
    , lblAvisos(RotuloLargo("lblAvisos"))
    , lblResumen(RotuloLargo("lblResumen"))
    , chkSoloDiferencias(new QCheckBox("Solo las &diferencias"))
    , cmdExportar(new QPushButton("E&xportar CSV…"))
{
    setObjectName("VistaComparacion");
    chkSoloDiferencias->setObjectName("chkSoloDiferencias");
    chkSoloDiferencias->setChecked(true);
    cmdExportar->setObjectName("cmdExportar");
    cmdExportar->setAutoDefault(false);
    cmdExportar->setEnabled(false);
    lvComparacion->setObjectName("lvComparacion");
    lvComparacion->setAccessibleName("En qué se distinguen los dos planes");
    lvComparacion->setModel(modelo);
    lvComparacion->setUniformRowHeights(true);
    lvComparacion->setAllColumnsShowFocus(true);
    lvComparacion->setAlternatingRowColors(true);
    lvComparacion->header()->setStretchLastSection(true);
    auto *disposicion = new QVBoxLayout(this);
    disposicion->setContentsMargins(0, 0, 0, 0);
    auto *abajo = new QHBoxLayout;
    abajo->addWidget(lblResumen, 1);
    abajo->addWidget(chkSoloDiferencias);
    abajo->addWidget(cmdExportar);
    disposicion->addWidget(lblLados);
    disposicion->addWidget(lvComparacion, 1);
    disposicion->addWidget(lblAvisos);
    disposicion->addLayout(abajo);
    lblAvisos->hide();
    connect(chkSoloDiferencias, &QCheckBox::toggled, this, &VistaComparacion::Llenar);
    connect(cmdExportar, &QPushButton::clicked, this, &VistaComparacion::Exportar);
}

VistaComparacion::~VistaComparacion() = default;

void VistaComparacion::Mostrar(comparar::Comparados nuevos)
{
    lvComparacion->setModel(nullptr); // its rows point into what goes
    modelo->Mostrar({}, true);
    comparados = std::move(nuevos);
    lvComparacion->setModel(modelo);
    lblLados->setText("Antes: " + comparados.antes.Titulo() + "\nDespués: " + comparados.despues.Titulo());
    QStringList avisos = comparados.antes.avisos + comparados.despues.avisos;
    if (const int folios = comparados.comparacion.folios; folios > 0)
        avisos.append("Quedan con otro folio: " + Cuantos(folios, "servicio.", "servicios."));
    lblAvisos->setText(avisos.join('\n'));
    lblAvisos->setVisible(!avisos.isEmpty());
    lblResumen->setText(comparar::Resumen(comparados.comparacion));
    cmdExportar->setEnabled(!comparados.comparacion.SonIguales());
    Llenar();
}

void VistaComparacion::Llenar()
{
    modelo->Mostrar(comparados.comparacion, chkSoloDiferencias->isChecked());
    if (modelo->Renglones() <= RenglonesAbiertos)
        lvComparacion->expandAll();
    AjustarColumnas();
    if (modelo->rowCount() > 0)
        lvComparacion->setCurrentIndex(modelo->index(0, 0));
}

void VistaComparacion::AjustarColumnas()
{
    const int suerte = lvComparacion->fontMetrics().horizontalAdvance("con cambios  ");
    const int ancho = lvComparacion->viewport()->width() - suerte;
    lvComparacion->setColumnWidth(ModeloComparacion::Que, ancho / 2);
    lvComparacion->setColumnWidth(ModeloComparacion::Suerte, suerte);
    lvComparacion->setColumnWidth(ModeloComparacion::Antes, ancho / 4);
}

void VistaComparacion::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    AjustarColumnas();
}

void VistaComparacion::Exportar()
{
    DialogoExportarCatalogo::Exportar(this, comparar::EnHoja(comparados.comparacion), false);
}
