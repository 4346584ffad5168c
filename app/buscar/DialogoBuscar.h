#pragma once

#include "app/Ajustes.h"
#include "plan/Busqueda.h"

#include <QDialog>
#include <QTimer>
#include <memory>
#include <optional>

class QTreeWidgetItem;

namespace Ui
{
class DialogoBuscar;
}

// Finds parts, services and products of one plan or of all, while it is typed.
class DialogoBuscar : public QDialog
{
    Q_OBJECT

public:
    // tipoEquipo: whose plan is on the screen, "" for none.
    DialogoBuscar(const QString &tipoEquipo, QWidget *duena);
    ~DialogoBuscar() override;

    // What was chosen, to be shown in its plan.
    const std::optional<qvx::Hallazgo> &Elegido() const { return elegido; }

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    void Conectar();
    void Buscar();
    void BuscarLoDemas();
    void Mostrar(const QList<qvx::Hallazgo> &hallazgos);
    QTreeWidgetItem *GrupoDe(const qvx::Hallazgo &hallazgo);
    void Contar(bool faltan);
    void Elegir();
    QString TipoBuscado() const;

    std::unique_ptr<Ui::DialogoBuscar> ui;
    QString tipoEquipo;
    QList<qvx::Hallazgo> hallados;
    QHash<QString, QTreeWidgetItem *> grupos; // by equipment type
    QTimer escritura;                         // one search for what is typed in a row
    QTimer despues;                           // the slower searches, once the parts are shown
    bool recortado = false;
    bool fallida = false; // what is shown is not all that there is, and nobody knows what is missing
    std::optional<qvx::Hallazgo> elegido;
    std::optional<ajustes::Columnas> columnas; // goes before its list
};
