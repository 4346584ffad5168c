#include "app/catalogos/DialogoRegistro.h"

#include "app/Rotulo.h"
#include "app/Trampas.h"
#include "app/catalogos/Nombres.h"
#include "controls/Formulario.h"
#include "controls/colorQVX.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using qvx::RegistroDeCatalogo;
using qvx::Sesion;
using ClaseDeColumna = qvx::ColumnaDeCatalogo::Clase;

namespace
{

constexpr int AnchoDeCampo = 380;

// Offers what a list holds; what the row has already stays offered.
QComboBox *Lista(const QList<QPair<QString, QString>> &ofertas, const QString &valor)
{
    auto *lista = new QComboBox;
    lista->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    lista->setMinimumContentsLength(24);
    for (const auto &[clave, texto] : ofertas)
        lista->addItem(texto, clave);
    if (!valor.isEmpty() && lista->findData(valor) < 0)
        lista->addItem(valor + " (dada de baja)", valor);
    lista->setPlaceholderText("Elija");
    lista->setCurrentIndex(valor.isEmpty() ? -1 : lista->findData(valor));
    return lista;
}

QList<QPair<QString, QString>> EntradasDe(const QString &codigo)
{
    QList<QPair<QString, QString>> entradas;
    for (const auto &entrada : qvx::LeerEntradas(Base(), codigo, {}))
        entradas.append({qvx::SinBlancosAlFinal(entrada.clave), entrada.clave + " - " + entrada.descripcion});
    return entradas;
}

} // namespace

DialogoRegistro::Hecho DialogoRegistro::Preguntar(QWidget *duena, const qvx::TablaDeCatalogo &tabla,
                                                  const RegistroDeCatalogo &registro)
{
    DialogoRegistro dialogo(duena, tabla, registro);
    if (dialogo.exec() != QDialog::Accepted)
        return {};
    const bool copia = dialogo.chkCopiar && dialogo.chkCopiar->isChecked();
    return {dialogo.Escrito().clave, copia ? dialogo.cboOrigen->currentData().toString() : QString()};
}

// A new row's key is proposed among all; of a known one only what hangs from it is asked.
DialogoRegistro::DialogoRegistro(QWidget *duena, const qvx::TablaDeCatalogo &tabla_, const RegistroDeCatalogo &registro)
    : QDialog(duena)
    , tabla(tabla_)
    , antes(registro)
    , nuevo(registro.clave.isEmpty())
    , situacion(qvx::LeerSituacion(Base(), tabla, nuevo ? QStringList() : QStringList(registro.clave)))
    , txtClave(new QLineEdit(nuevo ? qvx::ClavePropuesta(situacion) : registro.clave))
    , lblObjecion(RotuloLargo("lblObjecion", " "))
{
    coloresQVX::colorQVX::AplicarA(*this);
    setWindowTitle((nuevo ? "Nuevo registro de " : "Editar registro de ") + tabla.titulo.toLower());
    PonerCampos();
    PonerBotones();
    // A proposed key is seldom another.
    QWidget *primero = txtClave->text().isEmpty() ? txtClave : controles.constFirst();
    primero->setFocus();
    txtClave->selectAll();
    resize(qvx::Formulario::Cabida(*this, sizeHint()));
}

void DialogoRegistro::PonerCampos()
{
    auto *campos = new QFormLayout;
    campos->setHorizontalSpacing(16);
    campos->setVerticalSpacing(8);
    campos->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    txtClave->setObjectName("txtClave");
    txtClave->setReadOnly(!nuevo); // what names it elsewhere would be lost
    txtClave->setMinimumWidth(AnchoDeCampo);
    connect(txtClave, &QLineEdit::editingFinished, this,
            [this] { txtClave->setText(qvx::ClaveConFormato(txtClave->text(), situacion.mascara)); });
    campos->addRow("Clave", txtClave);
    for (int columna = 0; columna < tabla.columnas.size(); ++columna) {
        controles.append(Campo(columna));
        campos->addRow(tabla.columnas.at(columna).titulo, controles.constLast());
    }
    if (nuevo && tabla.nombre == "Tipo_Equipo")
        PonerCopia(*campos);
    auto *disposicion = new QVBoxLayout(this);
    disposicion->setContentsMargins(16, 16, 16, 12);
    disposicion->addLayout(campos);
    disposicion->addWidget(lblObjecion);
    disposicion->addStretch();
}

