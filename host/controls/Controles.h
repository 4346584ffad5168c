#pragma once

#include "system/Exporta.h"

#include <QToolBar>
#include <array>

namespace QVX_EXPORTA toolbarQVX
{

// The command of an extra button: its caption, and the file of its icon.
struct Extra {
    QString titulo = {};
    QString icono = {};

    bool operator==(const Extra &) const = default;
};

// Which commands are on. An extra button is offered while it has a caption: an import must be at hand before anything
// is selected.
struct Estado {
    bool nuevo = false;
    bool editar = false;
    bool eliminar = false;
    bool reactivar = false;
    bool info = false; // a record is selected
    bool aceptar = false;
    std::array<Extra, 3> extras = {};
};

// The host's toolbar. A screen's set of commands: new, edit, delete, reactivate, information, three extra buttons with
// captions, close. A dialog's set: accept (F4), cancel (Esc).
class Controles : public QToolBar
{
    Q_OBJECT

public:
    enum Juego { Pantalla, Dialogo };

    explicit Controles(QWidget *padre = nullptr);

    void setJuegoComandos(Juego nuevoJuego);

    // What the bar offers from now on, as a whole.
    void Ofrecer(const Estado &nuevoEstado);
    const Estado &Ofrecido() const { return estado; }

Q_SIGNALS:
    void Nuevo();
    void Editar();
    void Eliminar();
    void Reactivar();
    void Info();
    void B1Click();
    void B2Click();
    void B3Click();
    void Aceptar();
    void Cancelar();
    void Cerrar();

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    QAction *Agregar(const QString &nombre, const QString &texto, const QString &icono, const QKeySequence &atajo,
                     void (Controles::*senal)());
    void Ejecutar(const QAction &orden, void (Controles::*senal)());

    Juego juego = Pantalla;
    Estado estado;
    QAction *nuevo, *editar, *eliminar, *reactivar, *info, *aceptar, *cancelar, *cerrar;
    QAction *separador, *separadorExtras;
    std::array<QAction *, 3> extras = {};
};

} // namespace toolbarQVX
