#include "app/servicios/PeticionDeCambio.h"

#include "controls/NumeroEscrito.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>

namespace
{

QList<QPair<QString, QString>> Entradas(qvx::Conexion &conexion, const QString &catalogo)
{
    QList<QPair<QString, QString>> entradas;
    for (const qvx::EntradaCatalogo &entrada : qvx::LeerEntradas(conexion, catalogo, {}))
        entradas.append({qvx::SinBlancosAlFinal(entrada.clave), entrada.descripcion});
    return entradas;
}

} // namespace

PeticionDeCambio::PeticionDeCambio(QWidget *padre)
    : QWidget(padre), cboQue(new QComboBox), cboComo(new QComboBox), txtNumero(new QLineEdit), cboClave(new QComboBox)
{
    cboQue->setObjectName("cboQue");
    cboQue->setAccessibleName("Qué cambia");
    cboQue->addItems({"Precio", "Días entre servicios", "Lectura entre servicios", "Prioridad", "Tipo de servicio"});
    cboComo->setObjectName("cboComo");
    cboComo->setAccessibleName("Cómo cambia");
    cboComo->addItems({"queda en", "cambia en %"});
    txtNumero->setObjectName("txtNumero");
    txtNumero->setAccessibleName("Número");
    txtNumero->setMaxLength(qvx::LargoEscrito);
    txtNumero->setPlaceholderText("Número");
    cboClave->setObjectName("cboClave");
    cboClave->setAccessibleName("Entrada del catálogo");
    cboClave->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto *fila = new QHBoxLayout(this);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(cboQue);
    fila->addWidget(cboComo);
    fila->addWidget(txtNumero);
    fila->addWidget(cboClave, 1);
    fila->addStretch();
    setFocusProxy(cboQue);
    connect(cboQue, &QComboBox::currentIndexChanged, this, &PeticionDeCambio::AlElegir);
    connect(cboComo, &QComboBox::currentIndexChanged, this, &PeticionDeCambio::AlElegir);
    connect(txtNumero, &QLineEdit::textChanged, this, &PeticionDeCambio::Cambio);
    connect(cboClave, &QComboBox::currentIndexChanged, this, &PeticionDeCambio::Cambio);
}

void PeticionDeCambio::Ofrecer(qvx::Conexion &conexion)
{
    prioridades = Entradas(conexion, "PRIORIDAD_SERVICIO");
    tipos = Entradas(conexion, "TIPO_SERVICIO");
    unidades = Entradas(conexion, "UNIDAD");
    AlElegir();
}

PeticionDeCambio::Que PeticionDeCambio::Elegido() const
{
    return static_cast<Que>(cboQue->currentIndex());
}

void PeticionDeCambio::AlElegir()
{
    const bool unidad = Elegido() == Que::Lectura && cboComo->currentIndex() == 0;
    {
        const QSignalBlocker callada(cboClave);
        cboClave->clear();
        if (unidad)
            cboClave->addItem("(con la unidad que tiene)", "");
        for (const auto &[clave, descripcion] :
             Elegido() == Que::Prioridad ? prioridades : (Elegido() == Que::TipoServicio ? tipos : unidades))
            cboClave->addItem(clave + " " + descripcion, clave);
        cboClave->setCurrentIndex(unidad ? 0 : -1);
    }
    cboClave->setVisible(DeCatalogo() || unidad);
    cboComo->setVisible(!DeCatalogo());
    txtNumero->setVisible(!DeCatalogo());
    Q_EMIT Cambio();
}

QString PeticionDeCambio::Falta() const
{
    if (DeCatalogo())
        return cboClave->currentIndex() < 0 ? QString("Elija una entrada del catálogo.") : QString();
    if (txtNumero->text().trimmed().isEmpty())
        return cboComo->currentIndex() == 0 ? "Escriba el número que quedará." : "Escriba cuánto por ciento cambia.";
    return qvx::ReparoDeNumero(txtNumero->text(), txtNumero->maxLength(), cboComo->currentIndex() == 1);
}

QString PeticionDeCambio::NombreElegido() const
{
    const QString clave = cboClave->currentData().toString();
    return cboClave->currentText().mid(clave.size() + 1);
}

std::optional<propuestas::Peticion> PeticionDeCambio::Pedido() const
{
    if (!Falta().isEmpty())
        return {};
    propuestas::Peticion pedido;
    pedido.que = Elegido();
    pedido.porCiento = cboComo->currentIndex() == 1;
    if (DeCatalogo())
        pedido.clave = cboClave->currentData().toString();
    else
        pedido.numero = qvx::TextoANumero(txtNumero->text().trimmed()).value_or(0);
    if (Elegido() == Que::Lectura && !pedido.porCiento)
        pedido.clave = cboClave->currentData().toString();
    return pedido;
}
