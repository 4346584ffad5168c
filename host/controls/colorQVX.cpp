#include "controls/colorQVX.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>

namespace coloresQVX
{

namespace
{

struct Color {
    const char *nombre;
    const char *claro;
    const char *oscuro;
};

// The colours on a light and on a dark desktop, by the name that the sheet below calls them.
constexpr Color Colores[] = {
    {"@fondo", "#f3f5f8", "#1f252c"},       {"@superficie", "#ffffff", "#272e37"}, {"@alterna", "#f4f8fc", "#2c343e"},
    {"@borde", "#b9c3ce", "#4f5c6a"},       {"@texto", "#1b2733", "#e6ebf1"},      {"@suave", "#566474", "#a3b0be"},
    {"@fijo", "#e8ecf1", "#323b46"},        {"@apagado", "#7a8694", "#7c8896"},    {"@acento", "#1f6fb2", "#2f7cc4"},
    {"@sobreAcento", "#ffffff", "#ffffff"}, {"@roce", "#e2eefa", "#34465a"},       {"@pulsado", "#c9e0f5", "#3e5872"},
    {"@reposo", "#cfdfee", "#3a5068"},
};

// A border that grows with the focus takes its pixel from the padding, so that nothing moves.
constexpr char Hoja[] = R"(
QDialog, QMainWindow { background-color: @fondo; }
QMenuBar, QStatusBar { background-color: @fondo; color: @texto; }
QMenuBar::item { background-color: transparent; padding: 4px 8px; border-radius: 4px; }
QMenuBar::item:selected { background-color: @roce; }
QMenuBar::item:pressed { background-color: @pulsado; }
QStatusBar { border-top: 1px solid @borde; }
QStatusBar::item { border: none; }
QStatusBar QLabel { padding: 1px 6px; }
QScrollArea, QScrollArea > QWidget > QWidget { background-color: transparent; }
QMessageBox { messagebox-critical-icon: url(:/controls/mensaje_critico.svg);
              messagebox-question-icon: url(:/controls/mensaje_pregunta.svg);
              messagebox-warning-icon: url(:/controls/mensaje_exclamacion.svg);
              messagebox-information-icon: url(:/controls/mensaje_informacion.svg); }
QLabel#qt_msgbox_informativelabel { color: @suave; }
QLabel, QCheckBox, QRadioButton { color: @texto; }
QLabel:disabled, QCheckBox:disabled, QRadioButton:disabled { color: @suave; }

QLineEdit { background-color: @superficie; color: @texto; border: 1px solid @borde; border-radius: 4px;
            padding: 3px 6px; selection-background-color: @acento; selection-color: @sobreAcento; }
QLineEdit:focus { border: 2px solid @acento; padding: 2px 5px; }
QLineEdit:read-only, QLineEdit:disabled { background-color: @fijo; color: @texto; }
QAbstractItemView QLineEdit { border-radius: 0; padding: 0 2px; }
QAbstractItemView QLineEdit:focus { border: 1px solid @acento; padding: 0 2px; }

QRadioButton { border: 1px solid transparent; border-radius: 4px; padding: 3px; spacing: 6px; }
QRadioButton:focus { border-color: @acento; }
QRadioButton::indicator { width: 14px; height: 14px; border: 1px solid @suave; border-radius: 8px;
  background-color: @superficie; }
QRadioButton::indicator:checked { width: 6px; height: 6px; border: 5px solid @acento; border-radius: 8px; }
QCheckBox { border: 1px solid transparent; border-radius: 4px; padding: 3px; spacing: 6px; }
QCheckBox:focus { border-color: @acento; }
QCheckBox::indicator { width: 14px; height: 14px; border: 1px solid @suave; border-radius: 3px;
                       background-color: @superficie; }
QCheckBox::indicator:checked { border-color: @acento; background-color: @acento; image: url(:/controls/marca.svg); }
QCheckBox::indicator:disabled { border-color: @borde; background-color: @fijo; }
QCheckBox::indicator:checked:disabled { border-color: @apagado; background-color: @apagado; }

QGroupBox { border: 1px solid @borde; border-radius: 6px; background-color: @superficie; color: @texto;
            font-weight: bold; margin-top: 1.4em; padding: 2px; }
QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left; left: 2px; padding: 0 2px; }

QToolBar { background-color: @superficie; border: none; border-bottom: 1px solid @borde; padding: 3px 8px;
           spacing: 2px; }
QToolBar::separator { background-color: @borde; width: 1px; margin: 6px 6px; }
QToolButton { background-color: transparent; color: @texto; border: 1px solid transparent; border-radius: 4px;
              padding: 4px 7px; }
QToolButton#qt_toolbar_ext_button { padding: 0; }
textoQVX--txtQVX QToolButton { padding: 2px 4px; }
QFileDialog QToolButton { padding: 0; }
QToolButton:disabled { color: @apagado; }
QToolButton:hover { background-color: @roce; }
QToolButton:pressed { background-color: @pulsado; }
QToolButton:focus { border-color: @acento; }

QPushButton { background-color: @superficie; color: @texto; border: 1px solid @borde; border-radius: 4px;
              padding: 5px 16px; }
QDialogButtonBox QPushButton { min-width: 4.5em; } /* elsewhere a row without room would cut the words down to it */
QPushButton:default { border-color: @acento; }
QPushButton:hover { background-color: @roce; }
QPushButton:pressed { background-color: @pulsado; }
QPushButton:focus { border: 2px solid @acento; padding: 4px 15px; }
QPushButton:disabled { color: @apagado; background-color: @fijo; }

QAbstractItemView { background-color: @superficie; alternate-background-color: @alterna; color: @texto;
                    border: 1px solid @borde; border-radius: 4px; padding: 1px; outline: none; gridline-color: @borde;
                    selection-background-color: @acento; selection-color: @sobreAcento; }
QAbstractItemView:focus { border: 2px solid @acento; padding: 0; }
QAbstractItemView:disabled { background-color: @fijo; color: @texto; }
QTreeView::item { padding: 3px 4px; }
QTreeView::branch { background-color: transparent; }
QTreeView::branch:selected { background-color: @acento; }
QTreeView::branch:has-children:closed { image: url(:/controls/rama_cerrada.svg); }
QTreeView::branch:has-children:open { image: url(:/controls/rama_abierta.svg); }
QTreeView::branch:has-children:closed:selected { image: url(:/controls/rama_cerrada_elegida.svg); }
QTreeView::branch:has-children:open:selected { image: url(:/controls/rama_abierta_elegida.svg); }
QHeaderView { background-color: @fijo; border: none; border-radius: 0; padding: 0; font-weight: bold; }
QHeaderView::section { background-color: @fijo; color: @texto; border: none; border-right: 1px solid @borde;
                       border-bottom: 1px solid @borde; padding: 5px 3px; }
QTableCornerButton::section { background-color: @fijo; border: none; border-right: 1px solid @borde;
                              border-bottom: 1px solid @borde; }

QTabWidget::pane { border: 1px solid @borde; border-radius: 4px; top: -1px; background-color: @fondo; }
QTabBar::tab { background-color: @fijo; color: @suave; border: 1px solid @borde; padding: 6px 16px; margin-right: 2px;
               border-top-left-radius: 4px; border-top-right-radius: 4px; }
QTabBar::tab:hover { background-color: @roce; }
QTabBar::tab:selected { background-color: @fondo; color: @texto; border-bottom-color: @fondo;
                        border-top: 3px solid @acento; padding-top: 4px; }
QTabBar::tab:selected:focus { background-color: @pulsado; }

QTextEdit { background-color: @superficie; color: @texto; border: 1px solid @borde; border-radius: 4px;
            selection-background-color: @acento; selection-color: @sobreAcento; }

QScrollBar, QAbstractScrollArea::corner { background-color: @fondo; border: none; }
QScrollBar:vertical { width: 13px; }
QScrollBar:horizontal { height: 13px; }
QScrollBar::handle { background-color: @borde; border-radius: 4px; margin: 2px; }
QScrollBar::handle:vertical { min-height: 28px; }
QScrollBar::handle:horizontal { min-width: 28px; }
QScrollBar::handle:hover { background-color: @apagado; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background-color: transparent; }

QMenu { background-color: @superficie; color: @texto; border: 1px solid @borde; }
QMenu::item { padding: 5px 20px; }
QMenu::item:selected { background-color: @roce; }
QMenu::item:disabled { color: @apagado; }
QToolTip { background-color: @superficie; color: @texto; border: 1px solid @borde; padding: 3px; }
)";

