#include "controls/txtQVX.h"

#include "controls/Formulario.h"
#include "controls/NumeroEscrito.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"

#include <QApplication>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QRegularExpressionValidator>
#include <QToolButton>
#include <algorithm>

namespace textoQVX
{

txtQVX::txtQVX(QWidget *padre)
    : QWidget(padre), linea(new QLineEdit(this)), boton(new QToolButton(this)), largo(linea->maxLength())
{
    boton->setIcon(QIcon(":/controls/buscar.svg"));
    boton->setToolTip("Buscar (F3)");
    boton->setAccessibleName("Buscar");
    boton->setFocusPolicy(Qt::NoFocus);
    boton->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored); // boxes with and without it are equally high

    auto *fila = new QHBoxLayout(this);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(2);
    fila->addWidget(linea);
    fila->addWidget(boton);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    setFocusProxy(linea);
    setFocusPolicy(Qt::StrongFocus);
    linea->installEventFilter(this);
    connect(linea, &QLineEdit::textEdited, this, &txtQVX::AlEscribir);
    connect(linea, &QLineEdit::inputRejected, this, &QApplication::beep);
    connect(boton, &QToolButton::clicked, this, &txtQVX::Buscar);
    AjustarBoton();
}

QString txtQVX::Text() const
{
    return linea->text();
}

void txtQVX::setText(const QString &texto)
{
    const QString anterior = Text();
    const QPointer<txtQVX> viva = this;
    Poner(texto);
    LlenarDescripcion();
    if (viva && Text() != anterior)
        Q_EMIT Change();
}

double txtQVX::Numero() const
{
    return numero ? *numero : qvx::TextoANumero(Text()).value_or(0);
}

void txtQVX::setNumero(double nuevo)
{
    const QString anterior = Text();
    Poner(formatoNumero.isEmpty() ? qvx::NumeroATexto(nuevo) : qvx::NumeroConFormato(nuevo, formatoNumero));
    numero = nuevo;
    if (Text() != anterior)
        Q_EMIT Change();
}

QString txtQVX::NumeroSQL() const
{
    return qvx::NumeroATexto(Numero());
}

void txtQVX::Poner(const QString &texto)
{
    pendiente = false;
    numero.reset();
    conSigno = texto.startsWith(QLatin1Char('-'));
    const int cabe = std::max(numerico ? qvx::LargoEscrito : largo, static_cast<int>(texto.size()));
    if (cabe != linea->maxLength())
        linea->setMaxLength(cabe); // this moves the cursor
    if (texto != Text())
        linea->setText(texto);
    if (!linea->hasFocus())
        linea->home(false); // a text that is too long shows its beginning
}

void txtQVX::Elegir(const QString &clave)
{
    const QPointer<txtQVX> viva = this;
    setText(formato.isEmpty() ? clave : qvx::ClaveConFormato(clave, formato));
    if (viva)
        Q_EMIT Confirmado();
    if (viva)
        Q_EMIT Resuelto();
}

// What is wrong with the text that was typed, "" when nothing is.
QString txtQVX::Reparo() const
{
    return pendiente && numerico ? qvx::ReparoDeNumero(Text(), largo, conSigno) : QString();
}

bool txtQVX::ConfirmarEntrada()
{
    if (!pendiente)
        return true;
    if (const QString reparo = Reparo(); !reparo.isEmpty()) {
        qvx::Rechazar(*linea, reparo);
        return false;
    }
    Elegir(numerico ? Text().trimmed() : Text());
    return true;
}

void txtQVX::AlEscribir()
{
    if (!catalogo.isEmpty() && Text() != Text().toUpper()) {
        const int posicion = linea->cursorPosition();
        linea->setText(Text().toUpper());
        linea->setCursorPosition(posicion);
    }
    numero.reset();
    pendiente = true;
    PonerDescripcion({});
    Q_EMIT Change();
}

void txtQVX::Buscar()
{
    if (!OfreceBusqueda())
        return;
    try {
        const QPointer<txtQVX> viva = this;
        const QString clave = qvx::Sesion::Actual().Interaccion().BuscarEnCatalogo(catalogo, 0, {}, font(), this);
        if (viva && !clave.isEmpty())
            Elegir(clave);
    } catch (const qvx::ErrorEjecucion &error) {
        Avisar(error);
    }
}

