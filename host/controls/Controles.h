#pragma once

#include <QToolBar>

namespace toolbarQVX
{

// The host's toolbar. A screen's set of commands: new, edit, delete, reactivate, information, three extra buttons with
// captions, close. A dialog's set: accept, cancel.
class Controles : public QToolBar
{
    Q_OBJECT
    Q_PROPERTY(Juego JuegoComandos READ JuegoComandos WRITE setJuegoComandos)
    Q_PROPERTY(bool NuevoDisponible READ NuevoDisponible WRITE setNuevoDisponible)
    Q_PROPERTY(bool EditarDisponible READ EditarDisponible WRITE setEditarDisponible)
    Q_PROPERTY(bool EliminarDisponible READ EliminarDisponible WRITE setEliminarDisponible)
    Q_PROPERTY(bool ReactivarDisponible READ ReactivarDisponible WRITE setReactivarDisponible)
    Q_PROPERTY(bool ExtrasDisponibles READ ExtrasDisponibles WRITE setExtrasDisponibles)
    Q_PROPERTY(bool AceptarDisponible READ AceptarDisponible WRITE setAceptarDisponible)
    Q_PROPERTY(QString Titulo1 READ Titulo1 WRITE setTitulo1)
    Q_PROPERTY(QString Titulo2 READ Titulo2 WRITE setTitulo2)
    Q_PROPERTY(QString Titulo3 READ Titulo3 WRITE setTitulo3)

public:
    enum Juego { Pantalla, Dialogo };
    Q_ENUM(Juego)

    explicit Controles(QWidget *padre = nullptr);

    Juego JuegoComandos() const { return juego; }
    void setJuegoComandos(Juego nuevoJuego);

    bool NuevoDisponible() const;
    void setNuevoDisponible(bool valor);
    bool EditarDisponible() const;
    void setEditarDisponible(bool valor);
    bool EliminarDisponible() const;
    void setEliminarDisponible(bool valor);
    bool ReactivarDisponible() const;
    void setReactivarDisponible(bool valor);
    // A record is selected for the extra commands: governs the information command. An extra button itself is offered
    // while it has a caption: "Importar XML" must be at hand before anything is selected.
    bool ExtrasDisponibles() const;
    void setExtrasDisponibles(bool valor);
    bool AceptarDisponible() const;
    void setAceptarDisponible(bool valor);

    // Captions of the extra buttons; an empty one hides its button. The icon follows the caption.
    QString Titulo1() const;
    void setTitulo1(const QString &titulo);
    QString Titulo2() const;
    void setTitulo2(const QString &titulo);
    QString Titulo3() const;
    void setTitulo3(const QString &titulo);

    // Commands by key (F4, Esc): the same as pressing the button, nothing while the command is off.
    void PulsarAceptar();
    void PulsarCancelar();

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
    void Titular(QAction *extra, const QString &titulo);

    Juego juego = Pantalla;
    QAction *nuevo, *editar, *eliminar, *reactivar, *info, *extra1, *extra2, *extra3, *aceptar, *cancelar, *cerrar;
    QAction *separador, *separadorExtras;
};

} // namespace toolbarQVX