bool Oscuro()
{
    const QPalette escritorio = QGuiApplication::palette();
    return escritorio.color(QPalette::Window).lightness() < escritorio.color(QPalette::WindowText).lightness();
}

QString Valor(const Color &color)
{
    return QString::fromLatin1(Oscuro() ? color.oscuro : color.claro);
}

QColor Tono(const char *nombre)
{
    for (const Color &color : Colores)
        if (qstrcmp(color.nombre, nombre) == 0)
            return QColor(Valor(color));
    return {};
}

QString HojaConColores()
{
    QString hoja = Hoja;
    for (const Color &color : Colores)
        hoja.replace(color.nombre, Valor(color));
    return hoja;
}

QPalette Paleta()
{
    QPalette paleta(Tono("@fondo"), Tono("@fondo"));
    const QColor texto = Tono("@texto");
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        paleta.setColor(papel, texto);
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        paleta.setColor(QPalette::Disabled, papel, Tono("@suave"));
    paleta.setColor(QPalette::Base, Tono("@superficie"));
    paleta.setColor(QPalette::AlternateBase, Tono("@alterna"));
    paleta.setColor(QPalette::PlaceholderText, Tono("@suave"));
    paleta.setColor(QPalette::Highlight, Tono("@acento"));
    paleta.setColor(QPalette::HighlightedText, Tono("@sobreAcento"));
    // What is selected stays visible, and legible, while another control has the focus.
    paleta.setColor(QPalette::Inactive, QPalette::Highlight, Tono("@reposo"));
    paleta.setColor(QPalette::Inactive, QPalette::HighlightedText, texto);
    return paleta;
}

