#include "plan/ReglasDeLote.h"

#include "plan/Claves.h"
#include "plan/RegistrosDeCatalogo.h"
#include "plan/Rutas.h"

#include <QHash>
#include <algorithm>

namespace qvx
{

namespace
{

QString Nombre(const Parte &parte)
{
    return "La parte «" + parte.clave + " " + parte.descripcion + "»";
}

QString NoHay(const QString &parte)
{
    return "La parte «" + parte + "» no existe.";
}

// How many parts lie between a part and the root, itself included; of one that the tree reaches.
int Nivel(const Arbol &arbol, const Parte *parte)
{
    int nivel = 0;
    for (; parte; parte = arbol.Buscar(parte->padre))
        ++nivel;
    return nivel;
}

// How many levels a part and all below it have.
int Altura(const Arbol &arbol, const Parte &parte)
{
    const int suyo = Nivel(arbol, &parte);
    int altura = 1;
    for (const auto &[clave, otra] : arbol.Partes())
        if (otra.alcance == Parte::Alcance::Llega) {
            int nivel = 0;
            bool debajo = false;
            for (const Parte *actual = &otra; actual; actual = arbol.Buscar(actual->padre)) {
                ++nivel;
                debajo = debajo || actual == &parte;
            }
            if (debajo)
                altura = std::max(altura, nivel - suyo + 1);
        }
    return altura;
}

bool CuelgaDe(const Arbol &arbol, const Parte *parte, const Parte *cual)
{
    for (; parte; parte = arbol.Buscar(parte->padre))
        if (parte == cual)
            return true;
    return false;
}

} // namespace

QString ObjecionAlServicio(const Arbol &arbol, const QString &parte, const QString &estado)
{
    const Parte *suya = arbol.Buscar(parte);
    if (!suya || suya->alcance != Parte::Alcance::Llega)
        return "Está fuera del árbol: corríjalo con Revisar integridad.";
    if (!suya->activa)
        return Nombre(*suya) + " está dada de baja.";
    return estado == estado::Activo ? QString() : QString("El servicio está dado de baja.");
}

QString ObjecionAlDestino(const Arbol &arbol, const QString &parte)
{
    if (claves::EsRaiz(parte))
        return "La raíz no lleva servicios: elija una parte.";
    const Parte *destino = arbol.Buscar(parte);
    if (!destino)
        return NoHay(parte);
    if (!destino->activa)
        return Nombre(*destino) + " está dada de baja: elija una parte activa.";
    return destino->Sirve() ? QString() : Nombre(*destino) + " está fuera del árbol.";
}

QString ObjecionAlTraslado(const Arbol &arbol, const QString &parte, const QString &nuevoPadre)
{
    const Parte *movida = arbol.Buscar(parte);
    if (!movida)
        return NoHay(parte);
    if (!movida->Sirve())
        return Nombre(*movida) + (movida->activa ? " está fuera del árbol." : " está dada de baja.");
    if (movida->padre == nuevoPadre)
        return Nombre(*movida) + " ya está ahí.";
    if (claves::EsRaiz(nuevoPadre))
        return {};
    if (const QString objecion = ObjecionAlDestino(arbol, nuevoPadre); !objecion.isEmpty())
        return objecion;
    const Parte *padre = arbol.Buscar(nuevoPadre);
    if (CuelgaDe(arbol, padre, movida))
        return padre == movida ? "Una parte no puede colgar de sí misma."
                               : Nombre(*padre) + " cuelga de la que se mueve: elija otra.";
    if (Nivel(arbol, padre) + Altura(arbol, *movida) >= MaximoNiveles) // the root is a level too
        return QString("El plan tendría más de %1 niveles.").arg(MaximoNiveles);
    return {};
}

} // namespace qvx
