#include "app/Ajustes.h"

#include "controls/Formulario.h"
#include "controls/VistaTabla.h"

#include <QHeaderView>
#include <QUrl>

namespace ajustes
{

namespace
{

constexpr auto Geometria = "ventana/geometria";
constexpr auto Bases = "recientes";
constexpr auto Carpeta = "copias/carpeta";
constexpr auto Cuantas = "copias/cuantas";
constexpr int MaximoDeRecientes = 8;

QString ClaveDeLista(const QString &lista)
{
    return "listas/" + lista;
}

// A path or an address as one step of a key.
QString ClaveDePlan(const QString &direccion)
{
    return "planes/" + QString::fromLatin1(QUrl::toPercentEncoding(direccion));
}

} // namespace

QSettings Abrir()
{
    return QSettings("quorvex", "quorvex");
}

void RecordarVentana(const QWidget &ventana)
{
    Abrir().setValue(Geometria, ventana.saveGeometry());
}

void ReponerVentana(QWidget &ventana, const QSize &predeterminado)
{
    if (!ventana.restoreGeometry(Abrir().value(Geometria).toByteArray()))
        ventana.resize(predeterminado);
    if (!ventana.isMaximized() && !ventana.isFullScreen())
        ventana.resize(qvx::Formulario::Cabida(ventana, ventana.size()));
}

void RecordarColumnas(const QString &lista, const qvx::VistaTabla &vista)
{
    if (vista.Dispuesta())
        Abrir().setValue(ClaveDeLista(lista), vista.Disposicion());
}

void ReponerColumnas(const QString &lista, qvx::VistaTabla &vista)
{
    vista.Disponer(Abrir().value(ClaveDeLista(lista)).toByteArray());
}

Columnas::Columnas(QString lista_, QTreeView &vista)
    : lista(std::move(lista_)), disposicion(new qvx::DisposicionDeColumnas(vista))
{
    disposicion->Reponer(Abrir().value(ClaveDeLista(lista)).toByteArray());
}

Columnas::~Columnas()
{
    if (disposicion->Tocada())
        Abrir().setValue(ClaveDeLista(lista), disposicion->Bytes());
}

QStringList Recientes()
{
    return Abrir().value(Bases).toStringList();
}

void RecordarBase(const QString &direccion)
{
    QStringList bases = Recientes();
    bases.removeAll(direccion);
    bases.prepend(direccion);
    Abrir().setValue(Bases, bases.mid(0, MaximoDeRecientes));
}

void OlvidarBase(const QString &direccion)
{
    QStringList bases = Recientes();
    bases.removeAll(direccion);
    Abrir().setValue(Bases, bases);
}

QString PlanDe(const QString &direccion)
{
    return Abrir().value(ClaveDePlan(direccion)).toString();
}

void RecordarPlan(const QString &direccion, const QString &tipoEquipo)
{
    Abrir().setValue(ClaveDePlan(direccion), tipoEquipo);
}

QString CarpetaDeCopias()
{
    return Abrir().value(Carpeta).toString();
}

int CopiasQueQuedan()
{
    return qBound(1, Abrir().value(Cuantas, CopiasDeSiempre).toInt(), MaximoDeCopias);
}

void RecordarCopias(const QString &carpeta, int cuantas)
{
    QSettings ajustes = Abrir();
    ajustes.setValue(Carpeta, carpeta);
    ajustes.setValue(Cuantas, cuantas);
}

} // namespace ajustes
