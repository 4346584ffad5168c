#pragma once

#include "controls/SSOleDBGrid.h"
#include "controls/ssTbQvx.h"
#include "controls/txtQVX.h"
#include "support/Plan.h"

#include <QCheckBox>

// What the tests of the service editor have alike: every test opens it as the planner does.
class PruebaEditor : public QObject
{
    Q_OBJECT

protected:
    using SSOleDBGrid = SSDataWidgets_B_OLEDB::SSOleDBGrid;
    using txtQVX = textoQVX::txtQVX;
    using Pasos = std::function<void(QWidget &)>;

    // Opens the editor on the service in this row of the part's list, -1 for a new one, and runs the steps in it.
    void Abrir(int fila, const Pasos &pasos, const QString &parte = "N0002");
    // Runs a command of the toolbar on a node, and the steps in the dialog that it opens.
    void EnLaParte(const QString &comando, const QString &nodo, const Pasos &pasos);
    txtQVX &Caja(QWidget &editor, const char *nombre) { return escenario->En<txtQVX>(editor, nombre); }
    SSOleDBGrid &Grid(QWidget &editor, const char *nombre) { return escenario->En<SSOleDBGrid>(editor, nombre); }
    QCheckBox &Paro(QWidget &editor) { return escenario->En<QCheckBox>(editor, "chkRequiereParo"); }
    ssTabQvx::ssTbQvx &Fichas(QWidget &editor) { return escenario->En<ssTabQvx::ssTbQvx>(editor, "ssTabQvx"); }
    void LlenarNuevo(QWidget &editor);
    void Aceptar(QWidget &editor) { Pulsar(escenario->En<QWidget>(editor, "Controles1"), "Aceptar"); }
    QStringList Mensajes() { return escenario->Personas().Tomar(); }
    QString Fila(const SSOleDBGrid &grid, int fila) const;

    std::unique_ptr<Escenario> escenario;

private Q_SLOTS:
    void init();
    void cleanup();
};
