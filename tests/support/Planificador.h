#pragma once

#include "support/Plan.h"

namespace comunesQVX
{
class ListView;
class TreeView;
} // namespace comunesQVX

// A planner at the screen: every command of it, with real widgets, clicks and keys, on the equipment type that is on
// the screen. Nodes are chosen by their keys ("N0001").
class Planificador
{
public:
    // Around the step that carries a command out: antes before it, and after it otraVez says whether it is tried again.
    struct Intento {
        std::function<void()> antes;
        std::function<bool()> otraVez;
    };
    explicit Planificador(Escenario &escenario_, Intento intento_ = {});

    void ElegirTipo(const QString &tipo);
    // The keys of the parts in the tree, with "N" before, without the root; retired ones or the others.
    QStringList Nodos(bool retirados) const;

    // The key under which the part or service was saved, "" when the form was still open at the end: then it is closed.
    QString EnLaParte(const QString &nodo, const QString &boton, const QString &descripcion);
    QString NuevoServicio(const QString &nodo, const QString &precio);
    QString CambiarServicio(const QString &nodo, const QString &folio, const QString &precio);
    void EliminarServicio(const QString &nodo, const QString &folio);
    void Mover(const QString &nodo, const QString &folio, const QString &destino);
    void Rotular(const QString &nodo, const QString &descripcion);
    // Presses a button of the toolbar, and agrees to its question.
    void Mandar(const QString &nodo, const QString &boton, int pregunta = 0, int respuesta = qvx::mensaje::Si);
    void Copiar(const QString &tipo);
    void Importar(const QString &ruta);
    void Exportar(const QString &ruta);

private:
    using Pasos = std::function<void(QWidget &)>;

    comunesQVX::TreeView &Arbol() const;
    comunesQVX::ListView &Lista() const;
    void Intentar(const std::function<void()> &paso);
    void ElegirServicio(const QString &nodo, const QString &folio);
    QString EnLaForma(const std::function<void()> &abrir, const Pasos &llenar, const QString &barra,
                      const QString &clave);

    Escenario &escenario;
    Intento intento;
};

// Types a valid service with a line of each kind into its editor.
void LlenarServicio(const Escenario &escenario, QWidget &editor);
