#include "app/comparar/TextoDeComparacion.h"

#include "app/Textos.h"

namespace comparar
{

namespace
{

using qvx::DelPlan;

QString CuentaDe(const Cuenta &cuenta, const QString &titulo, bool femenino)
{
    const QString o = femenino ? "a" : "o";
    QStringList textos;
    const auto poner = [&](int cuantas, const QString &que) {
        if (cuantas > 0)
            textos.append(Cuantos(cuantas, que, que + "s"));
    };
    poner(cuenta.nuevas, "nuev" + o);
    poner(cuenta.quitadas, "quitad" + o);
    poner(cuenta.cambian, "cambiad" + o);
    return textos.isEmpty() ? QString() : titulo + ": " + textos.join(", ") + ".";
}

void Escribir(const Nodo &nodo, const QString &sangria, QStringList &renglones)
{
    if (!nodo.difiere)
        return;
    const QString suerte = Dicho(nodo.suerte);
    renglones.append(sangria + Nombrado(nodo) + (suerte.isEmpty() ? QString() : ": " + suerte));
    if (nodo.suerte == Suerte::Cambia)
        for (const Campo &campo : nodo.campos)
            renglones.append(sangria + "    " + campo.titulo + ": «" + campo.antes + "» → «" + campo.despues + "»");
    for (const Nodo &hijo : nodo.hijos)
        Escribir(hijo, sangria + "  ", renglones);
}

// Above: the names of what the node hangs from.
void EnFilas(const Nodo &nodo, QStringList arriba, Hoja &hoja)
{
    if (!nodo.difiere)
        return;
    arriba.append((nodo.clave + " " + nodo.nombre).simplified());
    QVariantList lugar;
    for (int i = 0; i < 3; ++i)
        lugar.append(i < arriba.size() ? QVariant(arriba.at(i)) : QVariant());
    if (nodo.suerte == Suerte::Nueva || nodo.suerte == Suerte::Quitada)
        hoja.filas.append(lugar + QVariantList{Dicho(nodo.suerte), QVariant(), QVariant(), QVariant()});
    for (const Campo &campo : nodo.campos)
        hoja.filas.append(lugar + QVariantList{Dicho(nodo.suerte), campo.titulo, campo.antes, campo.despues});
    for (const Nodo &hijo : nodo.hijos)
        EnFilas(hijo, arriba, hoja);
}

} // namespace

QString Nombrado(const Nodo &nodo)
{
    const QString clase = nodo.clase == DelPlan::Parte ? "Parte " : nodo.clase == DelPlan::Servicio ? "Servicio " : "";
    return nodo.clase == DelPlan::Linea ? nodo.nombre + " (" + nodo.clave + ")"
                                        : clase + nodo.clave + " " + nodo.nombre;
}

QString Dicho(Suerte suerte)
{
    switch (suerte) {
    case Suerte::Nueva:
        return "se agrega";
    case Suerte::Quitada:
        return "se quita";
    case Suerte::Cambia:
        return "cambia";
    default:
        return {};
    }
}

QString Resumen(const Comparacion &comparacion)
{
    if (comparacion.SonIguales())
        return "No hay diferencias.";
    QStringList textos{CuentaDe(comparacion.De(DelPlan::Parte), "Partes", true),
                       CuentaDe(comparacion.De(DelPlan::Servicio), "Servicios", false),
                       CuentaDe(comparacion.De(DelPlan::Linea), "Renglones", false)};
    textos.removeAll({});
    return textos.join(" ");
}

QStringList Renglones(const Comparacion &comparacion)
{
    QStringList renglones;
    for (const Nodo &nodo : comparacion.partes)
        Escribir(nodo, {}, renglones);
    return renglones;
}

Hoja EnHoja(const Comparacion &comparacion)
{
    Hoja hoja{
        "Comparación", {{"Parte"}, {"Servicio"}, {"Renglón"}, {"Qué pasa"}, {"Campo"}, {"Antes"}, {"Después"}}, {}};
    for (const Nodo &nodo : comparacion.partes)
        EnFilas(nodo, {}, hoja);
    return hoja;
}

} // namespace comparar
