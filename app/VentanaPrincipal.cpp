#include "app/VentanaPrincipal.h"

#include "controls/Formulario.h"

#include <QCloseEvent>
#include <QLabel>
#include <QStatusBar>

VentanaPrincipal::VentanaPrincipal(QWidget *pantalla, const QString &tipoEquipo_, const QString &operador,
                                   const QString &baseDatos)
    : tipoEquipo(tipoEquipo_)
{
    setWindowTitle("Plan de mantenimiento por tipo de equipo");
    pantalla->setProperty("Padre", QVariant::fromValue(static_cast<QObject *>(this)));
    setCentralWidget(pantalla);
    statusBar()->addWidget(new QLabel("Operador: " + operador));
    statusBar()->addPermanentWidget(new QLabel(baseDatos));
    resize(1280, 760);
    if (auto *forma = qobject_cast<qvx::Formulario *>(pantalla))
        connect(forma, &qvx::Formulario::Descargado, this, &QWidget::close);
}

void VentanaPrincipal::closeEvent(QCloseEvent *evento)
{
    if (centralWidget())
        centralWidget()->close();
    evento->accept();
}
