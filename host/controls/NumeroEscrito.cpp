#include "controls/NumeroEscrito.h"

#include "data/Texto.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QRegularExpression>
#include <QTabWidget>
#include <QToolTip>
#include <algorithm>

namespace qvx
{

namespace
{

constexpr int Separacion = 2; // pixels between a field and its word

void Describir(QLineEdit &campo, const QString &texto)
{
    campo.setAccessibleDescription(texto);
    QAccessibleEvent cambio(&campo, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&cambio);
}

// The word beside a field. A window has one at a time, which goes with its field.
class AvisoCampo : public QLabel
{
public:
    AvisoCampo(QLineEdit &campo_, const QString &texto) : QLabel(texto, campo_.window()), campo(&campo_)
    {
        for (QLabel *otro : window()->findChildren<QLabel *>(Nombre, Qt::FindDirectChildrenOnly))
            static_cast<AvisoCampo *>(otro)->Quitar();
        setObjectName(Nombre);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setPalette(QToolTip::palette());
        setBackgroundRole(QPalette::ToolTipBase);
        setForegroundRole(QPalette::ToolTipText);
        setAutoFillBackground(true);
        setFrameStyle(Box | Plain);
        setMargin(3);
        connect(campo, &QLineEdit::textChanged, this, &AvisoCampo::Quitar);
        connect(campo, &QObject::destroyed, this, &QObject::deleteLater);
        campo->installEventFilter(this);
        Describir(*campo, texto);
        adjustSize();
        Colocar();
        show();
        QAccessibleEvent alerta(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alerta);
    }

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override
    {
        if (evento->type() == QEvent::Hide)
            hide();
        else if (evento->type() == QEvent::Show)
            show();
        else if (evento->type() == QEvent::Move || evento->type() == QEvent::Resize)
            Colocar();
        return QLabel::eventFilter(objeto, evento);
    }

private:
    void Quitar()
    {
        if (campo) {
            campo->removeEventFilter(this);
            Describir(*campo, {});
        }
        campo.clear();
        setObjectName({});
        hide();
        deleteLater();
    }

    // Below the field, above it where the window ends.
    void Colocar()
    {
        const QPoint abajo = campo->mapTo(window(), QPoint(0, campo->height() + Separacion));
        const QPoint arriba = campo->mapTo(window(), QPoint(0, -height() - Separacion));
        const int derecha = std::max(0, window()->width() - width());
        move(std::min(abajo.x(), derecha), abajo.y() + height() <= window()->height() ? abajo.y() : arriba.y());
        raise();
    }

    static constexpr auto Nombre = "avisoCampo";
    QPointer<QLineEdit> campo;
};

} // namespace

QString ReparoDeNumero(const QString &texto, int largo, bool conSigno)
{
    if (texto.trimmed().isEmpty())
        return {};
    if (texto.size() > std::min(largo, LargoEscrito))
        return QString("Escriba a lo más %1 caracteres").arg(std::min(largo, LargoEscrito));
    if (!TextoANumero(texto))
        return "Escriba un número. Use punto para los decimales: 2.5";
    if (!conSigno && texto.contains(QLatin1Char('-')))
        return "El número no puede ser negativo";
    static const QRegularExpression sinValor("^[^1-9]*|[-., ]|[^1-9]*$");
    if (QString(texto).remove(sinValor).size() > CifrasDeNumero)
        return QString("Escriba a lo más %1 cifras").arg(CifrasDeNumero);
    return {};
}

void Rechazar(QLineEdit &campo, const QString &reparo)
{
    for (QWidget *sobre = campo.parentWidget(); sobre; sobre = sobre->parentWidget())
        if (auto *fichas = qobject_cast<QTabWidget *>(sobre))
            for (int pagina = 0; pagina < fichas->count(); ++pagina)
                if (fichas->widget(pagina)->isAncestorOf(&campo))
                    fichas->setCurrentIndex(pagina);
    campo.setFocus();
    new AvisoCampo(campo, reparo);
}

} // namespace qvx
