#include "app/PantallaDelPlan.h"

#include "app/InteraccionDelEscritorio.h"
#include "app/catalogos/AvisoDeGastos.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"
#include "controls/txtQVX.h"
#include "data/Texto.h"
#include "plan/Claves.h"
#include "session/Sesion.h"

#include <QAction>

namespace
{

// What is open of the tree.
QStringList NodosAbiertos(const comunesQVX::TreeView &arbol)
{
    QStringList abiertos;
    for (QTreeWidgetItemIterator i(const_cast<comunesQVX::TreeView *>(&arbol)); *i; ++i)
        if ((*i)->isExpanded())
            abiertos.append(static_cast<const comunesQVX::Nodo *>(*i)->Key());
    return abiertos;
}

} // namespace

PantallaDelPlan::PantallaDelPlan(QWidget *pantalla_, QObject *padre)
    : QObject(padre)
    , pantalla(pantalla_)
    , tipo(pantalla->findChild<textoQVX::txtQVX *>("txtTipoEquipo"))
    , nombreTipo(pantalla->findChild<textoQVX::txtQVX *>("txtNTipoEquipo"))
    , partes(pantalla->findChild<comunesQVX::TreeView *>("tvPartes"))
    , servicios(pantalla->findChild<comunesQVX::ListView *>("lvServicios"))
    , gastos(new AvisoDeGastos(padre))
{
    cambio.setSingleShot(true);
    connect(&cambio, &QTimer::timeout, this, &PantallaDelPlan::Cambio);
    if (tipo && nombreTipo && partes && servicios)
        Escuchar();
}

void PantallaDelPlan::Escuchar()
{
    const auto mirar = [this] { cambio.start(0); };
    const auto contar = [this] { gastos->Mirar(resuelta ? Tipo() : QString()); };
    connect(tipo, &textoQVX::txtQVX::Change, this, [this, mirar] {
        resuelta = false;
        mirar();
    });
    connect(tipo, &textoQVX::txtQVX::Resuelto, this, [this, mirar] {
        resuelta = true;
        Q_EMIT Abierta();
        mirar();
    });
    connect(tipo, &textoQVX::txtQVX::Resuelto, this, contar);
    connect(gastos, &AvisoDeGastos::Cambio, this, mirar);
    // After a copy the screen fills the tree of the other type by itself.
    connect(partes->model(), &QAbstractItemModel::rowsInserted, this, [this, contar, mirar] {
        resuelta = true;
        contar();
        mirar();
    });
    connect(partes->model(), &QAbstractItemModel::rowsRemoved, this, mirar);
    connect(partes->selectionModel(), &QItemSelectionModel::selectionChanged, this, mirar);
    mirar();
}

QString PantallaDelPlan::Tipo() const
{
    return tipo ? tipo->Text() : QString();
}

bool PantallaDelPlan::HayTipo() const
{
    return resuelta && nombreTipo && !nombreTipo->Text().isEmpty();
}

QString PantallaDelPlan::ParteElegida() const
{
    const comunesQVX::Nodo *nodo = partes ? partes->SelectedItem() : nullptr;
    const QString clave = nodo ? nodo->Key().mid(1) : QString();
    return qvx::claves::EsRaiz(clave) ? QString() : clave;
}

QString PantallaDelPlan::FolioElegido() const
{
    return servicios && servicios->HaySeleccion() ? servicios->TextoSeleccionado() : QString();
}

bool PantallaDelPlan::Mostrar(const QString &tipoEquipo, const QString &parte, const QString &servicio)
{
    if (!tipo || !partes)
        return false;
    if (!resuelta || qvx::SinBlancosAlFinal(Tipo()) != qvx::SinBlancosAlFinal(tipoEquipo))
        tipo->Elegir(tipoEquipo);
    if (!HayTipo())
        return false;
    if (parte.isEmpty())
        return true;
    if (!ElegirParte("N" + qvx::SinBlancosAlFinal(parte)))
        return false;
    if (!servicio.isEmpty())
        return ElegirServicio(servicio);
    partes->setFocus();
    return true;
}

