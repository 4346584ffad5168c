#pragma once

#include "app/Ajustes.h"
#include "app/programa/Medidas.h"
#include "app/programa/Reportes.h"
#include "app/reportes/Hoja.h"

#include <QTime>
#include <QWidget>
#include <memory>
#include <optional>

class GraficaDeCarga;
class ModeloPrograma;
class PanelQueSi;
class QAction;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QSpinBox;
class QTabWidget;
class QTreeView;

namespace qvx
{
class ModeloTabla;
class VistaTabla;
} // namespace qvx

// The page with the year of an equipment type: dates, load, spare parts, costs, stops, what is not programmed, and what
// would be otherwise.
class PaginaPrograma : public QWidget
{
    Q_OBJECT

public:
    // base: by which calendars know the database.
    explicit PaginaPrograma(const QString &base, QWidget *padre = nullptr);
    ~PaginaPrograma() override;

    // The equipment type that it is to be of; it is read when the page is shown.
    void PonerTipo(const QString &tipoEquipo);
    // Reads the plan and what is kept anew.
    Q_INVOKABLE void Actualizar();

Q_SIGNALS:
    void ServicioPedido(const QString &tipoEquipo, const QString &parte, const QString &folio);

protected:
    void showEvent(QShowEvent *evento) override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    // A table below a title, whose columns are another year's with each programme.
    struct Tabla {
        qvx::VistaTabla *vista;
        std::function<Hoja()> hoja;
        bool porPoner = true;
    };
    QWidget *Arriba();
    QWidget *FichaDeFechas();
    QWidget *FichaDeCarga();
    QWidget *FichaDeCostos();
    QWidget *FichaDeParos();
    QWidget *FichaDeApartes();
    QWidget *Acciones();
    QAction *AgregarAccion(QMenu &menu, const QString &nombre, const QString &texto, const QKeySequence &tecla,
                           const std::function<void()> &hacer);
    QPushButton *Boton(QHBoxLayout &fila, const QString &nombre, const QString &texto, QMenu *menu);
    qvx::VistaTabla *AgregarTabla(const QString &nombre, const QString &titulo, const std::function<Hoja()> &hoja);

    void Leer();
    void Programar();
    void Mostrar();
    void DisponerColumnas();
    void MostrarFicha();
    void Limitar();
    void Sumar();
    void Avisar();
    void ElegirTipo();
    void EditarDatos(const qvx::DatosDePrograma &propuestos);
    void Abrir();
    void AlElegirCarga(int mes, int oficio);
    void QuitarFiltros();
    Hoja HojaMostrada() const;
    Hoja HojaDeJuntos() const;
    void Exportar(Hoja (PaginaPrograma::*hoja)() const, bool libro);
    void ExportarCalendario();
    programa::Encargo EncargoDe() const;
    QList<int> Elegidas() const;
    void ImprimirPlan();
    void ImprimirHojas();
    void ImprimirMateriales();
    void HacerPaquete();

    QString base;
    QString tipo;
    std::unique_ptr<programa::PlanMedido> medido;
    qvx::DatosDePrograma datos;
    bool guardados = false; // the data are the database's
    bool puede = false;
    std::unique_ptr<programa::Programa> programado;
    programa::Medida ano; // what it comes to
    QString fallo;        // why there is no programme
    QTime leida;
    bool alDia = false;

    ModeloPrograma *modelo;
    QTreeView *lvPrograma;
    qvx::ModeloTabla *totales;
    qvx::VistaTabla *lvTotales;
    GraficaDeCarga *grafica;
    PanelQueSi *queSi;
    QTabWidget *fichas;
    QList<Tabla> tablas;
    QLabel *lblTipo;
    QLabel *lblDatos;
    QLabel *lblConciliacion;
    QLabel *lblAviso;
    QLabel *lblCuenta;
    QLabel *lblLargoPlazo;
    QLabel *lblAhorro;
    QLineEdit *txtBuscar;
    QComboBox *cboMes;
    QComboBox *cboOficio;
    QSpinBox *spnDias;
    QList<QWidget *> conPrograma;              // what needs one
    std::optional<ajustes::Columnas> columnas; // of lvPrograma: goes before it
};
