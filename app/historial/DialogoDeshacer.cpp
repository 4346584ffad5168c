#include "app/historial/DialogoDeshacer.h"

#include "app/Rotulo.h"
#include "app/Textos.h"
#include "app/Trampas.h"
#include "app/comparar/VistaComparacion.h"
#include "app/historial/CambioDeOperacion.h"
#include "app/historial/TextosDeHistorial.h"
#include "controls/Formulario.h"
#include "controls/colorQVX.h"
#include "data/ErrorEjecucion.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

namespace
{

using Que = historial::Peticion::Que;

constexpr QSize TamanoDeDeshacer{980, 640};

qvx::Firmante Quien()
{
    return qvx::Sesion::Actual().Firmante();
}

} // namespace

DialogoDeshacer::DialogoDeshacer(const historial::Peticion &peticion_, QWidget *duena)
    : QDialog(duena)
    , peticion(peticion_)
    , verbo(peticion.que == Que::Rehacer ? "Rehacer" : "Deshacer")
    , lblExplicacion(RotuloLargo("lblExplicacion"))
    , lblReparos(RotuloLargo("lblReparos"))
    , lvReparos(new QListWidget)
    , cboPlan(new QComboBox)
    , vista(new VistaComparacion)
    , lblResumen(RotuloLargo("lblResumenDeDeshacer"))
    , cmdAceptar(new QPushButton("&" + verbo))
{
    setObjectName("DialogoDeshacer");
    setWindowTitle(verbo);
    coloresQVX::colorQVX::AplicarA(*this);
    const qvx::Operacion operacion = historial::Buscar(Base(), peticion.operacion);
    const QString nombre = historial::Nombre(operacion) + ".";
    if (peticion.que == Que::DejarComoAntes)
        lblExplicacion->setText("El plan del tipo de equipo " + peticion.tipo + " queda como estaba antes de la "
                                + nombre + " Se deshace también todo lo que se le hizo después.");
    else
        lblExplicacion->setText(
            (peticion.que == Que::Rehacer ? "Se vuelve a hacer lo que deshizo la " : "Se deshace la ") + nombre);
    Disponer();
    deshecho = Hacer(true);
    resize(qvx::Formulario::Cabida(*this, TamanoDeDeshacer));
}

