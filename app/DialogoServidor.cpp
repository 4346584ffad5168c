#include "app/DialogoServidor.h"

#include "app/Ajustes.h"
#include "app/Rotulo.h"
#include "controls/colorQVX.h"
#include "data/ErrorEjecucion.h"
#include "data/Servidor.h"

#include <QCompleter>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{

constexpr int Ancho = 520;

} // namespace

QString DialogoServidor::Preguntar(QWidget *duena)
{
    DialogoServidor dialogo(duena);
    return dialogo.exec() == Accepted ? dialogo.txtDireccion->text().trimmed() : QString();
}

DialogoServidor::DialogoServidor(QWidget *duena)
    : QDialog(duena), txtDireccion(new QLineEdit("postgresql://")), lblMotivo(RotuloLargo("lblMotivo"))
{
    setObjectName("DialogoServidor");
    setWindowTitle("Entrar a un servidor");
    coloresQVX::colorQVX::AplicarA(*this);
    auto *rotulo = new QLabel("&Dirección del servidor, como la da quien lo administra:");
    rotulo->setBuddy(txtDireccion);
    auto *forma = new QLabel("postgresql://USUARIO@EQUIPO:PUERTO/BASE — la contraseña no va aquí: se pide después.");
    forma->setWordWrap(true);
    txtDireccion->setObjectName("txtDireccion");
    txtDireccion->setAccessibleName("Dirección del servidor");
    QStringList conocidas = ajustes::Recientes();
    conocidas.removeIf([](const QString &direccion) { return !direccion.startsWith("postgres"); });
    txtDireccion->setCompleter(new QCompleter(conocidas, txtDireccion));
    lblMotivo->hide();
    auto *botones = new QDialogButtonBox;
    botones->addButton("&Entrar", QDialogButtonBox::AcceptRole)->setObjectName("cmdEntrar");
    botones->addButton("&Cancelar", QDialogButtonBox::RejectRole)->setObjectName("cmdCancelar");
    connect(botones, &QDialogButtonBox::accepted, this, &DialogoServidor::accept);
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *disposicion = new QVBoxLayout(this);
    for (QWidget *parte : std::initializer_list<QWidget *>{rotulo, txtDireccion, forma, lblMotivo, botones})
        disposicion->addWidget(parte);
    resize(Ancho, sizeHint().height());
}

// What is no address stays to be corrected.
void DialogoServidor::accept()
{
    try {
        const qvx::Servidor servidor(txtDireccion->text().trimmed());
        QDialog::accept();
    } catch (const qvx::ErrorEjecucion &error) {
        lblMotivo->setText(error.Descripcion());
        lblMotivo->show();
        adjustSize();
        txtDireccion->setFocus();
    }
}
