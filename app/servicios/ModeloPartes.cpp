#include "app/servicios/ModeloPartes.h"

#include "app/servicios/ModeloServicios.h"
#include "data/Texto.h"
#include "plan/Claves.h"

#include <QMimeData>
#include <QPalette>
#include <numeric>

void ModeloPartes::Agregar(int padre, Nodo nodo)
{
    const int lugar = static_cast<int>(nodos.size());
    QList<int> &hermanos = padre < 0 ? arriba : nodos.at(padre).hijos;
    nodo.padre = padre;
    nodo.fila = static_cast<int>(hermanos.size());
    hermanos.append(lugar);
    lugares.insert(nodo.clave, lugar);
    nodos.push_back(std::move(nodo));
}

// Parts by their keys, as the screen's tree has them; level by level, so that a parent stands before its children.
void ModeloPartes::Poner(const lectura::Plan &plan)
{
    beginResetModel();
    nodos.clear();
    arriba.clear();
    lugares.clear();
    const auto totales = lectura::SumarPorParte(plan);
    QHash<QString, QList<const qvx::Parte *>> hijos;
    for (const auto &[clave, parte] : plan.arbol.Partes())
        if (parte.alcance == qvx::Parte::Alcance::Llega)
            hijos[parte.padre].append(&parte);
    QList<int> todos(plan.servicios.size());
    std::iota(todos.begin(), todos.end(), 0);
    const auto nodo = [](const QString &clave, const QString &texto, const lectura::Totales &total) {
        Nodo nuevo;
        nuevo.clave = clave;
        nuevo.texto = texto;
        nuevo.servicios = total.servicios;
        nuevo.costoAlAno = total.alAno.costo;
        return nuevo;
    };
    Agregar(-1, nodo(qvx::claves::Raiz, "Todo el plan", lectura::Sumar(plan, todos)));
    for (std::size_t i = 0; i < nodos.size(); ++i)
        for (const qvx::Parte *parte : hijos.value(nodos.at(i).clave)) {
            Nodo nuevo = nodo(parte->clave, parte->clave + " - " + parte->descripcion, totales.value(parte->clave));
            nuevo.deBaja = !parte->activa;
            if (nuevo.deBaja)
                nuevo.texto += " (de baja)";
            Agregar(static_cast<int>(i), std::move(nuevo));
        }
    if (const lectura::Totales sueltos = totales.value({}); sueltos.servicios > 0)
        Agregar(-1, nodo({}, "Fuera del árbol", sueltos));
    endResetModel();
}

QString ModeloPartes::Clave(const QModelIndex &indice) const
{
    return indice.isValid() ? De(indice).clave : qvx::claves::Raiz;
}

QModelIndex ModeloPartes::Indice(const QString &clave) const
{
    const auto lugar = lugares.constFind(clave);
    return lugar == lugares.constEnd() ? QModelIndex()
                                       : createIndex(nodos.at(*lugar).fila, 0, static_cast<quintptr>(*lugar));
}

QModelIndex ModeloPartes::index(int fila, int columna, const QModelIndex &padre) const
{
    if (!hasIndex(fila, columna, padre))
        return {};
    return createIndex(fila, columna, static_cast<quintptr>(HijosDe(padre).at(fila)));
}

QModelIndex ModeloPartes::parent(const QModelIndex &indice) const
{
    if (!indice.isValid() || De(indice).padre < 0)
        return {};
    const int padre = De(indice).padre;
    return createIndex(nodos.at(padre).fila, 0, static_cast<quintptr>(padre));
}

int ModeloPartes::rowCount(const QModelIndex &padre) const
{
    return padre.column() > 0 ? 0 : static_cast<int>(HijosDe(padre).size());
}

int ModeloPartes::columnCount(const QModelIndex &) const
{
    return Columnas;
}

QVariant ModeloPartes::data(const QModelIndex &indice, int papel) const
{
    const Nodo &nodo = De(indice);
    if (papel == Qt::TextAlignmentRole && indice.column() != Parte)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (papel == Qt::ForegroundRole && nodo.deBaja)
        return QPalette().brush(QPalette::Disabled, QPalette::Text);
    if (papel == Qt::ToolTipRole && indice.column() == Parte)
        return nodo.texto;
    if (papel != Qt::DisplayRole)
        return {};
    if (indice.column() == Parte)
        return nodo.texto;
    return indice.column() == Servicios ? servicios::Cifra(nodo.servicios)
                                        : qvx::NumeroConFormato(nodo.costoAlAno, "$#,##0.00");
}

QVariant ModeloPartes::headerData(int columna, Qt::Orientation orientacion, int papel) const
{
    if (orientacion != Qt::Horizontal || papel != Qt::DisplayRole)
        return {};
    return columna == Parte ? "Parte y lo de abajo" : columna == Servicios ? "Servicios" : "Costo al año";
}

Qt::ItemFlags ModeloPartes::flags(const QModelIndex &indice) const
{
    Qt::ItemFlags banderas = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!indice.isValid())
        return Qt::NoItemFlags;
    const QString clave = Clave(indice);
    if (!clave.isEmpty())
        banderas |= Qt::ItemIsDropEnabled;
    if (!clave.isEmpty() && !qvx::claves::EsRaiz(clave))
        banderas |= Qt::ItemIsDragEnabled;
    return banderas;
}

QStringList ModeloPartes::mimeTypes() const
{
    return {TipoArrastrado};
}

bool ModeloPartes::canDropMimeData(const QMimeData *datos, Qt::DropAction, int, int, const QModelIndex &padre) const
{
    return padre.isValid() && !Clave(padre).isEmpty()
           && (datos->hasFormat(TipoArrastrado) || datos->hasFormat(ModeloServicios::TipoArrastrado));
}

QMimeData *ModeloPartes::mimeData(const QModelIndexList &) const
{
    auto *datos = new QMimeData;
    datos->setData(TipoArrastrado, {});
    return datos;
}
