#include "app/VentanaPrincipal.h"

#include "app/DialogoIntegridad.h"
#include "controls/Formulario.h"
#include "controls/txtQVX.h"
#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>

namespace
{

// Names are no markup.
QLabel *Rotulo(const QString &texto)
{
    auto *rotulo = new QLabel(texto);
    rotulo->setTextFormat(Qt::PlainText);
    return rotulo;
}

} // namespace

VentanaPrincipal::VentanaPrincipal(QWidget *pantalla, const QString &tipoEquipo_, const QString &operador,
                                   const QString &baseDatos)
    : tipoEquipo(tipoEquipo_)
{
    setWindowTitle("Plan de mantenimiento por tipo de equipo");
    pantalla->setProperty("Padre", QVariant::fromValue(static_cast<QObject *>(this)));
    setCentralWidget(pantalla);
    PonerMenu();
    statusBar()->addWidget(Rotulo("Operador: " + operador));
    statusBar()->addPermanentWidget(Rotulo(baseDatos));
    resize(1280, 760);
    if (auto *forma = qobject_cast<qvx::Formulario *>(pantalla))
        connect(forma, &qvx::Formulario::Descargado, this, &QWidget::close);
}

void VentanaPrincipal::PonerMenu()
{
    QMenu *herramientas = menuBar()->addMenu("&Herramientas");
    herramientas->setObjectName("mnuHerramientas");
    QAction *revisar = herramientas->addAction("&Revisar integridad…", this, &VentanaPrincipal::RevisarIntegridad);
    revisar->setObjectName("mnuRevisarIntegridad");
}

// The screen then reads its equipment type again: what it shows may have been corrected.
void VentanaPrincipal::RevisarIntegridad()
{
    try {
        DialogoIntegridad dialogo(this);
        dialogo.exec();
        auto *tipo = centralWidget()->findChild<textoQVX::txtQVX *>("txtTipoEquipo");
        if (dialogo.HuboCambios() && tipo && !tipo->Text().isEmpty())
            tipo->Elegir(tipo->Text());
    } catch (const qvx::ErrorEjecucion &error) {
        qvx::Sistema().Mensaje(error.Descripcion(), qvx::mensaje::Critico, "Quorvex", winId(), "QVX", "ERR-ID:1000004");
    }
}

void VentanaPrincipal::closeEvent(QCloseEvent *evento)
{
    if (centralWidget())
        centralWidget()->close();
    evento->accept();
}
