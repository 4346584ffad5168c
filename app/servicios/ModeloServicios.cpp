#include "app/servicios/ModeloServicios.h"

#include "app/Textos.h"
#include "plan/Catalogos.h"

#include <QFont>
#include <QMimeData>
#include <algorithm>
#include <numeric>

namespace
{

// What a group adds up to in a column of amounts or hours; nothing in the others.
std::optional<double> SumaDe(const lectura::Totales::Importes &importes, int columna)
{
    switch (columna) {
    case servicios::Horas:
        return importes.horas;
    case servicios::Paro:
        return importes.horasParo;
    case servicios::ManoObra:
        return importes.manoObra;
    case servicios::Refacciones:
        return importes.refacciones;
    case servicios::Herramientas:
        return importes.herramientas;
    case servicios::Costo:
        return importes.costo;
    case servicios::Precio:
        return importes.precio;
    case servicios::Utilidad:
        return importes.utilidad;
    default:
        return {};
    }
}

} // namespace

ModeloServicios::ModeloServicios(QObject *padre) : QAbstractItemModel(padre)
{
    filtro.Poner(&plan.servicios);
}

void ModeloServicios::Poner(lectura::Plan nuevo)
{
    beginResetModel();
    plan = std::move(nuevo);
    filtro.Poner(&plan.servicios);
    permitidos.resize(plan.servicios.size());
    std::iota(permitidos.begin(), permitidos.end(), 0);
    Ordenar();
    Elegir();
    endResetModel();
}

void ModeloServicios::Limitar(const QList<int> &cuales)
{
    beginResetModel();
    permitidos = cuales;
    Ordenar();
    Elegir();
    endResetModel();
}

void ModeloServicios::Buscar(const QString &texto)
{
    beginResetModel();
    filtro.Buscar(texto);
    Elegir();
    endResetModel();
}

void ModeloServicios::PonerEnColumna(int columna, const QString &texto)
{
    beginResetModel();
    filtro.PonerEnColumna(columna, texto);
    Elegir();
    endResetModel();
}

void ModeloServicios::Agrupar(Grupos grupos_)
{
    beginResetModel();
    como = grupos_;
    Elegir();
    endResetModel();
}

void ModeloServicios::sort(int columna, Qt::SortOrder sentido_)
{
    beginResetModel();
    columnaDeOrden = columna;
    sentido = sentido_;
    Ordenar();
    Elegir();
    endResetModel();
}

// Services alike in the column stay by folio.
void ModeloServicios::Ordenar()
{
    orden = permitidos;
    if (columnaDeOrden < 0 || columnaDeOrden >= servicios::Columnas)
        return;
    const bool texto = servicios::ClaseDe(columnaDeOrden) == servicios::Clase::Texto;
    QStringList textos;
    QList<double> numeros;
    for (const lectura::Servicio &servicio : std::as_const(plan.servicios))
        if (texto)
            textos.append(qvx::Plegado(servicios::Texto(servicio, columnaDeOrden)));
        else
            numeros.append(servicios::Numero(servicio, columnaDeOrden));
    const auto antes = [&](int una, int otra) {
        return texto ? textos.at(una) < textos.at(otra) : numeros.at(una) < numeros.at(otra);
    };
    std::stable_sort(orden.begin(), orden.end(), [&](int una, int otra) {
        return sentido == Qt::AscendingOrder ? antes(una, otra) : antes(otra, una);
    });
}

void ModeloServicios::Elegir()
{
    mostrados.clear();
    for (const int servicio : std::as_const(orden))
        if (filtro.Admite(servicio))
            mostrados.append(servicio);
    Repartir();
    total = lectura::Sumar(plan, mostrados);
}

// Groups stand by their titles, services in them as they are sorted.
void ModeloServicios::Repartir()
{
    grupos.clear();
    if (!EnGrupos())
        return;
    const int columna = como == Grupos::PorParte ? servicios::Ruta : servicios::Nombre;
    QHash<QString, int> lugares; // two parts may have one path
    for (const int cual : std::as_const(mostrados)) {
        const lectura::Servicio &servicio = plan.servicios.at(cual);
        const QString clave = como == Grupos::PorParte ? servicio.leido.parte : servicio.tipoServicio;
        auto lugar = lugares.constFind(clave);
        if (lugar == lugares.constEnd()) {
            lugar = lugares.insert(clave, static_cast<int>(grupos.size()));
            grupos.append({servicios::Texto(servicio, columna), {}, {}});
        }
        grupos[*lugar].servicios.append(cual);
    }
    for (Grupo &grupo : grupos)
        grupo.total = lectura::Sumar(plan, grupo.servicios);
    std::stable_sort(grupos.begin(), grupos.end(),
                     [](const Grupo &uno, const Grupo &otro) { return uno.titulo < otro.titulo; });
    mostrados.clear();
    for (const Grupo &grupo : std::as_const(grupos))
        mostrados += grupo.servicios;
}

