#include "app/servicios/SelectorDeParte.h"

#include "controls/ModeloTabla.h"
#include "controls/Teclas.h"
#include "controls/VistaTabla.h"
#include "plan/Claves.h"
#include "plan/ReglasDeLote.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

namespace
{

constexpr int ColumnaDeRuta = 1;

bool Cuelga(const qvx::Arbol &arbol, const QString &parte, const QString &movida)
{
    for (const qvx::Parte *actual = arbol.Buscar(parte); actual; actual = arbol.Buscar(actual->padre))
        if (actual->clave == movida)
            return true;
    return false;
}

QList<QVariantList> Filas(const lectura::Plan &plan, const QString &movida)
{
    QList<QVariantList> filas;
    if (!movida.isEmpty())
        filas.append({qvx::claves::Raiz, qvx::claves::TextoRaiz});
    for (const auto &[clave, parte] : plan.arbol.Partes())
        if (parte.Sirve() && (movida.isEmpty() || !Cuelga(plan.arbol, clave, movida)))
            filas.append({clave, plan.arbol.Ruta(clave)});
    return filas;
}

} // namespace

SelectorDeParte::SelectorDeParte(const lectura::Plan &plan, const QString &movida, QWidget *padre)
    : QWidget(padre)
    , txtBuscar(new QLineEdit)
    , lista(new qvx::VistaTabla("lvDestinos", "Parte a la que van"))
    , modelo(new qvx::ModeloTabla(
          {{"Clave", qvx::ColumnaDeTabla::Clase::Texto, true}, {"Parte", qvx::ColumnaDeTabla::Clase::Texto, true}}, 0,
          this))
{
    txtBuscar->setObjectName("txtBuscarDestino");
    txtBuscar->setAccessibleName("Buscar la parte");
    txtBuscar->setPlaceholderText("Escriba palabras de la parte o de las que están arriba de ella");
    txtBuscar->setClearButtonEnabled(true);
    txtBuscar->installEventFilter(this);
    auto *disposicion = new QVBoxLayout(this);
    disposicion->setContentsMargins(0, 0, 0, 0);
    disposicion->addWidget(txtBuscar);
    disposicion->addWidget(lista, 1);
    setFocusProxy(txtBuscar);
    modelo->Llenar(Filas(plan, movida));
    lista->Poner(modelo, ColumnaDeRuta, ColumnaDeRuta);
    connect(lista->selectionModel(), &QItemSelectionModel::currentChanged, this, &SelectorDeParte::Cambio);
    connect(txtBuscar, &QLineEdit::textChanged, this, [this](const QString &texto) {
        const QString antes = Elegida();
        modelo->Buscar(texto);
        Elegir(antes);
        Q_EMIT Cambio();
    });
}

QString SelectorDeParte::Elegida() const
{
    const QModelIndex actual = lista->currentIndex();
    return actual.isValid() ? modelo->Clave(actual.row()) : QString();
}

void SelectorDeParte::Elegir(const QString &parte)
{
    const int visible = parte.isEmpty() ? -1 : modelo->VisibleConClave(parte);
    if (visible < 0)
        return;
    lista->setCurrentIndex(modelo->index(visible, 0));
    lista->scrollTo(lista->currentIndex());
}

// From the search the arrows move in the list.
bool SelectorDeParte::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::KeyPress && comunesQVX::MueveLaLista(static_cast<QKeyEvent *>(evento)->key())) {
        QCoreApplication::sendEvent(lista, evento);
        return true;
    }
    return QWidget::eventFilter(objeto, evento);
}
