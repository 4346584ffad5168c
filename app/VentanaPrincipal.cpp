#include "app/VentanaPrincipal.h"

#include "app/DialogoIntegridad.h"
#include "controls/Formulario.h"
#include "controls/txtQVX.h"
#include "data/ErrorEjecucion.h"
#include "session/Aplicacion.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"

#include <QCloseEvent>
#include <QLabel>
#include <QLocale>
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
    PonerAvance();
    statusBar()->addPermanentWidget(Rotulo(baseDatos));
    resize(1280, 760);
    if (auto *forma = qobject_cast<qvx::Formulario *>(pantalla))
        connect(forma, &qvx::Formulario::Descargado, this, &QWidget::close);
}

// Takes the room between the other two labels, whatever it says.
void VentanaPrincipal::PonerAvance()
{
    QLabel *avance = Rotulo({});
    avance->setObjectName("lblAvance");
    avance->setIndent(24);
    avance->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(avance, 1);
    const auto *aplicacion = qobject_cast<qvx::Aplicacion *>(QCoreApplication::instance());
    if (!aplicacion)
        return;
    connect(aplicacion, &qvx::Aplicacion::Avance, avance, [avance](int sentencias) {
        avance->setText("Trabajando… " + QLocale().toString(sentencias)
                        + (sentencias == 1 ? " sentencia" : " sentencias"));
    });
    connect(aplicacion, &qvx::Aplicacion::Reposo, avance, &QLabel::clear);
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
