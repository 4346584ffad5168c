#include "app/servicios/DialogoDeLote.h"

#include "app/Rotulo.h"
#include "app/Textos.h"
#include "app/Trampas.h"
#include "app/servicios/ColumnasDeServicio.h"
#include "controls/Formulario.h"
#include "controls/ModeloTabla.h"
#include "controls/VistaTabla.h"
#include "controls/colorQVX.h"
#include "data/ErrorEjecucion.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace
{

constexpr QSize TamanoDeLote{980, 600};
constexpr int ColumnaAntes = 2;
constexpr int ColumnaDespues = 3;
constexpr int ColumnaMotivo = 4;
constexpr int AnchoDeValor = 230;

} // namespace

DialogoDeLote::DialogoDeLote(QWidget *duena, const Textos &textos_, std::function<void()> escribir_)
    : QDialog(duena)
    , textos(textos_)
    , escribir(std::move(escribir_))
    , disposicion(new QVBoxLayout(this))
    , modelo(new qvx::ModeloTabla({{"Clave"}, {"Nombre"}, {"Antes"}, {"Después"}, {"Se queda como está"}}, 0, this))
    , lista(new qvx::VistaTabla("lvPrevia", "Lo que cambiará"))
    , lblResumen(RotuloLargo("lblResumen"))
    , cmdAceptar(new QPushButton(textos.aceptar))
{
    setObjectName("DialogoDeLote");
    setWindowTitle(textos.titulo);
    coloresQVX::colorQVX::AplicarA(*this);
    disposicion->setContentsMargins(14, 14, 14, 12);
    disposicion->setSpacing(8);
    disposicion->addWidget(RotuloLargo("lblExplicacion", textos.explicacion));
    disposicion->addWidget(lista, 3);
    disposicion->addWidget(lblResumen);
    auto *botones = new QHBoxLayout;
    botones->addStretch();
    auto *cmdCancelar = new QPushButton("&Cancelar");
    cmdCancelar->setObjectName("cmdCancelar");
    cmdCancelar->setAutoDefault(false);
    cmdAceptar->setObjectName("cmdAceptar");
    cmdAceptar->setDefault(true);
    botones->addWidget(cmdAceptar);
    botones->addWidget(cmdCancelar);
    disposicion->addLayout(botones);
    lista->Poner(modelo, ColumnaMotivo, -1);
    lista->setTextElideMode(Qt::ElideMiddle);
    connect(cmdAceptar, &QPushButton::clicked, this, &DialogoDeLote::Aceptar);
    connect(cmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
    resize(qvx::Formulario::Cabida(*this, TamanoDeLote));
}

void DialogoDeLote::PonerArriba(QWidget *arriba, int estirar)
{
    disposicion->insertWidget(1, arriba, estirar);
    arriba->setFocus();
}

void DialogoDeLote::Mostrar(const propuestas::Propuesta &propuesta)
{
    QList<QVariantList> filas;
    for (const propuestas::Fila &fila : propuesta.filas)
        filas.append({fila.clave, fila.nombre, fila.antes, fila.despues, fila.motivo});
    modelo->Llenar(filas);
    if (isVisible())
        Ajustar();
    const int van = propuesta.Cuantos();
    const auto quedan = propuesta.filas.size() - van;
    QString resumen = propuesta.objecion;
    if (resumen.isEmpty()) {
        resumen = textos.hecho + ": " + Cuantos(van, textos.uno, textos.varios) + ".";
        if (quedan > 0)
            resumen += " Se quedan como están: " + Cuantos(quedan, textos.uno, textos.varios)
                       + ", por el motivo que dice la lista.";
        if (propuesta.importe != propuesta.importeNuevo)
            resumen += " Sus precios suman " + servicios::Dinero(propuesta.importe) + " y sumarán "
                       + servicios::Dinero(propuesta.importeNuevo) + ".";
    }
    lblResumen->setText(resumen);
    cmdAceptar->setEnabled(van > 0);
}

// Paths are cut, so that what becomes of each stays in sight.
void DialogoDeLote::Ajustar()
{
    lista->AjustarColumnas();
    for (const int columna : {ColumnaAntes, ColumnaDespues})
        if (lista->columnWidth(columna) > AnchoDeValor)
            lista->setColumnWidth(columna, AnchoDeValor);
}

void DialogoDeLote::showEvent(QShowEvent *evento)
{
    QDialog::showEvent(evento);
    Ajustar();
}

bool DialogoDeLote::Preguntar()
{
    return exec() == Accepted;
}

void DialogoDeLote::Aceptar()
{
    ConTrampa(*this, 1000080, [this] {
        try {
            escribir();
        } catch (const qvx::ErrorEjecucion &) {
            fallo = true;
            throw;
        }
        accept();
    });
}
