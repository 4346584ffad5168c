#pragma once

#include "plan/Respaldo.h"

#include <QDialog>
#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace qvx
{
class CopiaLista;
class ModeloTabla;
class VistaTabla;
} // namespace qvx

// "Restaurar": the copies of a database, the plans in the one that is chosen, where copies go and how many stay. A plan
// is restored here; that the whole is to be, the dialog only says.
class DialogoCopias : public QDialog
{
    Q_OBJECT

public:
    // base: the open database's file.
    DialogoCopias(const QString &base, QWidget *duena);

    // A plan was restored: what a screen shows is no longer what the database holds.
    bool HuboCambios() const { return huboCambios; }
    // The copy that the whole database is to be restored from, "" for none.
    const QString &TodoDe() const { return todoDe; }

private:
    QWidget *ParteDeCopias();
    QWidget *ParteDePlanes();
    QWidget *ParteDeAjustes();
    QWidget *Botones();
    void Leer(const QString &elegir);
    void AlElegirCopia();
    void AlElegirPlan();
    void Agregar();
    void Ajustar();
    void RestaurarElPlan();
    void RestaurarElTodo();
    QString Elegida() const;
    QString PlanElegido() const;

    QString base;
    qvx::LugarDeCopias lugar;
    QList<qvx::Copia> copias;
    QStringList agregadas; // files from elsewhere
    qvx::ModeloTabla *modeloCopias;
    qvx::ModeloTabla *modeloPlanes;
    qvx::VistaTabla *lvCopias;
    qvx::VistaTabla *lvPlanes;
    QLabel *lblAviso;
    QLineEdit *txtCarpeta;
    QSpinBox *numCopias;
    QPushButton *cmdPlan;
    QPushButton *cmdTodo;
    QString todoDe;
    bool huboCambios = false;
};
