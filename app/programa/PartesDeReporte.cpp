#include "app/programa/PartesDeReporte.h"

#include "plan/Claves.h"

namespace programa
{

impreso::Documento DocumentoDe(const PlanMedido &medido, const Encargo &encargo, const QString &titulo)
{
    impreso::Documento documento;
    documento.planta = encargo.planta;
    documento.titulo = titulo;
    documento.tipo = (medido.plan.tipoEquipo + " " + medido.plan.nombreTipo).trimmed();
    documento.pie = encargo.hora.toString("yyyy-MM-dd HH:mm") + " · " + encargo.operador + " · " + encargo.base;
    return documento;
}

void RecorrerPartes(const qvx::Arbol &arbol, const std::function<void(const qvx::Parte &, int)> &ver)
{
    QHash<QString, QList<const qvx::Parte *>> hijas; // in the order of their keys
    for (const auto &[clave, parte] : arbol.Partes())
        hijas[qvx::claves::EsRaiz(parte.padre) ? qvx::claves::Raiz : parte.padre].append(&parte);
    const std::function<void(const QString &, int)> bajar = [&](const QString &padre, int nivel) {
        for (const qvx::Parte *parte : hijas.value(padre))
            if (parte->alcance == qvx::Parte::Alcance::Llega) {
                ver(*parte, nivel);
                bajar(parte->clave, nivel + 1);
            }
    };
    bajar(qvx::claves::Raiz, 0);
}

QString ClaseDeLinea(lectura::Linea::Clase clase)
{
    switch (clase) {
    case lectura::Linea::Clase::ManoDeObra:
        return "Mano de obra";
    case lectura::Linea::Clase::Refaccion:
        return "Refacción";
    case lectura::Linea::Clase::Herramienta:
        break;
    }
    return "Herramienta";
}

QString Pesos(const Cantidad &importe)
{
    return "$" + importe.Texto(2);
}

QString PesosEnteros(const Cantidad &costo)
{
    return costo == costo.Redondeada(2) ? Pesos(costo) : "$" + costo.Texto();
}

} // namespace programa
