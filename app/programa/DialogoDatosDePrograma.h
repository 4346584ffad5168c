#pragma once

#include "app/programa/PlanMedido.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QDoubleSpinBox;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QSpinBox;
class QTabWidget;

// What a planner assumes of an equipment type for its year: day zero, use, machines, days off, capacity, and what is
// included in what. It is kept in the database, or only used until the page is left.
class DialogoDatosDePrograma : public QDialog
{
    Q_OBJECT

public:
    // puede: whether it may be kept.
    DialogoDatosDePrograma(const programa::PlanMedido &medido, const qvx::DatosDePrograma &datos, bool puede,
                           QWidget *duena);

    const qvx::DatosDePrograma &Datos() const { return datos; }
    bool Guardado() const { return guardado; }

private:
    struct CajasDeUso {
        QDoubleSpinBox *porDia;
        QDoubleSpinBox *acumulado;
    };
    QWidget *FichaDeUso();
    QWidget *FichaDeDescanso();
    QWidget *FichaDeCapacidad();
    QWidget *FichaDeIncluidos();
    void LlenarIncluidos();
    // What is in the boxes; why it cannot be is told, and then it is nothing.
    std::optional<qvx::DatosDePrograma> Leidos();
    void Usar();
    void Guardar();
    void Objetar(const QString &objecion);

    const programa::PlanMedido &medido;
    qvx::DatosDePrograma datos;
    bool guardado = false;
    QTabWidget *fichas;
    QDateEdit *fecDiaCero;
    QSpinBox *spnEquipos;
    QDoubleSpinBox *spnDiasSemana;
    QComboBox *cboInicio;
    QComboBox *cboDescanso;
    QPlainTextEdit *txtFestivos;
    QMap<QString, CajasDeUso> usos;
    QCheckBox *chkCapacidad;
    QList<QDoubleSpinBox *> capacidad;
    QListWidget *lstIncluidos;
    QLabel *lblObjecion;
    QPushButton *cmdGuardar;
};
