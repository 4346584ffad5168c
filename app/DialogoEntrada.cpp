#include "app/DialogoEntrada.h"

#include "app/Argumentos.h"
#include "controls/colorQVX.h"
#include "ui_DialogoEntrada.h"

#include <QGuiApplication>
#include <QIcon>
#include <QLayout>

namespace
{

constexpr int LadoIcono = 28;

QString Negado(const QString &motivo)
{
    return motivo.isEmpty() ? QString() : "El servidor no dio acceso:\n" + motivo;
}

} // namespace

qvx::Servidor::Prueba ProbarEnEspera(const qvx::Servidor &servidor)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const auto prueba = servidor.Probar();
    QGuiApplication::restoreOverrideCursor();
    return prueba;
}

DialogoEntrada::DialogoEntrada(qvx::Servidor &servidor_, const QString &motivo, QWidget *duena)
    : QDialog(duena), ui(std::make_unique<Ui::DialogoEntrada>()), servidor(servidor_)
{
    ui->setupUi(this);
    coloresQVX::colorQVX::AplicarA(*this);
    ui->lblNombreBase->setText(servidor.Base());
    ui->lblNombreServidor->setText(servidor.Equipo());
    ui->lblIcono->setPixmap(QIcon(":/controls/mensaje_exclamacion.svg").pixmap(LadoIcono));
    ui->txtUsuario->setText(servidor.Usuario());
    connect(ui->cmdEntrar, &QPushButton::clicked, this, &DialogoEntrada::Entrar);
    connect(ui->cmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
    Rechazar(Negado(motivo), ui->txtContrasena);
}

DialogoEntrada::~DialogoEntrada() = default;

void DialogoEntrada::Entrar()
{
    const QString usuario = ui->txtUsuario->text();
    if (const QString error = Argumentos::RevisarOperador(usuario); !error.isEmpty())
        return Rechazar(error, ui->txtUsuario);
    // Without one, another would be looked for in the person's environment.
    if (ui->txtContrasena->text().isEmpty())
        return Rechazar("Escriba la contraseña.", ui->txtContrasena);
    servidor.setUsuario(usuario);
    servidor.setContrasena(ui->txtContrasena->text());
    const auto prueba = ProbarEnEspera(servidor);
    if (prueba.acceso == qvx::Servidor::Acceso::Abierto)
        return accept();
    servidor.setContrasena({});
    ui->txtContrasena->clear();
    Rechazar(Negado(prueba.motivo), ui->txtContrasena);
}

void DialogoEntrada::Rechazar(const QString &motivo, QWidget *campo)
{
    ui->lblMotivo->setText(motivo);
    ui->lblMotivo->setVisible(!motivo.isEmpty());
    ui->lblIcono->setVisible(!motivo.isEmpty());
    layout()->activate();
    resize(width(), layout()->totalHeightForWidth(width()));
    campo->setFocus();
}
