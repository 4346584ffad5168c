#include "app/historial/TextosDeHistorial.h"

#include "app/Textos.h"
#include "data/ErrorEjecucion.h"

#include <QLocale>

namespace historial
{

namespace
{

// "a, b y c".
QString Enumerar(const QStringList &cosas)
{
    return cosas.size() < 2 ? cosas.join(QString())
                            : cosas.mid(0, cosas.size() - 1).join(", ") + " y " + cosas.constLast();
}

} // namespace

QString Quien(const qvx::Operacion &operacion)
{
    return operacion.operador.isEmpty() ? QString("(desconocido)") : operacion.operador;
}

QString Lista(const QList<qint64> &operaciones)
{
    constexpr int Dichas = 10;
    QStringList numeros;
    for (const qint64 numero : operaciones.mid(0, Dichas))
        numeros.append(QString::number(numero));
    if (const auto mas = operaciones.size() - Dichas; mas > 0)
        numeros.append(Cuantos(mas, "más", "más"));
    return Enumerar(numeros);
}

QString Estado(const qvx::Operacion &operacion)
{
    QStringList estado;
    if (!operacion.deshace.isEmpty())
        estado.append("Deshace " + Lista(operacion.deshace));
    if (operacion.deshechaPor != 0)
        estado.append("Deshecha por " + QString::number(operacion.deshechaPor));
    return estado.join(". ");
}

QString Nombre(const qvx::Operacion &operacion)
{
    return "operación " + QString::number(operacion.numero) + ", «" + operacion.clase + "»"
           + (operacion.detalle.isEmpty() ? QString() : ", " + operacion.detalle) + ", de " + Quien(operacion) + ", el "
           + operacion.fecha;
}

QString Resumen(const qvx::Deshecho &deshecho)
{
    QString resumen = (deshecho.tipos.size() == 1 ? "Cambia el plan del tipo de equipo "
                                                  : "Cambian los planes de los tipos de equipo ")
                      + Enumerar(deshecho.tipos) + ".";
    if (deshecho.operaciones.size() > 1)
        resumen += " Se deshacen " + Cuantos(deshecho.operaciones.size(), "operación", "operaciones") + ": "
                   + Lista(deshecho.operaciones) + ".";
    if (!deshecho.clavesNuevas.isEmpty())
        resumen += " Vuelven con otra clave: " + deshecho.clavesNuevas.join("; ") + ".";
    return resumen;
}

QStringList Reparos(const qvx::Deshecho &deshecho)
{
    QStringList reparos = deshecho.reparos;
    if (deshecho.masReparos > 0)
        reparos.append("… y " + Cuantos(deshecho.masReparos, "motivo más.", "motivos más."));
    return reparos;
}

QString Tamano(const qvx::TamanoDeHistoria &tamano)
{
    return "La historia tiene " + Cuantos(tamano.operaciones, "operación", "operaciones") + " y ocupa "
           + (tamano.estimado ? QString("cerca de ") : QString())
           + QLocale().formattedDataSize(tamano.octetos, 1, QLocale::DataSizeTraditionalFormat) + ".";
}

QStringList Titulos()
{
    return {"N.º", "Fecha", "Persona", "Operación", "Detalle", "Plan", "Partes", "Servicios", "Renglones", "Estado"};
}

QVariantList Fila(const qvx::Operacion &operacion)
{
    return {operacion.numero,           operacion.fecha,  Quien(operacion),    operacion.clase,  operacion.detalle,
            operacion.tipos.join(", "), operacion.partes, operacion.servicios, operacion.lineas, Estado(operacion)};
}

qvx::Operacion Buscar(qvx::Conexion &conexion, qint64 numero)
{
    qvx::FiltroDeHistoria filtro;
    filtro.numero = numero;
    const QList<qvx::Operacion> halladas = qvx::LeerOperaciones(conexion, filtro);
    if (halladas.isEmpty())
        qvx::Rechazar(QString("La operación %1 no existe, o su historia fue depurada.").arg(numero));
    return halladas.constFirst();
}

} // namespace historial
