#pragma once

#include <QTreeView>

class ModeloPartes;

// The tree of a plan's parts, onto which services of the page's table, and parts of its own, are dropped.
class ArbolDePartes : public QTreeView
{
    Q_OBJECT

public:
    // fuente: the table whose services it takes; from anywhere else it takes nothing.
    ArbolDePartes(ModeloPartes *modelo, const QWidget *fuente);
    // Whether drops are taken at all.
    void Recibir(bool recibe);

Q_SIGNALS:
    // With Ctrl held, services are copied.
    void ServiciosSoltados(const QString &parte, bool copiar);
    void ParteSoltada(const QString &parte, const QString &nuevoPadre);

protected:
    void dragEnterEvent(QDragEnterEvent *evento) override;
    void dragMoveEvent(QDragMoveEvent *evento) override;
    void dropEvent(QDropEvent *evento) override;

private:
    bool Acepta(const QDropEvent &evento) const;

    ModeloPartes *modelo;
    const QWidget *fuente;
};
