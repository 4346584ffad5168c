#include "app/programa/PartesDeReporte.h"
#include "app/programa/Reportes.h"

#include "app/lectura/Totales.h"
#include "app/servicios/ColumnasDeServicio.h"

namespace programa
{

namespace
{

using impreso::Bloque;
using impreso::Documento;

QString EnHoras(double horas)
{
    return servicios::Cifra(horas);
}

QStringList CeldasDe(const lectura::Servicio &servicio)
{
    QString nombre = servicio.nombreServicio;
    if (!servicio.Activo())
        nombre += " (" + servicios::NombreDe(servicio.situacion).toLower() + ")";
    return {servicio.leido.folio,
            nombre,
            servicios::Frecuencia(servicio.dias, servicio.lectura, servicio.unidad),
            EnHoras(servicio.horas),
            servicio.conParo ? EnHoras(servicio.horasParo) : QString("No"),
            servicio.nombrePrioridad.isEmpty() ? servicio.prioridad : servicio.nombrePrioridad,
            Pesos(Cantidad::De(servicio.costo)),
            Pesos(Cantidad::De(servicio.precio)),
            Pesos(Cantidad::De(servicio.utilidad)),
            Cantidad::De(servicio.porcentaje).Texto(1) + " %"};
}

class ReporteDelPlan
{
public:
    ReporteDelPlan(const PlanMedido &medido_, const Encargo &encargo_, Documento &documento_)
        : medido(medido_), encargo(encargo_), documento(documento_)
    {
        for (int i = 0; i < medido.plan.servicios.size(); ++i)
            dePartes[medido.plan.servicios.at(i).leido.parte].append(i);
        for (int i = 0; i < medido.lineas.lineas.size(); ++i)
            deServicios[medido.lineas.lineas.at(i).servicio].append(i);
    }

    void Hacer()
    {
        QList<int> todos;
        QList<int> principal;
        QString nombre;
        const auto cerrar = [&] {
            if (!nombre.isEmpty())
                Sumar("Subtotal " + nombre, principal);
            principal.clear();
        };
        RecorrerPartes(medido.plan.arbol, [&](const qvx::Parte &parte, int nivel, const QString &titulo) {
            if (nivel == 0) {
                cerrar();
                nombre = parte.descripcion;
            }
            const QList<int> suyos = dePartes.take(parte.clave);
            PonerParte(titulo + (parte.activa ? "" : " (de baja)"), nivel, suyos);
            principal += suyos;
            todos += suyos;
        });
        cerrar();
        QList<int> sueltos;
        for (int i = 0; i < medido.plan.servicios.size(); ++i)
            if (dePartes.contains(medido.plan.servicios.at(i).leido.parte))
                sueltos.append(i);
        if (!sueltos.isEmpty()) {
            PonerParte("FUERA DEL ÁRBOL", 0, sueltos);
            Sumar("Subtotal fuera del árbol", sueltos);
            todos += sueltos;
        }
        Sumar("TOTAL DEL PLAN, " + QString::number(todos.size()) + " servicios", todos);
    }

private:
    void PonerParte(const QString &titulo, int nivel, const QList<int> &suyos)
    {
        Bloque &tramo = documento.Tramo(titulo);
        tramo.nivel = nivel;
        tramo.negrita = nivel == 0 || !suyos.isEmpty();
        tramo.sombra = nivel == 0;
        tramo.conLoQueSigue = !suyos.isEmpty();
        for (const int cual : suyos) {
            const QList<int> lineas = encargo.conLineas ? deServicios.value(cual) : QList<int>();
            documento.Fila(CeldasDe(medido.plan.servicios.at(cual))).conLoQueSigue = !lineas.isEmpty();
            for (const int linea : lineas)
                PonerLinea(medido.lineas.lineas.at(linea));
        }
    }

    void PonerLinea(const lectura::Linea &linea)
    {
        const lectura::Producto &producto = medido.lineas.productos.at(linea.producto);
        documento
            .Tramo(
                ClaseDeLinea(linea.clase) + "  " + producto.clave + " " + producto.descripcion + "  ·  "
                + Cantidad::De(linea.cantidad).Texto() + " " + linea.unidad
                + (linea.clase == lectura::Linea::Clase::Herramienta
                       ? QString()
                       : " × " + PesosEnteros(Cantidad::De(linea.costo)) + " = " + Pesos(Cantidad::De(linea.importe))))
            .nivel = 5;
    }

    void Sumar(const QString &nombre, const QList<int> &cuales)
    {
        const lectura::Totales totales = lectura::Sumar(medido.plan, cuales);
        const lectura::Totales::Importes &suma = totales.unaVez;
        Bloque &fila =
            documento.Fila({"", nombre, "", EnHoras(suma.horas), EnHoras(suma.horasParo), "",
                            Pesos(Cantidad::De(suma.costo)), Pesos(Cantidad::De(suma.precio)),
                            Pesos(Cantidad::De(suma.utilidad)), Cantidad::De(suma.porcentaje).Texto(1) + " %"});
        fila.negrita = true;
        fila.sombra = true;
    }

    const PlanMedido &medido;
    const Encargo &encargo;
    Documento &documento;
    QHash<QString, QList<int>> dePartes;
    QHash<int, QList<int>> deServicios;
};

} // namespace

impreso::Documento ReporteDePlan(const PlanMedido &medido, const Encargo &encargo)
{
    Documento documento = DocumentoDe(medido, encargo, "Plan de mantenimiento");
    documento.orientacion = QPageLayout::Landscape;
    documento.AgregarTabla({{"Folio", 6},
                            {"Servicio", 21},
                            {"Frecuencia", 13},
                            {"Horas", 6, true},
                            {"Paro", 6, true},
                            {"Prioridad", 10},
                            {"Costo", 11, true},
                            {"Precio", 11, true},
                            {"Utilidad", 11, true},
                            {"%", 7, true}});
    ReporteDelPlan(medido, encargo, documento).Hacer();
    return documento;
}

} // namespace programa
