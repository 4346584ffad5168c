#pragma once

#include "app/lectura/PlanLeido.h"

class QWidget;

// The commands of the page of services: each shows what would become of what was chosen, and writes it when the person
// consents. Errors of the writing are told, and leave all as it was.
namespace ordenes
{

enum class Desenlace { Dejado, Escrito, Fallido };

// destino: proposed, "" for none.
Desenlace MoverServicios(QWidget *duena, const lectura::Plan &plan, const QList<int> &cuales, const QString &destino);
Desenlace DuplicarServicios(QWidget *duena, const lectura::Plan &plan, const QList<int> &cuales,
                            const QString &destino);
Desenlace EliminarServicios(QWidget *duena, const lectura::Plan &plan, const QList<int> &cuales);
// Raises data errors while the catalogues are read.
Desenlace CambiarServicios(QWidget *duena, const lectura::Plan &plan, const QList<int> &cuales);
Desenlace MoverParte(QWidget *duena, const lectura::Plan &plan, const QString &parte, const QString &nuevoPadre);

} // namespace ordenes
