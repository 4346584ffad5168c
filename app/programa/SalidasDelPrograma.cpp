// What the page of the programme gives away: tables, calendars, paper.

#include "app/RutaParaGuardar.h"
#include "app/Textos.h"
#include "app/Trampas.h"
#include "app/catalogos/DialogoExportarCatalogo.h"
#include "app/programa/DialogoDeReporte.h"
#include "app/programa/HojasDePrograma.h"
#include "app/programa/Ics.h"
#include "app/programa/ModeloPrograma.h"
#include "app/programa/PaginaPrograma.h"
#include "app/programa/PanelQueSi.h"
#include "app/programa/PaqueteDelMes.h"
#include "controls/VistaTabla.h"
#include "plan/Planta.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"

#include <QAction>
#include <QComboBox>
#include <QDateTime>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTreeView>
#include <algorithm>

QAction *PaginaPrograma::AgregarAccion(QMenu &menu, const QString &nombre, const QString &texto,
                                       const QKeySequence &tecla, const std::function<void()> &hacer)
{
    QAction *accion = menu.addAction(texto);
    accion->setObjectName("acc" + nombre);
    accion->setShortcut(tecla);
    accion->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(accion, &QAction::triggered, this, hacer);
    addAction(accion);
    return accion;
}

QWidget *PaginaPrograma::Acciones()
{
    auto *acciones = new QWidget;
    auto *fila = new QHBoxLayout(acciones);
    fila->setContentsMargins(0, 0, 0, 0);
    auto *abrir = Boton(*fila, "cmdAbrirDelPrograma", "A&brir servicio", nullptr);
    connect(abrir, &QPushButton::clicked, this, &PaginaPrograma::Abrir);
    conPrograma.append(abrir);
    fila->addStretch();
    auto *quitar = Boton(*fila, "cmdQuitarFiltrosDelPrograma", "&Quitar filtros", nullptr);
    connect(quitar, &QPushButton::clicked, this, &PaginaPrograma::QuitarFiltros);
    auto *actualizar = Boton(*fila, "cmdActualizarPrograma", "Actuali&zar", nullptr);
    connect(actualizar, &QPushButton::clicked, this, &PaginaPrograma::Actualizar);
    auto *menu = new QMenu(this);
    AgregarAccion(*menu, "ExportarProgramaCsv", "Esta tabla como C&SV…", {},
                  [this] { Exportar(&PaginaPrograma::HojaMostrada, false); });
    AgregarAccion(*menu, "ExportarProgramaXlsx", "Esta tabla como &XLSX…", {},
                  [this] { Exportar(&PaginaPrograma::HojaMostrada, true); });
    AgregarAccion(*menu, "ExportarParosJuntos", "Los paros que se pueden &juntar como XLSX…", {},
                  [this] { Exportar(&PaginaPrograma::HojaDeJuntos, true); });
    menu->addSeparator();
    AgregarAccion(*menu, "ExportarCalendario", "&Calendario (ICS)…", {}, [this] { ExportarCalendario(); });
    conPrograma.append(Boton(*fila, "cmdExportarPrograma", "E&xportar", menu));
    auto *papel = new QMenu(this);
    AgregarAccion(*papel, "ImprimirPlan", "&Plan de mantenimiento…", {}, [this] { ImprimirPlan(); });
    AgregarAccion(*papel, "ImprimirHojas", "&Hojas de trabajo…", QKeySequence::Print, [this] { ImprimirHojas(); });
    AgregarAccion(*papel, "ImprimirMateriales", "&Materiales…", {}, [this] { ImprimirMateriales(); });
    papel->addSeparator();
    AgregarAccion(*papel, "PaqueteDelMes", "Pa&quete del mes…", {}, [this] { HacerPaquete(); });
    conPrograma.append(Boton(*fila, "cmdImprimirPrograma", "&Imprimir", papel));
    return acciones;
}

// Of what the tab shows, the first table, what is supposed, or the dates; of the dates those that the filters leave, in
// their order.
Hoja PaginaPrograma::HojaMostrada() const
{
    for (const Tabla &tabla : tablas)
        if (tabla.vista == fichas->currentWidget() || fichas->currentWidget()->isAncestorOf(tabla.vista))
            return tabla.vista->objectName() == "lvRefacciones" ? programa::HojaDeRefacciones(*medido, *programado)
                   : tabla.vista->objectName() == "lvCostosDePrograma" ? programa::HojaDeCostos(*medido, *programado)
                   : tabla.vista->objectName() == "lvParos"            ? programa::HojaDeParos(*medido, *programado)
                                                                       : tabla.hoja();
    if (fichas->currentWidget() == queSi)
        return queSi->Mostrada();
    return programa::HojaDeFechas(*medido, *programado, modelo->Mostradas());
}

Hoja PaginaPrograma::HojaDeJuntos() const
{
    return programa::HojaDeParosJuntos(*medido, *programado, spnDias->value());
}

void PaginaPrograma::Exportar(Hoja (PaginaPrograma::*hoja)() const, bool libro)
{
    if (programado)
        DialogoExportarCatalogo::Exportar(this, (this->*hoja)(), libro);
}