// Below a group the number of the group stands, from 1; 0 stands at the top.
QModelIndex ModeloServicios::index(int fila, int columna, const QModelIndex &padre) const
{
    if (!hasIndex(fila, columna, padre))
        return {};
    return createIndex(fila, columna, padre.isValid() ? static_cast<quintptr>(padre.row()) + 1 : 0);
}

QModelIndex ModeloServicios::parent(const QModelIndex &indice) const
{
    if (!indice.isValid() || indice.internalId() == 0)
        return {};
    return createIndex(static_cast<int>(indice.internalId() - 1), 0, quintptr{0});
}

int ModeloServicios::rowCount(const QModelIndex &padre) const
{
    if (!padre.isValid())
        return static_cast<int>(EnGrupos() ? grupos.size() : mostrados.size());
    if (!EnGrupos() || padre.internalId() != 0 || padre.column() != 0)
        return 0;
    return static_cast<int>(grupos.at(padre.row()).servicios.size());
}

int ModeloServicios::columnCount(const QModelIndex &) const
{
    return servicios::Columnas;
}

int ModeloServicios::Servicio(const QModelIndex &indice) const
{
    if (!indice.isValid() || (EnGrupos() && indice.internalId() == 0))
        return -1;
    return EnGrupos() ? grupos.at(static_cast<int>(indice.internalId() - 1)).servicios.at(indice.row())
                      : mostrados.at(indice.row());
}

void ModeloServicios::Recorrer(const std::function<void(int, const QModelIndex &)> &ver) const
{
    const auto deUno = [&](const QList<int> &cuales, const QModelIndex &padre) {
        for (int fila = 0; fila < cuales.size(); ++fila)
            ver(cuales.at(fila), index(fila, 0, padre));
    };
    if (!EnGrupos())
        return deUno(mostrados, {});
    for (int grupo = 0; grupo < grupos.size(); ++grupo)
        deUno(grupos.at(grupo).servicios, index(grupo, 0));
}

QString ModeloServicios::TextoDeGrupo(const Grupo &grupo, int columna) const
{
    if (columna == 0)
        return grupo.titulo + " — " + Cuantos(grupo.servicios.size(), "servicio", "servicios");
    if (columna == servicios::Porcentaje)
        return qvx::NumeroConFormato(grupo.total.unaVez.porcentaje, "#,##0.00") + " %";
    const auto suma = SumaDe(grupo.total.unaVez, columna);
    if (!suma)
        return {};
    return servicios::ClaseDe(columna) == servicios::Clase::Dinero ? servicios::Dinero(*suma) : servicios::Cifra(*suma);
}

QVariant ModeloServicios::data(const QModelIndex &indice, int papel) const
{
    const int columna = indice.column();
    const int servicio = Servicio(indice);
    if (papel == Qt::TextAlignmentRole && servicios::ClaseDe(columna) != servicios::Clase::Texto)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (papel == Qt::FontRole && servicio < 0) {
        QFont letra;
        letra.setBold(true);
        return letra;
    }
    if (papel != Qt::DisplayRole && (papel != Qt::ToolTipRole || columna != servicios::Ruta))
        return {};
    return servicio < 0 ? TextoDeGrupo(grupos.at(indice.row()), columna)
                        : servicios::Texto(plan.servicios.at(servicio), columna);
}

QVariant ModeloServicios::headerData(int columna, Qt::Orientation orientacion, int papel) const
{
    if (orientacion != Qt::Horizontal || columna >= servicios::Columnas)
        return {};
    if (papel == Qt::TextAlignmentRole)
        return QVariant::fromValue(
            (servicios::ClaseDe(columna) == servicios::Clase::Texto ? Qt::AlignLeft : Qt::AlignRight)
            | Qt::AlignVCenter);
    return papel == Qt::DisplayRole ? QVariant(servicios::Titulo(columna)) : QVariant();
}

Qt::ItemFlags ModeloServicios::flags(const QModelIndex &indice) const
{
    if (!indice.isValid())
        return Qt::NoItemFlags;
    if (Servicio(indice) < 0)
        return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
}

QStringList ModeloServicios::mimeTypes() const
{
    return {TipoArrastrado};
}

// No data of the plan leaves the window: who takes the drop asks the page.
QMimeData *ModeloServicios::mimeData(const QModelIndexList &) const
{
    auto *datos = new QMimeData;
    datos->setData(TipoArrastrado, {});
    return datos;
}