// Without a session there is neither a catalogue nor anyone to tell.
void txtQVX::Avisar(const qvx::ErrorEjecucion &error)
{
    if (qvx::Sesion::Abierta())
        qvx::Sistema().Mensaje(error.Descripcion(), qvx::mensaje::Critico, "Quorvex", window()->winId(), "QVX",
                               "ERR-ID:1000001");
}

void txtQVX::LlenarDescripcion()
{
    if (catalogo.isEmpty())
        return;
    try {
        PonerDescripcion(Text().isEmpty()
                             ? QString()
                             : qvx::DescripcionDeCatalogo(qvx::Sesion::Actual().Conexion(), catalogo, Text()));
    } catch (const qvx::ErrorEjecucion &error) {
        PonerDescripcion({});
        Avisar(error);
    }
}

void txtQVX::PonerDescripcion(const QString &descripcion)
{
    if (cajaDescripcion.isEmpty())
        return;
    if (auto *caja = Raiz()->findChild<txtQVX *>(cajaDescripcion))
        caja->setText(descripcion);
}

// The form that the box stands on; two forms of one window may name their boxes alike.
QWidget *txtQVX::Raiz() const
{
    for (QWidget *control = parentWidget(); control; control = control->parentWidget())
        if (qobject_cast<qvx::Formulario *>(control))
            return control;
    return window();
}

bool txtQVX::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == linea && evento->type() == QEvent::KeyPress)
        return AlPulsar(*static_cast<QKeyEvent *>(evento));
    // A form that is being closed has no use for what was typed last.
    if (objeto == linea && evento->type() == QEvent::FocusOut && Raiz()->isVisible()
        && EsSalida(static_cast<QFocusEvent *>(evento)->reason()))
        AlSalir(*this, Reparo().isEmpty());
    return QWidget::eventFilter(objeto, evento);
}

bool txtQVX::AlPulsar(const QKeyEvent &tecla)
{
    switch (tecla.key()) {
    case Qt::Key_F3:
        if (!OfreceBusqueda())
            return false;
        Buscar();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        const QPointer<txtQVX> viva = this;
        if (ConfirmarEntrada() && viva && window()->focusWidget() == linea) // no handler has put the focus elsewhere
            focusNextPrevChild(true);
        return true;
    }
    default:
        return false;
    }
}

void txtQVX::changeEvent(QEvent *evento)
{
    QWidget::changeEvent(evento);
    if (evento->type() == QEvent::EnabledChange)
        AjustarBoton();
    if (evento->type() == QEvent::PaletteChange)
        AjustarPaleta();
}

bool txtQVX::OfreceBusqueda() const
{
    return !catalogo.isEmpty() && isEnabled() && !SoloLectura();
}

void txtQVX::AjustarBoton()
{
    boton->setVisible(OfreceBusqueda());
}

void txtQVX::AjustarPaleta()
{
    QPalette paleta; // an empty one: that of the form
    if (SoloLectura())
        paleta.setColor(QPalette::Base, palette().color(QPalette::Window));
    linea->setPalette(paleta);
}

void txtQVX::setCatalogo(const QString &codigo)
{
    catalogo = codigo;
    AjustarBoton();
}

void txtQVX::setExcluidos(const QString &letras)
{
    const QRegularExpression admitidos("[^" + QRegularExpression::escape(letras) + "]*");
    linea->setValidator(new QRegularExpressionValidator(admitidos, linea));
}

void txtQVX::setNumerico(bool valor)
{
    numerico = valor;
    linea->setAlignment((valor ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    Poner(Text());
}

bool txtQVX::SoloLectura() const
{
    return linea->isReadOnly();
}

void txtQVX::setSoloLectura(bool valor)
{
    linea->setReadOnly(valor);
    setFocusPolicy(valor ? Qt::ClickFocus : Qt::StrongFocus);
    AjustarPaleta();
    AjustarBoton();
}

int txtQVX::MaxLength() const
{
    return largo;
}

void txtQVX::setMaxLength(int nuevo)
{
    largo = nuevo;
    Poner(Text());
}

QString txtQVX::NombreAccesible() const
{
    return linea->accessibleName();
}

void txtQVX::setNombreAccesible(const QString &nombre)
{
    linea->setAccessibleName(nombre);
}

bool txtQVX::Lista() const
{
    return isVisible() && isEnabled() && !SoloLectura();
}

} // namespace textoQVX
