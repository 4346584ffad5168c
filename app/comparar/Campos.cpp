#include "app/comparar/Campos.h"

#include "app/catalogos/Nombres.h"
#include "data/Texto.h"

namespace comparar
{

namespace
{

// Without a "$": of every amount in a list of changes it would be noise.
const QString FormatoDeCifra = "#,##0.##############";

} // namespace

const QList<Campos::Definicion> &Campos::De(qvx::DelPlan clase)
{
    static const QList<Definicion> dePartes{{"Descripción", qvx::parte::Descripcion, Que::Texto},
                                            {"Parte superior", qvx::parte::Padre, Que::Parte},
                                            {"Estado", qvx::parte::Estado, Que::Estado}};
    static const QList<Definicion> deServicios{{"Parte", qvx::servicio::Parte, Que::Parte},
                                               {"Tipo de servicio", qvx::servicio::TipoServicio, Que::TipoServicio},
                                               {"Cada (días)", qvx::servicio::Dias, Que::Numero},
                                               {"Cada (lectura)", qvx::servicio::Lectura, Que::Numero},
                                               {"Unidad de la lectura", qvx::servicio::UnidadLectura, Que::Unidad},
                                               {"Tiempo estimado (h)", qvx::servicio::Horas, Que::Numero},
                                               {"Prioridad", qvx::servicio::Prioridad, Que::Prioridad},
                                               {"Requiere paro", qvx::servicio::RequiereParo, Que::Clave},
                                               {"Tiempo de paro (h)", qvx::servicio::HorasParo, Que::Numero},
                                               {"Precio", qvx::servicio::Precio, Que::Numero},
                                               {"Estado", qvx::servicio::Estado, Que::Estado}};
    static const QList<Definicion> deLineas{{"Cantidad", qvx::linea::Cantidad, Que::Numero},
                                            {"Unidad", qvx::linea::Unidad, Que::Unidad},
                                            {"Costo", qvx::linea::Costo, Que::Numero},
                                            {"Importe", qvx::linea::Importe, Que::Numero},
                                            {"Tipo de gasto", qvx::linea::TipoGasto, Que::Gasto}};
    return clase == qvx::DelPlan::Parte ? dePartes : clase == qvx::DelPlan::Servicio ? deServicios : deLineas;
}

QString Campos::ConNombre(const QString &clave, const QHash<QString, QString> &todos)
{
    const QString nombre = todos.value(clave);
    return nombre.isEmpty() ? clave : clave + " " + nombre;
}

QString Campos::Dicho(const Definicion &campo, const qvx::FilaDelPlan *fila) const
{
    if (!fila)
        return {};
    const QVariant &valor = fila->at(campo.lugar);
    const QString clave = qvx::ClaveDe(*fila, campo.lugar);
    switch (campo.que) {
    case Que::Numero:
        return valor.isValid() ? qvx::NumeroConFormato(valor.toDouble(), FormatoDeCifra) : QString();
    case Que::Clave:
        return clave;
    case Que::Parte:
        return ConNombre(clave, partes);
    case Que::TipoServicio:
        return ConNombre(clave, nombres.tiposDeServicio);
    case Que::Prioridad:
        return ConNombre(clave, nombres.prioridades);
    case Que::Unidad:
        return ConNombre(clave, nombres.unidades);
    case Que::Gasto:
        return ConNombre(clave, nombres.gastos);
    case Que::Estado:
        return nombres::Estado(clave);
    default:
        return valor.toString();
    }
}

QList<Campo> Campos::Distintos(qvx::DelPlan clase, const Pareja &pareja) const
{
    QList<Campo> distintos;
    for (const Definicion &campo : De(clase)) {
        Campo este{QString::fromUtf8(campo.titulo), Dicho(campo, pareja.antes), Dicho(campo, pareja.despues)};
        const bool suLugar = clase == qvx::DelPlan::Servicio && campo.lugar == qvx::servicio::Parte;
        if (este.antes != este.despues && !(suLugar && (!pareja.antes || !pareja.despues)))
            distintos.append(std::move(este));
    }
    return distintos;
}

QString Campos::NombreDeServicio(const qvx::FilaDelPlan &fila) const
{
    const QString clave = qvx::ClaveDe(fila, qvx::servicio::TipoServicio);
    return nombres.tiposDeServicio.value(clave, clave);
}

QString Campos::NombreDeLinea(const qvx::FilaDelPlan &fila) const
{
    const QString clave = qvx::ClaveDe(fila, qvx::linea::Producto);
    return nombres::ClaseDeRenglon(qvx::ClaveDe(fila, qvx::linea::Clase)) + " " + nombres.productos.value(clave, clave);
}

} // namespace comparar
