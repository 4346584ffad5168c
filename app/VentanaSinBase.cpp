#include "app/VentanaSinBase.h"

#include "app/Ajustes.h"
#include "controls/InteraccionQt.h"
#include "controls/colorQVX.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

VentanaSinBase::VentanaSinBase() : personas(std::make_unique<qvx::InteraccionQt>())
{
    setObjectName("VentanaSinBase");
    setWindowTitle("Quorvex");
    coloresQVX::colorQVX::AplicarA(*this);
    PonerArchivo(false);
    for (const char *titulo : {"E&dición", "&Ver", "Herra&mientas"}) // off, where they always are
        menuBar()->addMenu(QString::fromUtf8(titulo))->setEnabled(false);
    PonerAyuda([] { return QString("Otra base de datos"); });
    setCentralWidget(Invitacion());
}

VentanaSinBase::~VentanaSinBase() = default;

QWidget *VentanaSinBase::Invitacion()
{
    auto *invitacion = new QWidget;
    auto *texto = new QLabel("No hay ninguna base de datos abierta. Abra un archivo o entre a un servidor; las que se "
                             "abrieron antes están en Archivo, Recientes.");
    texto->setObjectName("lblSinBase");
    texto->setWordWrap(true);
    texto->setAlignment(Qt::AlignCenter);
    auto *disposicion = new QVBoxLayout(invitacion);
    disposicion->addStretch();
    disposicion->addWidget(texto);
    const QList<QPair<QString, QString>> botones{{"Abrir &base de datos…", "mnuAbrirBase"},
                                                 {"Entrar a un &servidor…", "mnuEntrarServidor"}};
    for (const auto &[rotulo, orden] : botones) {
        auto *boton = new QPushButton(rotulo);
        boton->setObjectName("cmd" + orden.mid(3));
        connect(boton, &QPushButton::clicked, findChild<QAction *>(orden), &QAction::trigger);
        disposicion->addWidget(boton, 0, Qt::AlignCenter);
    }
    disposicion->addStretch();
    return invitacion;
}

void VentanaSinBase::closeEvent(QCloseEvent *evento)
{
    ajustes::RecordarVentana(*this);
    evento->accept();
}