// Keeps a window dressed: when the desktop turns dark or light, so does the window.
class Vestido : public QObject
{
public:
    explicit Vestido(QWidget &ventana_) : QObject(&ventana_), ventana(ventana_)
    {
        Poner();
        ventana.installEventFilter(this);
        ventana.window()->installEventFilter(this); // windows alone hear of the desktop
    }

    static bool Lleva(const QWidget &ventana)
    {
        const QObjectList &hijos = ventana.children();
        return std::any_of(hijos.begin(), hijos.end(),
                           [](const QObject *hijo) { return dynamic_cast<const Vestido *>(hijo) != nullptr; });
    }

    // The widget that hands its sheet down to this one; a dialog's owner does, too.
    static bool Heredado(const QWidget &control)
    {
        for (const QWidget *duena = control.parentWidget(); duena; duena = duena->parentWidget())
            if (Lleva(*duena))
                return true;
        return false;
    }

    bool eventFilter(QObject *objeto, QEvent *evento) override
    {
        if (evento->type() == QEvent::ApplicationPaletteChange)
            Poner();
        else if (evento->type() == QEvent::ParentChange && objeto == &ventana)
            AlMudarse();
        return QObject::eventFilter(objeto, evento);
    }

private:
    void Poner()
    {
        ventana.setPalette(Paleta());
        ventana.setAutoFillBackground(true);
        if (!Heredado(ventana))
            ventana.setStyleSheet(HojaConColores());
    }

    // Into a window that is dressed itself, the form takes all from there.
    void AlMudarse()
    {
        ventana.window()->installEventFilter(this);
        if (ventana.isWindow() || !Heredado(ventana))
            return;
        ventana.setStyleSheet({});
        ventana.setPalette({});
        ventana.setAutoFillBackground(false);
        deleteLater();
    }

    QWidget &ventana;
};

} // namespace

// When the form is about to be dressed, before its controls are: a sheet that it had sooner would be worked out for
// each of them again when the form is put into its window.
void colorQVX::Aplicar()
{
    if (parentWidget()->testAttribute(Qt::WA_WState_Polished))
        AplicarA(*parentWidget());
    else
        parentWidget()->installEventFilter(this);
}

bool colorQVX::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::Polish) {
        objeto->removeEventFilter(this);
        AplicarA(*parentWidget());
    }
    return QWidget::eventFilter(objeto, evento);
}

// On the window itself and not on the application, which is the host's and may have another look. A form that stands
// in a dressed window has all from there.
void colorQVX::AplicarA(QWidget &ventana)
{
    if (!Vestido::Lleva(ventana) && (ventana.isWindow() || !Vestido::Heredado(ventana)))
        new Vestido(ventana);
}

} // namespace coloresQVX
