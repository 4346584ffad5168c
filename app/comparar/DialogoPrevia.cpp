#include "app/comparar/DialogoPrevia.h"

#include "app/Rotulo.h"
#include "app/comparar/VistaComparacion.h"
#include "controls/Formulario.h"
#include "controls/colorQVX.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <utility>

namespace
{

constexpr QSize TamanoDePrevia{980, 640};

} // namespace

DialogoPrevia::DialogoPrevia(const Textos &textos, comparar::Comparados comparados, QWidget *duena)
    : QDialog(duena), porMostrar(std::move(comparados)), vista(new VistaComparacion)
{
    setObjectName("DialogoPrevia");
    setWindowTitle(textos.titulo);
    coloresQVX::colorQVX::AplicarA(*this);
    auto *disposicion = new QVBoxLayout(this);
    disposicion->setContentsMargins(14, 14, 14, 12);
    disposicion->setSpacing(8);
    auto *explicacion = RotuloLargo("lblExplicacion", textos.explicacion);
    auto *cmdAceptar = new QPushButton(textos.aceptar);
    cmdAceptar->setObjectName("cmdAceptar");
    cmdAceptar->setDefault(true);
    auto *cmdCancelar = new QPushButton("&Cancelar");
    cmdCancelar->setObjectName("cmdCancelar");
    cmdCancelar->setAutoDefault(false);
    auto *botones = new QHBoxLayout;
    botones->addStretch();
    botones->addWidget(cmdAceptar);
    botones->addWidget(cmdCancelar);
    disposicion->addWidget(explicacion);
    disposicion->addWidget(vista, 1);
    disposicion->addLayout(botones);
    connect(cmdAceptar, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
    resize(qvx::Formulario::Cabida(*this, TamanoDePrevia));
}

void DialogoPrevia::showEvent(QShowEvent *evento)
{
    QDialog::showEvent(evento);
    if (!porMostrar.antes.Titulo().isEmpty())
        vista->Mostrar(std::exchange(porMostrar, {}));
}
