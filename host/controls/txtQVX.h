#pragma once

#include "controls/EntradaPendiente.h"
#include "system/Exporta.h"

#include <QFont>
#include <QWidget>
#include <optional>

class QKeyEvent;
class QLineEdit;
class QToolButton;

namespace QVX_EXPORTA qvx
{
class ErrorEjecucion;
} // namespace qvx

namespace QVX_EXPORTA textoQVX
{

// The host's text box: plain, numeric, or a lookup over a catalogue, which carries a search button (also F3) and fills
// its description box ("" when the key is unknown or retired). A box with a mask shapes its key when it is left.
class txtQVX : public QWidget, public qvx::EntradaPendiente
{
    Q_OBJECT
    Q_PROPERTY(QString Catalogo READ Catalogo WRITE setCatalogo)
    Q_PROPERTY(QString CajaDescripcion READ CajaDescripcion WRITE setCajaDescripcion)
    Q_PROPERTY(bool Numerico READ Numerico WRITE setNumerico)
    Q_PROPERTY(QString FormatoNumero READ FormatoNumero WRITE setFormatoNumero)
    Q_PROPERTY(bool SoloLectura READ SoloLectura WRITE setSoloLectura)
    Q_PROPERTY(QString Excluidos WRITE setExcluidos)
    Q_PROPERTY(int MaxLength READ MaxLength WRITE setMaxLength)
    Q_PROPERTY(QString NombreAccesible READ NombreAccesible WRITE setNombreAccesible)

public:
    explicit txtQVX(QWidget *padre = nullptr);

    QString Text() const;
    // Puts a text; a lookup box then fills its description at once. Raises Change when the text becomes another one.
    void setText(const QString &texto);

    // The number that the box holds, 0 when it is empty or holds none.
    double Numero() const;
    // Shows the number in FormatoNumero ("" : plain text form), and holds it unrounded.
    void setNumero(double nuevo);
    // The number as a statement takes it, e.g. "1234.5"; "0" when the box is empty.
    QString NumeroSQL() const;

    // Puts a key as if the person had typed it and left the box: text, description, Confirmado, Resuelto.
    void Elegir(const QString &clave);

    QString Formato() const { return formato; }
    void setFormato(const QString &mascara) { formato = mascara; }
    QString Catalogo() const { return catalogo; }
    void setCatalogo(const QString &codigo);
    QString CajaDescripcion() const { return cajaDescripcion; }
    // Name of the text box of the same form that shows the description.
    void setCajaDescripcion(const QString &nombre) { cajaDescripcion = nombre; }
    bool Numerico() const { return numerico; }
    // A numeric box is not left with a text that is no number; a sign will do only where code put one.
    void setNumerico(bool valor);
    QString FormatoNumero() const { return formatoNumero; }
    void setFormatoNumero(const QString &nuevo) { formatoNumero = nuevo; }
    bool SoloLectura() const;
    // Shown, selectable and copied, but not typed into; it is no stop of the Tab key.
    void setSoloLectura(bool valor);
    // Characters that the box does not take.
    void setExcluidos(const QString &letras);
    // The characters that a person can type; a longer text that code puts is shown whole.
    int MaxLength() const;
    void setMaxLength(int nuevo);
    QString NombreAccesible() const;
    void setNombreAccesible(const QString &nombre);
    // Whether it can take the focus now: visible, enabled, not read-only.
    bool Lista() const;

    // Shapes and looks up what was typed since the box was last confirmed; nothing pending: nothing happens.
    bool ConfirmarEntrada() override;
    // Opens the catalogue's search dialog; a choice counts as Elegir.
    void Buscar();

Q_SIGNALS:
    void Change();     // the text is another one
    void Confirmado(); // the lookup has filled (or emptied) the description, or the box was left after typing
    void Resuelto();   // after the handlers of Confirmado

protected:
    void changeEvent(QEvent *evento) override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    QString Reparo() const;
    void AlEscribir();
    bool AlPulsar(const QKeyEvent &tecla);
    bool OfreceBusqueda() const;
    QWidget *Raiz() const;
    void Poner(const QString &texto);
    void PonerDescripcion(const QString &descripcion);
    void LlenarDescripcion();
    void Avisar(const qvx::ErrorEjecucion &error);
    void AjustarBoton();
    void AjustarPaleta();

    QLineEdit *linea;
    QToolButton *boton;
    QString formato;
    QString catalogo;
    QString cajaDescripcion;
    QString formatoNumero;
    std::optional<double> numero; // put in code; a typed one is in the text alone
    int largo;
    bool numerico = false;
    bool conSigno = false; // a negative number that was put in code can be corrected
    bool pendiente = false;
};

} // namespace textoQVX
