#include "app/programa/PartesDeReporte.h"

#include "plan/Claves.h"

namespace programa
{

namespace
{

constexpr qsizetype NivelesDeTitulo = 24; // more would fill pages, and those above stand on the paper already

QString Titulo(const QStringList &camino)
{
    if (camino.size() <= NivelesDeTitulo)
        return camino.join(" / ");
    return camino.constFirst() + " / … / " + camino.mid(camino.size() - NivelesDeTitulo + 1).join(" / ");
}

} // namespace

impreso::Documento DocumentoDe(const PlanMedido &medido, const Encargo &encargo, const QString &titulo)
{
    impreso::Documento documento;
    documento.planta = encargo.planta;
    documento.titulo = titulo;
    documento.tipo = (medido.plan.tipoEquipo + " " + medido.plan.nombreTipo).trimmed();
    documento.pie = encargo.hora.toString("yyyy-MM-dd HH:mm") + " · " + encargo.operador + " · " + encargo.base;
    return documento;
}

void RecorrerPartes(const qvx::Arbol &arbol, const std::function<void(const qvx::Parte &, int, const QString &)> &ver)
{
    QHash<QString, QList<const qvx::Parte *>> hijas; // the last one first
    for (const auto &[clave, parte] : arbol.Partes())
        if (parte.alcance == qvx::Parte::Alcance::Llega)
            hijas[qvx::claves::EsRaiz(parte.padre) ? qvx::claves::Raiz : parte.padre].prepend(&parte);
    struct Pendiente {
        const qvx::Parte *parte;
        int nivel;
    };
    QList<Pendiente> pendientes; // a list, not calls: a tree may be deeper than those can be
    const auto anotar = [&](const QString &padre, int nivel) {
        for (const qvx::Parte *parte : hijas.value(padre))
            pendientes.append({parte, nivel});
    };
    QStringList camino;
    anotar(qvx::claves::Raiz, 0);
    while (!pendientes.isEmpty()) {
        const auto [parte, nivel] = pendientes.takeLast();
        camino.resize(nivel);
        camino.append(parte->descripcion);
        ver(*parte, nivel, parte->clave + "  " + Titulo(camino));
        anotar(parte->clave, nivel + 1);
    }
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
