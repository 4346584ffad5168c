#pragma once

#include "app/lectura/PlanLeido.h"
#include "plan/LotesDeServicios.h"
#include "plan/MoverParte.h"

#include <QStringList>

// What becomes of services, or of a part, by what was read, before anybody consents: for each a row of the preview, and
// what is to be written of those that may be changed.
namespace propuestas
{

struct Fila {
    QString clave; // the folio, or the part's key
    QString nombre;
    QString antes;
    QString despues;
    QString motivo; // why it stays as it is; "" for one that is changed
};

struct Propuesta {
    QList<Fila> filas;
    QString objecion; // why nothing of it can be, "" for no such reason
    double importe = 0;
    double importeNuevo = 0; // of the prices, where they change

    int Cuantos() const;
};

struct DeTraslado : Propuesta {
    QList<qvx::Traslado> traslados;
};
// destino: "" while none is chosen. Of a copy a service may stay where it is.
DeTraslado Trasladar(const lectura::Plan &plan, const QList<int> &cuales, const QString &destino, bool copia);

struct DeEliminacion : Propuesta {
    QList<qvx::ServicioLeido> servicios;
};
DeEliminacion Eliminar(const lectura::Plan &plan, const QList<int> &cuales);

// What is asked of many services at once.
struct Peticion {
    enum class Que { Precio, Dias, Lectura, Prioridad, TipoServicio };
    Que que = Que::Precio;
    bool porCiento = false; // numero is to be added as a share of what there is
    double numero = 0;
    QString clave; // of the catalogue; of a reading its unit, "" for the one that there is
};
struct DeCambio : Propuesta {
    QList<qvx::CambioDeServicio> cambios;
};
// Shares are rounded: prices and readings to two decimals, days to whole ones. nombre: of the key, for the preview.
DeCambio Cambiar(const lectura::Plan &plan, const QList<int> &cuales, const Peticion &peticion, const QString &nombre);

struct DeParte : Propuesta {
    qvx::TrasladoDeParte traslado;
};
// The part and all below it, with their paths before and after.
DeParte MoverParte(const lectura::Plan &plan, const QString &parte, const QString &nuevoPadre);

} // namespace propuestas
