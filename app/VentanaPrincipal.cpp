#include "app/VentanaPrincipal.h"

#include "app/DialogoIntegridad.h"
#include "controls/Formulario.h"
#include "controls/TreeView.h"
#include "controls/colorQVX.h"
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
    coloresQVX::colorQVX::AplicarA(*this);
    setWindowTitle("Plan de mantenimiento por tipo de equipo");
    pantalla->setProperty("Padre", QVariant::fromValue(static_cast<QObject *>(this)));
    setCentralWidget(pantalla);
    PonerMenu();
    statusBar()->addWidget(Rotulo("Operador: " + operador));
    PonerSugerencia();
    PonerAvance();
    statusBar()->addPermanentWidget(Rotulo(baseDatos));
    resize(qvx::Formulario::Cabida(*this, {1280, 760}));
    if (auto *forma = qobject_cast<qvx::Formulario *>(pantalla))
        connect(forma, &qvx::Formulario::Descargado, this, &QWidget::close);
}

// What to do next, as the screen's controls stand.
void VentanaPrincipal::PonerSugerencia()
{
    sugerencia = Entre("lblSugerencia");
    tipo = centralWidget()->findChild<textoQVX::txtQVX *>("txtTipoEquipo");
    nombreTipo = centralWidget()->findChild<textoQVX::txtQVX *>("txtNTipoEquipo");
    partes = centralWidget()->findChild<comunesQVX::TreeView *>("tvPartes");
    if (!tipo || !nombreTipo || !partes)
        return;
    cambio.setSingleShot(true);
    connect(&cambio, &QTimer::timeout, this, [this] {
        if (tipo && nombreTipo && partes)
            sugerencia->setText(Sugerencia());
    });
    const auto mirar = [this] { cambio.start(0); };
    connect(tipo, &textoQVX::txtQVX::Change, this, [this, mirar] {
        tipoResuelto = false;
        mirar();
    });
    connect(tipo, &textoQVX::txtQVX::Resuelto, this, [this, mirar] {
        tipoResuelto = true;
        mirar();
    });
    connect(partes->model(), &QAbstractItemModel::rowsInserted, this, mirar);
    connect(partes->model(), &QAbstractItemModel::rowsRemoved, this, mirar);
    connect(partes->selectionModel(), &QItemSelectionModel::selectionChanged, this, mirar);
    mirar();
}

QString VentanaPrincipal::Sugerencia() const
{
    if (tipo->Text().isEmpty())
        return "Elija un tipo de equipo: escriba su clave o pulse F3.";
    if (!tipoResuelto)
        return "Pulse Entrar para ver el plan del tipo de equipo.";
    if (nombreTipo->Text().isEmpty())
        return "El tipo de equipo «" + tipo->Text() + "» no existe o está dado de baja: corrija la clave o pulse F3.";
    if (partes->Count() <= 1)
        return "Este tipo de equipo no tiene plan todavía: elija RAIZ y pulse Nuevo, o pulse Importar XML.";
    return partes->SelectedItem() ? QString() : QString("Elija una parte para ver sus servicios.");
}

// A label that takes the room between the operator and the database, whatever it says.
QLabel *VentanaPrincipal::Entre(const QString &nombre)
{
    QLabel *rotulo = Rotulo({});
    rotulo->setObjectName(nombre);
    rotulo->setIndent(24);
    rotulo->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(rotulo, 1);
    return rotulo;
}

// While a job runs, how far it is stands in the place of what to do next.
void VentanaPrincipal::PonerAvance()
{
    QLabel *avance = Entre("lblAvance");
    avance->hide();
    const auto *aplicacion = qobject_cast<qvx::Aplicacion *>(QCoreApplication::instance());
    if (!aplicacion)
        return;
    connect(aplicacion, &qvx::Aplicacion::Avance, avance, [this, avance](int sentencias) {
        avance->setText("Trabajando… " + QLocale().toString(sentencias)
                        + (sentencias == 1 ? " sentencia" : " sentencias"));
        sugerencia->hide();
        avance->show();
    });
    connect(aplicacion, &qvx::Aplicacion::Reposo, avance, [this, avance] {
        avance->clear();
        avance->hide();
        sugerencia->show();
    });
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
        if (dialogo.HuboCambios() && tipo && !tipo->Text().isEmpty())
            tipo->Elegir(tipo->Text());
    } catch (const qvx::ErrorEjecucion &error) {
        qvx::Sistema().Mensaje(error.Descripcion(), qvx::mensaje::Critico, "Quorvex", winId(), "QVX", "ERR-ID:1000006");
    }
}

void VentanaPrincipal::closeEvent(QCloseEvent *evento)
{
    if (centralWidget())
        centralWidget()->close();
    evento->accept();
}