void PaginaPrograma::ExportarCalendario()
{
    if (!programado)
        return;
    ConTrampa(*this, 1000203, [this] {
        const QString ruta = RutaParaGuardar(*this, "Exportar calendario", "Calendario|*.ics", "Programa " + tipo);
        if (!ruta.isEmpty())
            programa::EscribirIcs(
                ruta, programa::Ics(*medido, *programado, base, QDateTime::currentDateTimeUtc(), modelo->Mostradas()));
    });
}

programa::Encargo PaginaPrograma::EncargoDe() const
{
    qvx::Sesion &sesion = qvx::Sesion::Actual();
    return {qvx::NombreDePlanta(Base()), sesion.Operador(), base, sesion.Ahora()};
}

QList<int> PaginaPrograma::Elegidas() const
{
    QList<int> visibles;
    for (const QModelIndex &indice : lvPrograma->selectionModel()->selectedRows())
        visibles.append(indice.row());
    std::sort(visibles.begin(), visibles.end());
    QList<int> filas;
    for (const int visible : std::as_const(visibles))
        filas.append(modelo->Fila(visible));
    return filas;
}

void PaginaPrograma::ImprimirPlan()
{
    ConTrampa(*this, 1000208, [this] {
        if (medido)
            DialogoDeReporte(
                {DialogoDeReporte::Clase::Plan, "Plan de mantenimiento", {}, puede}, EncargoDe(),
                [this](const programa::Encargo &encargo, int) { return programa::ReporteDePlan(*medido, encargo); },
                this)
                .exec();
    });
}

// What is chosen, or all that is shown.
void PaginaPrograma::ImprimirHojas()
{
    ConTrampa(*this, 1000209, [this] {
        if (!programado)
            return;
        const QList<int> elegidas = Elegidas();
        QList<QList<int>> cuales{modelo->Mostradas()};
        QStringList alcances{"Lo que se muestra: " + Cuantos(cuales.constFirst().size(), "fecha", "fechas")};
        if (!elegidas.isEmpty()) {
            cuales.prepend(elegidas);
            alcances.prepend("Lo seleccionado: " + Cuantos(elegidas.size(), "fecha", "fechas"));
        }
        DialogoDeReporte(
            {DialogoDeReporte::Clase::Hojas, "Hojas de trabajo", alcances, puede}, EncargoDe(),
            [&, this](const programa::Encargo &encargo, int alcance) {
                return programa::HojasDeTrabajo(*medido, programa::LaboresDe(*medido, *programado, cuales.at(alcance)),
                                                encargo);
            },
            this)
            .exec();
    });
}

void PaginaPrograma::ImprimirMateriales()
{
    ConTrampa(*this, 1000210, [this] {
        if (!programado)
            return;
        const QStringList alcances{"Todo el año", "Lo que se muestra", "Una ronda: cada servicio una vez"};
        DialogoDeReporte(
            {DialogoDeReporte::Clase::Materiales, "Materiales", alcances, puede}, EncargoDe(),
            [&, this](const programa::Encargo &encargo, int alcance) {
                const QList<qint64> veces =
                    alcance == 2 ? programa::UnaRonda(*medido)
                                 : programa::VecesDe(*medido, *programado,
                                                     alcance == 0 ? programa::Todas(*programado) : modelo->Mostradas());
                return programa::ReporteDeMateriales(*medido, veces, "Materiales, " + alcances.at(alcance).toLower(),
                                                     encargo);
            },
            this)
            .exec();
    });
}

// Of the month that the filter shows; the next one of the programme without one.
void PaginaPrograma::HacerPaquete()
{
    ConTrampa(*this, 1000211, [this] {
        if (!programado)
            return;
        int mes = cboMes->currentData().toInt();
        if (mes < 0)
            mes = std::max(0, programado->meses.Lugar(qvx::Sesion::Actual().Ahora().date().addMonths(1)));
        const QString nombre = "Paquete " + tipo + " " + programado->meses.Primero(mes).toString("yyyy-MM");
        QString ruta = RutaParaGuardar(*this, "Paquete del mes: " + programado->meses.Nombre(mes),
                                       "Hojas, surtido y calendario|*.pdf", nombre);
        if (ruta.isEmpty())
            return;
        ruta.chop(4);
        const auto paquete = programa::PaqueteDelMes::En(ruta);
        AvanceDeReporte avance(*this, "Paquete del mes");
        if (paquete.Escribir(*medido, *programado, mes, EncargoDe(), DialogoDeReporte::PapelRecordado(),
                             [&](int hecho, int todo) { return avance(hecho, todo); }))
            qvx::Sistema().Mensaje("El paquete de " + programado->meses.Nombre(mes) + " está en tres archivos:\n\n"
                                       + paquete.Archivos().join(QLatin1Char('\n')),
                                   qvx::mensaje::Informacion, "Quorvex", window()->winId(), "QVX", "ERR-ID:1000212");
    });
}
