#pragma once

#include "controls/Controles.h"
#include "controls/ListView.h"
#include "controls/SSOleDBGrid.h"
#include "controls/TreeView.h"
#include "controls/ssTbQvx.h"
#include "controls/txtQVX.h"
#include "support/Plan.h"

// A planner at the screen: its controls, and every command of it, with real widgets, clicks and keys, on the equipment
// type that is on the screen. Nodes are chosen by their keys ("N0001"), services by theirs.
class Planificador
{
public:
    using ListView = comunesQVX::ListView;
    using TreeView = comunesQVX::TreeView;
    using Controles = toolbarQVX::Controles;
    using SSOleDBGrid = SSDataWidgets_B_OLEDB::SSOleDBGrid;
    using txtQVX = textoQVX::txtQVX;
    using Pasos = std::function<void(QWidget &forma)>;

    // Around the step that carries a command out: antes before it, and after it otraVez says whether it is tried again.
    struct Intento {
        std::function<void()> antes;
        std::function<bool()> otraVez;
    };
    explicit Planificador(Escenario *escenario_ = nullptr, Intento intento_ = {});

    TreeView &Arbol() const { return escenario->De<TreeView>("tvPartes"); }
    ListView &Lista() const { return escenario->De<ListView>("lvServicios"); }
    Controles &Barra() const { return escenario->De<Controles>("Controles"); }
    txtQVX &Tipo() const { return escenario->De<txtQVX>("txtTipoEquipo"); }
    static txtQVX &Caja(const QWidget &forma, const QString &nombre) { return En<txtQVX>(forma, nombre); }
    static SSOleDBGrid &Grid(const QWidget &editor, const QString &nombre) { return En<SSOleDBGrid>(editor, nombre); }
    static ssTabQvx::ssTbQvx &Fichas(const QWidget &editor) { return En<ssTabQvx::ssTbQvx>(editor, "ssTabQvx"); }
    // Flags of New, Edit, Delete, Reactivate and the extra buttons, then the captions of these.
    QString Barras() const;
    static QString Fila(const SSOleDBGrid &grid, int fila);
    // The keys of the parts in the tree, with "N" before, without the root; retired ones or the others.
    QStringList Nodos(bool retirados) const;

    void ElegirTipo(const QString &tipo);
    // False, and nothing is chosen, when the service is not in the part's list.
    bool ElegirServicio(const QString &nodo, const QString &folio);

    // Runs the steps in the form that a button opens on a part, or in the editor of one of its services, "" for a new
    // one. When nothing opens, a message must have said why.
    void EnLaParte(const QString &nodo, const QString &boton, const Pasos &pasos);
    void EnElServicio(const QString &nodo, const QString &folio, const Pasos &pasos);
    static void LlenarServicio(const QWidget &editor); // validly, with a line of each kind
    static void Aceptar(const QWidget &forma);

    // The key under which the part or service was saved, "" when the form was still open at the end: then it is closed.
    QString GuardarParte(const QString &nodo, const QString &boton, const QString &descripcion);
    QString NuevoServicio(const QString &nodo, const QString &precio);
    QString CambiarServicio(const QString &nodo, const QString &folio, const QString &precio);
    void EliminarServicio(const QString &nodo, const QString &folio, int respuesta = qvx::mensaje::Si);
    void Mover(const QString &nodo, const QString &folio, const QString &destino);
    // The whole text of the label, as the planner leaves it.
    void Rotular(const QString &nodo, const QString &texto);
    // Presses a button of the toolbar, and answers its question.
    void Mandar(const QString &nodo, const QString &boton, int pregunta = 0, int respuesta = qvx::mensaje::Si);
    void Copiar(const QString &tipo, int respuesta = qvx::mensaje::Si);
    void Importar(const QString &ruta, int respuesta = qvx::mensaje::Si);
    void Exportar(const QString &ruta);

protected:
    Escenario *escenario;
    Intento intento;

private:
    void Intentar(const std::function<void()> &paso);
    void EnLaForma(const std::function<void()> &abrir, const Pasos &pasos);
    void EnElElegido(const Pasos &pasos);
    QString Guardar(const QWidget &forma, const char *clave);
};
