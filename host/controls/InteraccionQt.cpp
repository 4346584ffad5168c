#include "controls/InteraccionQt.h"

#include "controls/DeAmbos.h"
#include "controls/Formulario.h"
#include "controls/colorQVX.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>
#include <QTreeView>

namespace qvx
{

namespace
{

constexpr int Abortar = 3;
constexpr int Reintentar = 4;
constexpr int Omitir = 5;

constexpr int AnchoInformacion = 360;
constexpr QSize TamanoArchivos(760, 480); // its columns are seen whole
constexpr double LetraPequena = 0.85;     // of the box's letter

struct Boton {
    int respuesta;
    QMessageBox::StandardButton boton;
    const char *texto;
};

constexpr Boton Botones[] = {
    {mensaje::Aceptar, QMessageBox::Ok, "&Aceptar"}, {mensaje::Cancelar, QMessageBox::Cancel, "&Cancelar"},
    {Abortar, QMessageBox::Abort, "&Anular"},        {Reintentar, QMessageBox::Retry, "&Reintentar"},
    {Omitir, QMessageBox::Ignore, "&Omitir"},        {mensaje::Si, QMessageBox::Yes, "&Sí"},
    {mensaje::No, QMessageBox::No, "&No"},
};

QList<int> BotonesDelEstilo(int estilo)
{
    switch (estilo & 0xF) {
    case 1:
        return {mensaje::Aceptar, mensaje::Cancelar};
    case 2:
        return {Abortar, Reintentar, Omitir};
    case 3:
        return {mensaje::Si, mensaje::No, mensaje::Cancelar};
    case 4:
        return {mensaje::Si, mensaje::No};
    case 5:
        return {Reintentar, mensaje::Cancelar};
    default:
        return {mensaje::Aceptar};
    }
}

QMessageBox::Icon IconoDelEstilo(int estilo)
{
    switch (estilo & 0xF0) {
    case mensaje::Critico:
        return QMessageBox::Critical;
    case mensaje::Pregunta:
        return QMessageBox::Question;
    case mensaje::Exclamacion:
        return QMessageBox::Warning;
    case mensaje::Informacion:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

int RespuestaDeEscape(const QList<int> &botones)
{
    for (const int respuesta : {mensaje::Cancelar, mensaje::No, Abortar})
        if (botones.contains(respuesta))
            return respuesta;
    return botones.first();
}

void PonerBotones(QMessageBox &caja, const EstiloMensaje &estilo)
{
    for (const Boton &boton : Botones) {
        if (!estilo.botones.contains(boton.respuesta))
            continue;
        QPushButton *puesto = caja.addButton(boton.boton);
        puesto->setText(QString::fromUtf8(boton.texto));
        puesto->setIcon({});
        if (boton.respuesta == estilo.predeterminado)
            caja.setDefaultButton(puesto);
        if (boton.respuesta == estilo.escape)
            caja.setEscapeButton(puesto);
    }
}

QString Procedencia(const Aviso &aviso)
{
    QStringList partes{aviso.modulo, aviso.identificador};
    partes.removeAll(QString());
    return partes.join(" · ");
}

// Module and identifier in small print.
void PonerProcedencia(QMessageBox &caja, const QString &procedencia)
{
    if (procedencia.isEmpty())
        return;
    caja.setInformativeText(procedencia);
    auto *etiqueta = caja.findChild<QLabel *>("qt_msgbox_informativelabel");
    if (!etiqueta)
        return;
    QFont letra = caja.font();
    letra.setPointSizeF(letra.pointSizeF() * LetraPequena);
    etiqueta->setTextFormat(Qt::PlainText);
    etiqueta->setTextInteractionFlags(Qt::TextSelectableByMouse);
    etiqueta->setFont(letra);
}

// The toolkit writes its own caption on the button each time it is pressed.
void PonerDetalles(QMessageBox &caja, const QString &detalles)
{
    if (detalles.isEmpty())
        return;
    caja.setDetailedText(detalles);
    for (QAbstractButton *boton : caja.buttons()) {
        if (caja.buttonRole(boton) != QMessageBox::ActionRole)
            continue;
        const auto rotular = [boton] { boton->setText("&Detalles"); };
        rotular();
        QObject::connect(boton, &QAbstractButton::clicked, boton, rotular, Qt::QueuedConnection);
    }
}

int Respuesta(int botonPulsado)
{
    for (const Boton &boton : Botones)
        if (boton.boton == botonPulsado)
            return boton.respuesta;
    return mensaje::Cancelar;
}

QLabel *Valor(const QString &texto)
{
    auto *etiqueta = new QLabel(texto.isEmpty() ? QString("—") : texto);
    etiqueta->setTextFormat(Qt::PlainText);
    etiqueta->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return etiqueta;
}

} // namespace

EstiloMensaje DecodificarEstilo(int estilo)
{
    EstiloMensaje resultado;
    resultado.icono = IconoDelEstilo(estilo);
    resultado.botones = BotonesDelEstilo(estilo);
    const int indice = (estilo & 0x300) / mensaje::SegundoBoton;
    resultado.predeterminado = resultado.botones.value(indice, resultado.botones.first());
    resultado.escape = RespuestaDeEscape(resultado.botones);
    return resultado;
}

int InteraccionQt::Mensaje(const Aviso &aviso)
{
    const DeAmbos<QMessageBox> caja(new QMessageBox(QWidget::find(aviso.ventana)));
    coloresQVX::colorQVX::AplicarA(*caja);
    const EstiloMensaje estilo = DecodificarEstilo(aviso.estilo);
    caja->setWindowTitle(aviso.titulo);
    caja->setTextFormat(Qt::PlainText);
    caja->setTextInteractionFlags(Qt::TextSelectableByMouse);
    caja->setText(aviso.texto);
    caja->setIcon(estilo.icono);
    PonerProcedencia(*caja, Procedencia(aviso));
    PonerBotones(*caja, estilo);
    PonerDetalles(*caja, aviso.detalles);
    return Respuesta(caja->exec());
}

QString InteraccionQt::BuscarEnCatalogo(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                                        QWidget *duena)
{
    return DialogoCatalogo::Elegir(catalogo, maximo, filtro, fuente, duena, alta);
}

// The name is taken as it was left: no suffix is added to it.
QString InteraccionQt::ElegirArchivo(const PeticionArchivo &peticion, QWidget *duena)
{
    const DeAmbos<QFileDialog> dialogo(new QFileDialog(duena, peticion.titulo));
    coloresQVX::colorQVX::AplicarA(*dialogo);
    dialogo->resize(Formulario::Cabida(*dialogo, TamanoArchivos));
    if (auto *archivos = dialogo->findChild<QTreeView *>("treeView"))
        archivos->header()->setStretchLastSection(true);
    dialogo->setAcceptMode(peticion.paraGuardar ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialogo->setFileMode(peticion.paraGuardar ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    const QString patron = peticion.filtro.section(QLatin1Char('|'), 1);
    dialogo->setNameFilter(peticion.filtro.section(QLatin1Char('|'), 0, 0) + " (" + patron + ")");
    dialogo->setDirectory(peticion.carpeta.isEmpty()
                              ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                              : peticion.carpeta);
    if (!peticion.archivo.isEmpty())
        dialogo->selectFile(peticion.archivo);
    return dialogo->exec() == QDialog::Accepted ? dialogo->selectedFiles().value(0) : QString();
}

void InteraccionQt::InformacionRegistro(const QList<QPair<QString, QString>> &datos, QWidget *duena)
{
    const DeAmbos<QDialog> dialogo(new QDialog(duena));
    coloresQVX::colorQVX::AplicarA(*dialogo);
    dialogo->setWindowTitle("Información del registro");
    dialogo->setMinimumWidth(AnchoInformacion);
    auto *disposicion = new QVBoxLayout(&*dialogo);
    disposicion->setContentsMargins(16, 16, 16, 12);
    auto *campos = new QFormLayout;
    campos->setHorizontalSpacing(24);
    campos->setVerticalSpacing(8);
    for (const auto &[titulo, valor] : datos)
        campos->addRow(titulo, Valor(valor));
    disposicion->addLayout(campos);
    auto *botones = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton *cerrar = botones->button(QDialogButtonBox::Close);
    cerrar->setText("&Cerrar");
    cerrar->setIcon({});
    cerrar->setDefault(true);
    QObject::connect(botones, &QDialogButtonBox::rejected, &*dialogo, &QDialog::reject);
    disposicion->addStretch();
    disposicion->addWidget(botones);
    cerrar->setFocus();
    dialogo->exec();
}

} // namespace qvx
