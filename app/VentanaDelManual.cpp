#include "app/VentanaDelManual.h"

#include "controls/Formulario.h"
#include "controls/colorQVX.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QHBoxLayout>
#include <QImage>
#include <QListWidget>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTextTable>

// The resources of a static library are only there when they are named.
static void TomarManual()
{
    Q_INIT_RESOURCE(manual);
}

namespace
{

constexpr QSize TamanoDelManual(1060, 700);
constexpr int AnchoDelIndice = 270;
constexpr int Orillas = 70; // beside the page: margins and the bar
constexpr int AireDeCelda = 4;
constexpr int PapelBloque = Qt::UserRole;
constexpr int NivelesDelIndice = 3;

// Shows pictures of the manual itself, no wider than its page, and nothing else.
class Lectura : public QTextBrowser
{
public:
    explicit Lectura(int anchoDeImagen_) : anchoDeImagen(anchoDeImagen_) {}

    QVariant loadResource(int clase, const QUrl &nombre) override
    {
        if (clase != QTextDocument::ImageResource || !nombre.scheme().isEmpty())
            return {};
        QImage imagen(":/manual/img/" + nombre.fileName());
        if (imagen.width() > anchoDeImagen)
            imagen = imagen.scaledToWidth(anchoDeImagen, Qt::SmoothTransformation);
        return imagen;
    }

private:
    int anchoDeImagen;
};

QString TextoDelManual()
{
    TomarManual();
    QFile archivo(":/manual/manual.md");
    return archivo.open(QIODevice::ReadOnly) ? QString::fromUtf8(archivo.readAll()) : QString();
}

// As links call a heading: "agregar-una-parte".
QString Ancla(const QString &titulo)
{
    QString ancla;
    for (const QChar letra : titulo.toLower())
        if (letra.isLetterOrNumber() || letra == QLatin1Char('-') || letra == QLatin1Char('_'))
            ancla.append(letra);
        else if (letra.isSpace())
            ancla.append(QLatin1Char('-'));
    return ancla;
}

} // namespace

VentanaDelManual::VentanaDelManual(QWidget *duena)
    : QDialog(duena)
    , lstCapitulos(new QListWidget)
    , txtManual(new Lectura(qvx::Formulario::Cabida(*this, TamanoDelManual).width() - AnchoDelIndice - Orillas))
{
    setObjectName("VentanaDelManual");
    setWindowTitle("Manual de Quorvex");
    coloresQVX::colorQVX::AplicarA(*this);
    lstCapitulos->setObjectName("lstCapitulos");
    lstCapitulos->setAccessibleName("Capítulos del manual");
    lstCapitulos->setFixedWidth(AnchoDelIndice);
    lstCapitulos->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    txtManual->setObjectName("txtManual");
    txtManual->setAccessibleName("Manual");
    txtManual->setOpenLinks(false);
    txtManual->setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
    txtManual->ensurePolished(); // headings take their size from the letter
    txtManual->setMarkdown(TextoDelManual());
    PonerTablas();
    PonerIndice();
    connect(lstCapitulos, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem *elegido) {
        if (elegido)
            IrA(elegido->data(PapelBloque).toInt());
    });
    connect(txtManual, &QTextBrowser::anchorClicked, this, &VentanaDelManual::Seguir);
    auto *disposicion = new QHBoxLayout(this);
    disposicion->addWidget(lstCapitulos);
    disposicion->addWidget(txtManual, 1);
    resize(qvx::Formulario::Cabida(*this, TamanoDelManual));
}

// As thin as the rest of the program's.
void VentanaDelManual::PonerTablas()
{
    for (QTextFrame *marco : txtManual->document()->rootFrame()->childFrames()) {
        auto *tabla = qobject_cast<QTextTable *>(marco);
        if (!tabla)
            continue;
        QTextTableFormat formato = tabla->format();
        formato.setCellPadding(AireDeCelda);
        formato.setBorderCollapse(true);
        formato.setBorderBrush(palette().mid());
        tabla->setFormat(formato);
    }
}

void VentanaDelManual::PonerIndice()
{
    for (QTextBlock bloque = txtManual->document()->begin(); bloque.isValid(); bloque = bloque.next()) {
        const int nivel = bloque.blockFormat().headingLevel();
        if (nivel < 1 || nivel > NivelesDelIndice)
            continue;
        auto *capitulo = new QListWidgetItem(QString(3 * (nivel - 1), QLatin1Char(' ')) + bloque.text(), lstCapitulos);
        capitulo->setData(PapelBloque, bloque.blockNumber());
    }
}

void VentanaDelManual::Abrir(const QString &capitulo)
{
    show();
    raise();
    activateWindow();
    int lugar = 0;
    for (int fila = lstCapitulos->count() - 1; fila > 0; --fila)
        if (Ancla(lstCapitulos->item(fila)->text().trimmed()) == Ancla(capitulo))
            lugar = fila;
    lstCapitulos->setCurrentRow(-1); // the same one again scrolls too
    lstCapitulos->setCurrentRow(lugar);
    txtManual->setFocus();
}

// The heading at the top, as far as there is text enough below it.
void VentanaDelManual::IrA(int numero)
{
    const QTextBlock bloque = txtManual->document()->findBlockByNumber(numero);
    const qreal alto = txtManual->document()->documentLayout()->blockBoundingRect(bloque).top();
    txtManual->setTextCursor(QTextCursor(bloque));
    txtManual->verticalScrollBar()->setValue(static_cast<int>(alto));
}

// To another chapter. What leads elsewhere is not followed, whatever the text says.
void VentanaDelManual::Seguir(const QUrl &enlace)
{
    if (enlace.scheme().isEmpty() && enlace.path().isEmpty() && enlace.hasFragment())
        Abrir(enlace.fragment());
}