QWidget *DialogoRegistro::Campo(int columna)
{
    const qvx::ColumnaDeCatalogo &que = tabla.columnas.at(columna);
    const QString valor = antes.valores.value(columna);
    QWidget *campo = nullptr;
    if (que.clase == ClaseDeColumna::ClaseDeProducto)
        campo = Lista(nombres::ClasesDeProducto(), valor);
    else if (que.clase == ClaseDeColumna::Unidad)
        campo = Lista(EntradasDe("UNIDAD"), valor);
    else
        campo = new QLineEdit(valor);
    if (que.clase == ClaseDeColumna::Numero)
        static_cast<QLineEdit *>(campo)->setAlignment(Qt::AlignRight);
    campo->setObjectName(nombres::Control(que));
    campo->setAccessibleName(que.titulo);
    return campo;
}

void DialogoRegistro::PonerCopia(QFormLayout &campos)
{
    chkCopiar = new QCheckBox("Co&piar el plan de otro tipo de equipo");
    chkCopiar->setObjectName("chkCopiar");
    cboOrigen = Lista(EntradasDe("TIPO_EQUIPO"), {});
    cboOrigen->setObjectName("cboOrigen");
    cboOrigen->setAccessibleName("Tipo de equipo cuyo plan se copia");
    cboOrigen->setEnabled(false);
    connect(chkCopiar, &QCheckBox::toggled, cboOrigen, &QWidget::setEnabled);
    campos.addRow(QString(), chkCopiar);
    campos.addRow("Plan de", cboOrigen);
}

void DialogoRegistro::PonerBotones()
{
    auto *botones = new QDialogButtonBox(this);
    QPushButton *aceptar = botones->addButton("&Guardar", QDialogButtonBox::AcceptRole);
    aceptar->setObjectName("cmdGuardar");
    aceptar->setDefault(true);
    botones->addButton("Cancelar", QDialogButtonBox::RejectRole)->setObjectName("cmdCancelar");
    connect(botones, &QDialogButtonBox::accepted, this, &DialogoRegistro::Aceptar);
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout()->addWidget(botones);
}

RegistroDeCatalogo DialogoRegistro::Escrito() const
{
    RegistroDeCatalogo escrito{qvx::ClaveConFormato(txtClave->text(), situacion.mascara), {}, antes.estado};
    for (const QWidget *control : controles)
        if (const auto *lista = qobject_cast<const QComboBox *>(control))
            escrito.valores.append(lista->currentData().toString());
        else
            escrito.valores.append(static_cast<const QLineEdit *>(control)->text().trimmed());
    const int numero = tabla.Lugar(ClaseDeColumna::Numero);
    if (numero >= 0 && escrito.valores.at(numero).isEmpty())
        escrito.valores[numero] = "0";
    return escrito;
}

QWidget *DialogoRegistro::CampoDe(int columna) const
{
    return columna >= 0 ? controles.at(columna) : txtClave;
}

void DialogoRegistro::Objetar(const qvx::Objecion &objecion)
{
    lblObjecion->setText(objecion.motivo);
    CampoDe(objecion.columna)->setFocus();
    if (auto *campo = qobject_cast<QLineEdit *>(CampoDe(objecion.columna)))
        campo->selectAll();
}

// Numbers are written in one way, so that two that are equal look so.
void DialogoRegistro::Aceptar()
{
    qvx::CambioDeCatalogo cambio{nuevo ? std::nullopt : std::optional(antes), Escrito()};
    if (const auto objecion = qvx::Objetar(tabla, situacion, cambio))
        return Objetar(*objecion);
    if (chkCopiar && chkCopiar->isChecked() && cboOrigen->currentIndex() < 0) {
        lblObjecion->setText("Elija el tipo de equipo cuyo plan se copia, o quite la marca.");
        return cboOrigen->setFocus();
    }
    if (const int numero = tabla.Lugar(ClaseDeColumna::Numero); numero >= 0)
        cambio.despues->valores[numero] = qvx::NumeroATexto(*qvx::TextoANumero(cambio.despues->valores.at(numero)));
    if (cambio.antes == cambio.despues)
        return reject();
    ConTrampa(*this, 1000007, [&] {
        qvx::EscribirCambios(Base(), Sesion::Actual().Firmante(), tabla, {cambio});
        accept();
    });
}
