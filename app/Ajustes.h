#pragma once

#include "controls/DisposicionDeColumnas.h"

#include <QSettings>
#include <QStringList>

class QTreeView;
class QWidget;

namespace qvx
{
class VistaTabla;
}

// What is remembered of the person who works here, in his own folder: sizes and places, what was open. Never a
// password, and nothing of the plant.
namespace ajustes
{

QSettings Abrir();

// A window where and as large as it was, on a screen that there is and no larger than it; predeterminado: its size the
// first time.
void RecordarVentana(const QWidget &ventana);
void ReponerVentana(QWidget &ventana, const QSize &predeterminado);

// Of a list how the person laid its columns out.
void RecordarColumnas(const QString &lista, const qvx::VistaTabla &vista);
void ReponerColumnas(const QString &lista, qvx::VistaTabla &vista);
// Of any other list: put back when it has its columns, remembered when this goes, which must be before the list does.
class Columnas
{
public:
    Columnas(QString lista, QTreeView &vista);
    ~Columnas();
    Columnas(const Columnas &) = delete;
    Columnas &operator=(const Columnas &) = delete;
    // The person's own: nothing else fits them.
    bool Propias() const { return disposicion->Tocada(); }

private:
    QString lista;
    qvx::DisposicionDeColumnas *disposicion; // the view's
};

// The databases that were open, files and addresses of servers, the last one first.
QStringList Recientes();
void RecordarBase(const QString &direccion);
void OlvidarBase(const QString &direccion);

// The equipment type whose plan was open in a database, "" for none.
QString PlanDe(const QString &direccion);
void RecordarPlan(const QString &direccion, const QString &tipoEquipo);

// Where copies of databases go, "" for a folder beside each, and how many of the program's own are kept of each.
QString CarpetaDeCopias();
int CopiasQueQuedan();
void RecordarCopias(const QString &carpeta, int cuantas);
constexpr int CopiasDeSiempre = 10;
constexpr int MaximoDeCopias = 99;

} // namespace ajustes
