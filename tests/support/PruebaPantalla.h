#pragma once

#include "controls/Controles.h"
#include "controls/ListView.h"
#include "controls/SSOleDBGrid.h"
#include "controls/TreeView.h"
#include "controls/ssTbQvx.h"
#include "controls/txtQVX.h"
#include "support/Averia.h"
#include "support/Plan.h"
#include "support/Tabla.h"

#include <QCheckBox>
#include <QLineEdit>

// A test at the screen, with the plan of SembrarPlan and its type 0900 chosen. Whoever causes a message takes it.
class PruebaPantalla : public QObject
{
    Q_OBJECT

protected:
    using ListView = comunesQVX::ListView;
    using TreeView = comunesQVX::TreeView;
    using Controles = toolbarQVX::Controles;
    using SSOleDBGrid = SSDataWidgets_B_OLEDB::SSOleDBGrid;
    using txtQVX = textoQVX::txtQVX;
    using Pasos = std::function<void(QWidget &)>;

    TreeView &Arbol() { return escenario->De<TreeView>("tvPartes"); }
    ListView &Lista() { return escenario->De<ListView>("lvServicios"); }
    Controles &Barra() { return escenario->De<Controles>("Controles"); }
    txtQVX &Tipo() { return escenario->De<txtQVX>("txtTipoEquipo"); }
    QStringList Mensajes() { return escenario->Personas().Tomar(); }
    QStringList Dichos(); // without the questions
    // Flags of New, Edit, Delete, Reactivate and the extra buttons, then the captions of these.
    QString Barras();
    // Presses a button, on a part when one is named.
    void Mandar(const QString &comando, const QString &nodo = {});
    // Changes the tables as another program does, and reads the tree again.
    void Preparar(const QString &sentencias);
    // These statements ran, in this order; others may have run in between.
    static void EnOrden(const QStringList &traza, const QStringList &sentencias);
    // The parts of the type on the screen, each as these columns.
    QString Partes(const QString &columnas, const QString &condicion = "1 = 1") const;

    // Runs the steps in the form that a command opens on a part, or in the editor of the service in this row of the
    // part's list, -1 for a new one.
    void EnLaParte(const QString &comando, const QString &nodo, const Pasos &pasos);
    void Abrir(int fila, const Pasos &pasos, const QString &parte = "N0002");
    txtQVX &Caja(QWidget &forma, const QString &nombre) { return escenario->En<txtQVX>(forma, nombre); }
    SSOleDBGrid &Grid(QWidget &editor, const QString &nombre) { return escenario->En<SSOleDBGrid>(editor, nombre); }
    QCheckBox &Paro(QWidget &editor) { return escenario->En<QCheckBox>(editor, "chkRequiereParo"); }
    ssTabQvx::ssTbQvx &Fichas(QWidget &editor) { return escenario->En<ssTabQvx::ssTbQvx>(editor, "ssTabQvx"); }
    void LlenarNuevo(QWidget &editor); // validly, with a line of each kind
    static void Aceptar(QWidget &forma);
    QString Fila(const SSOleDBGrid &grid, int fila) const;

    std::unique_ptr<Escenario> escenario;
    QWidget *pantalla = nullptr;

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    void EnLaForma(const std::function<void()> &abrir, const Pasos &pasos);
};
