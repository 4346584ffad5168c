#include "app/servicios/ArbolDePartes.h"

#include "app/servicios/ModeloPartes.h"
#include "app/servicios/ModeloServicios.h"

#include <QDragMoveEvent>
#include <QMimeData>
#include <QTimer>

ArbolDePartes::ArbolDePartes(ModeloPartes *modelo_, const QWidget *fuente_) : modelo(modelo_), fuente(fuente_)
{
    setModel(modelo);
    setUniformRowHeights(true);
    setDropIndicatorShown(true);
    setDragDropOverwriteMode(true); // onto a part, never between two
}

void ArbolDePartes::Recibir(bool recibe)
{
    setAcceptDrops(recibe);
    setDragEnabled(recibe);
}

bool ArbolDePartes::Acepta(const QDropEvent &evento) const
{
    return (evento.source() == fuente && evento.mimeData()->hasFormat(ModeloServicios::TipoArrastrado))
           || (evento.source() == this && evento.mimeData()->hasFormat(ModeloPartes::TipoArrastrado));
}

void ArbolDePartes::dragEnterEvent(QDragEnterEvent *evento)
{
    evento->setAccepted(Acepta(*evento));
    if (evento->isAccepted())
        setState(DraggingState); // the view scrolls and opens parts under the pointer
}

void ArbolDePartes::dragMoveEvent(QDragMoveEvent *evento)
{
    QTreeView::dragMoveEvent(evento);
    const QModelIndex destino = indexAt(evento->position().toPoint());
    evento->setAccepted(Acepta(*evento) && destino.isValid() && !modelo->Clave(destino).isEmpty());
}

// The question comes when the drag has ended.
void ArbolDePartes::dropEvent(QDropEvent *evento)
{
    setState(NoState);
    const QModelIndex destino = indexAt(evento->position().toPoint());
    if (!Acepta(*evento) || !destino.isValid())
        return evento->ignore();
    const QString parte = modelo->Clave(destino);
    const bool copiar = evento->modifiers().testFlag(Qt::ControlModifier);
    const bool servicios = evento->source() == fuente;
    const QString movida = modelo->Clave(currentIndex());
    evento->setDropAction(Qt::CopyAction); // nobody takes rows away
    evento->accept();
    QTimer::singleShot(0, this, [this, parte, copiar, servicios, movida] {
        if (servicios)
            Q_EMIT ServiciosSoltados(parte, copiar);
        else
            Q_EMIT ParteSoltada(movida, parte);
    });
}