void DialogoDeshacer::Disponer()
{
    auto *disposicion = new QVBoxLayout(this);
    disposicion->setContentsMargins(14, 14, 14, 12);
    disposicion->setSpacing(8);
    disposicion->addWidget(lblExplicacion);
    disposicion->addWidget(lblReparos);
    optPosteriores =
        Opcion(*disposicion, "optPosteriores", "Deshacer también las operaciones &posteriores que cambiaron lo mismo");
    optOtraClave = Opcion(*disposicion, "optOtraClave",
                          "Restaurar con &otra clave las partes y los servicios que perdieron la suya");
    lvReparos->setObjectName("lvReparos");
    lvReparos->setAccessibleName("Qué lo impide");
    lvReparos->setWordWrap(true);
    lvReparos->setAlternatingRowColors(true);
    disposicion->addWidget(lvReparos, 1);
    cboPlan->setObjectName("cboPlanDeDeshacer");
    cboPlan->setAccessibleName("Plan");
    connect(cboPlan, &QComboBox::currentIndexChanged, this,
            [this] { ConTrampa(*this, 1000150, [this] { MostrarPlan(); }); });
    disposicion->addWidget(cboPlan);
    disposicion->addWidget(vista, 3);
    disposicion->addWidget(lblResumen);
    auto *botones = new QHBoxLayout;
    botones->addStretch();
    cmdAceptar->setObjectName("cmdAceptar");
    cmdAceptar->setDefault(true);
    auto *cmdCancelar = new QPushButton("&Cancelar");
    cmdCancelar->setObjectName("cmdCancelar");
    cmdCancelar->setAutoDefault(false);
    botones->addWidget(cmdAceptar);
    botones->addWidget(cmdCancelar);
    disposicion->addLayout(botones);
    connect(cmdAceptar, &QPushButton::clicked, this, &DialogoDeshacer::Aceptar);
    connect(cmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
}

QRadioButton *DialogoDeshacer::Opcion(QVBoxLayout &disposicion, const QString &nombre, const QString &texto)
{
    auto *opcion = new QRadioButton(texto);
    opcion->setObjectName(nombre);
    opcion->hide();
    disposicion.addWidget(opcion);
    connect(opcion, &QRadioButton::toggled, this, [this](bool elegida) {
        if (elegida)
            ConTrampa(*this, 1000151, [this] { Ensayar(); });
    });
    return opcion;
}

// What is done is what was shown: later operations by their numbers, so that none comes along that nobody saw.
qvx::Deshecho DialogoDeshacer::Hacer(bool ensayo) const
{
    if (peticion.que == Que::Rehacer)
        return qvx::Rehacer(Base(), Quien(), peticion.operacion, ensayo);
    if (peticion.que == Que::DejarComoAntes)
        return qvx::DejarComoAntesDe(Base(), Quien(), peticion.tipo, peticion.operacion, ensayo);
    if (optOtraClave->isChecked())
        return qvx::Deshacer(Base(), Quien(), {peticion.operacion}, qvx::AlDeshacer::ConOtraClave, ensayo);
    if (optPosteriores->isChecked())
        return ensayo ? qvx::Deshacer(Base(), Quien(), {peticion.operacion}, qvx::AlDeshacer::ConPosteriores, true)
                      : qvx::Deshacer(Base(), Quien(), deshecho.operaciones, qvx::AlDeshacer::SoloEsas, false);
    return qvx::Deshacer(Base(), Quien(), {peticion.operacion}, qvx::AlDeshacer::SoloEsas, ensayo);
}

void DialogoDeshacer::Ensayar()
{
    deshecho = Hacer(true);
    Mostrar();
}

void DialogoDeshacer::showEvent(QShowEvent *evento)
{
    QDialog::showEvent(evento);
    ConTrampa(*this, 1000152, [this] { Mostrar(); });
}

void DialogoDeshacer::Mostrar()
{
    const bool sePuede = deshecho.SePuede();
    const bool conOpcion = optPosteriores->isChecked() || optOtraClave->isChecked();
    if (!sePuede) { // the ways around stay on offer while one of them is looked at
        optPosteriores->setVisible(deshecho.bastaConPosteriores || optPosteriores->isVisible());
        optOtraClave->setVisible(deshecho.bastaConOtraClave || optOtraClave->isVisible());
    }
    lblReparos->setText(optPosteriores->isVisible() || optOtraClave->isVisible()
                            ? QString("Así no se puede: no se cambia nada mientras esto lo impida. Elija cómo seguir.")
                            : QString("No se puede, y no se cambia nada: esto lo impide."));
    lvReparos->clear();
    lvReparos->addItems(historial::Reparos(deshecho));
    for (QWidget *deReparos : {static_cast<QWidget *>(lblReparos), static_cast<QWidget *>(lvReparos)})
        deReparos->setVisible(!sePuede);
    vista->setVisible(sePuede);
    lblResumen->setVisible(sePuede);
    cmdAceptar->setEnabled(sePuede);
    cboPlan->setVisible(sePuede && deshecho.tipos.size() > 1);
    if (!sePuede) {
        (optPosteriores->isVisible() && !conOpcion ? static_cast<QWidget *>(optPosteriores) : lvReparos)->setFocus();
        return;
    }
    lblResumen->setText(historial::Resumen(deshecho));
    {
        const QSignalBlocker callada(cboPlan);
        cboPlan->clear();
        for (const QString &tipo : std::as_const(deshecho.tipos))
            cboPlan->addItem("Plan del tipo de equipo " + tipo, tipo);
    }
    MostrarPlan();
}

void DialogoDeshacer::MostrarPlan()
{
    if (cboPlan->currentIndex() >= 0)
        vista->Mostrar(historial::LoQueVuelve(Base(), cboPlan->currentData().toString(), deshecho.operaciones));
}

// Whether somebody did something to the plan since it was shown.
bool DialogoDeshacer::HuboMas() const
{
    if (peticion.que != Que::DejarComoAntes)
        return false;
    qvx::FiltroDeHistoria filtro;
    filtro.tipoEquipo = peticion.tipo;
    filtro.maximo = 1;
    const auto ultimas = qvx::LeerOperaciones(Base(), filtro);
    return ultimas.isEmpty() || ultimas.constFirst().numero != deshecho.operaciones.value(0);
}

void DialogoDeshacer::Aceptar()
{
    ConTrampa(*this, 1000153, [this] {
        if (HuboMas()) {
            Ensayar();
            qvx::Rechazar(
                "Mientras tanto se cambió el plan otra vez. No se cambió nada: vea de nuevo lo que quedaría.");
        }
        const qvx::Deshecho hecho = Hacer(false);
        if (hecho.SePuede()) {
            deshecho = hecho;
            accept();
            return;
        }
        deshecho = hecho;
        Mostrar();
    });
}