// As a click on the node.
bool PantallaDelPlan::ElegirParte(const QString &nodo)
{
    if (!partes->Contains(nodo))
        return false;
    comunesQVX::Nodo *elegido = partes->Item(nodo);
    partes->EnsureVisible(elegido);
    partes->setSelectedItem(elegido);
    Q_EMIT partes->NodeClick(elegido);
    return true;
}

bool PantallaDelPlan::ElegirServicio(const QString &folio)
{
    for (int fila = 0; servicios && fila < servicios->Count(); ++fila) {
        if (qvx::SinBlancosAlFinal(servicios->Texto(fila)) != qvx::SinBlancosAlFinal(folio))
            continue;
        servicios->setCurrentItem(servicios->topLevelItem(fila));
        servicios->scrollToItem(servicios->topLevelItem(fila));
        servicios->setFocus();
        return true;
    }
    return false;
}

void PantallaDelPlan::AbrirServicio()
{
    if (servicios && servicios->HaySeleccion())
        Q_EMIT servicios->DblClick();
}

void PantallaDelPlan::Releer()
{
    if (!tipo || !partes || !servicios || Tipo().isEmpty())
        return;
    const QStringList abiertos = NodosAbiertos(*partes);
    const comunesQVX::Nodo *nodo = partes->SelectedItem();
    const QString elegido = nodo ? nodo->Key() : QString();
    const QString folio = servicios->HaySeleccion() ? servicios->TextoSeleccionado() : QString();
    tipo->Elegir(Tipo());
    for (const QString &clave : abiertos)
        if (partes->Contains(clave))
            partes->Item(clave)->setExpanded(true);
    if (!elegido.isEmpty() && ElegirParte(elegido) && !folio.isEmpty())
        ElegirServicio(folio);
}

void PantallaDelPlan::Copiar(const QString &nuevo, const QString &origen)
{
    auto *copiar = pantalla ? pantalla->findChild<QAction *>("B3") : nullptr;
    if (!tipo || !copiar)
        return;
    tipo->Elegir(origen);
    if (auto *personas = dynamic_cast<InteraccionDelEscritorio *>(&qvx::Sesion::Actual().Interaccion()))
        personas->Anticipar("TIPO_EQUIPO", nuevo);
    copiar->trigger();
}

// On a part that is chosen the button is another command's.
void PantallaDelPlan::Importar(const QString &archivo)
{
    auto *importar = pantalla ? pantalla->findChild<QAction *>("B2") : nullptr;
    if (!importar || !tipo)
        return;
    if (importar->text() != "Importar XML" && partes)
        ElegirParte("N" + qvx::claves::Raiz);
    if (importar->text() != "Importar XML")
        return;
    auto *personas = dynamic_cast<InteraccionDelEscritorio *>(&qvx::Sesion::Actual().Interaccion());
    if (personas)
        personas->AnticiparArchivo(archivo);
    importar->trigger();
    if (personas)
        personas->AnticiparArchivo({});
}

QString PantallaDelPlan::Sugerencia() const
{
    if (!tipo || !nombreTipo || !partes)
        return {};
    if (tipo->Text().isEmpty())
        return "Elija un tipo de equipo: escriba su clave o pulse F3.";
    if (!resuelta)
        return "Pulse Entrar para ver el plan del tipo de equipo.";
    if (nombreTipo->Text().isEmpty())
        return "El tipo de equipo «" + tipo->Text() + "» no existe o está dado de baja: corrija la clave o pulse F3.";
    if (partes->Count() <= 1)
        return "Este tipo de equipo no tiene plan todavía: elija RAIZ y pulse Nuevo, o pulse Importar XML.";
    if (const QString pendiente = gastos->Texto(); !pendiente.isEmpty())
        return pendiente;
    return partes->SelectedItem() ? QString() : QString("Elija una parte para ver sus servicios.");
}
