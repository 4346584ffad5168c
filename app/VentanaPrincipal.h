#pragma once

#include "app/Ventana.h"

class BarraDeEstado;
class PantallaDelPlan;
class Paginas;

// The window of the stand-alone host, a page for each thing that a planner does. The screen is one of them, and the
// window its parent object ("Transaccion", "iParametros").
class VentanaPrincipal : public Ventana
{
    Q_OBJECT
    Q_PROPERTY(QString Transaccion READ Transaccion)
    Q_PROPERTY(QString iParametros READ iParametros)

public:
    VentanaPrincipal(QWidget *pantalla, const QString &tipoEquipo, const QString &operador, const QString &baseDatos);
    ~VentanaPrincipal() override;

    QString Transaccion() const { return "KT580"; }
    // What the screen is to open on. It asks each time that it is shown: what the planner has chosen since stays.
    QString iParametros() const { return tipoEquipo; }

    // Takes up where the person left this database, and remembers what he leaves: page, plan, size and place.
    // direccion: its file, or the address of its server. An equipment type that was given goes before the plan that was
    // open; without either it begins with all equipment types.
    void Retomar(const QString &direccion, bool enServidor);

    // The key in the screen's box, "" for none.
    QString TipoEnPantalla() const;
    // The plan that the person looks at, on the screen or on a page, "" for none.
    QString TipoDeLaPagina() const;
    // What is chosen on the screen or on the page: equipment type, part and service, "" for what is not.
    struct Elegido {
        QString tipo;
        QString parte;
        QString folio;
    };
    Elegido LoElegido() const;
    bool Ocupada() const override;
    qvx::Interaccion &Personas() const override;

public Q_SLOTS:
    // Opens the screen with the plan of an equipment type, and chooses the part and the service where they are named.
    // False when they are not there, and while the window is busy.
    bool MostrarEnPlan(const QString &tipo, const QString &parte = {}, const QString &servicio = {});
    // Something that the screen shows was changed: it reads its plan anew, at once or when it is shown, and what was
    // open and chosen in it is so again.
    void PlanCambiado();
    // The same, and the page that is shown reads its own again.
    void PlanDeshecho();
    // The history of a plan, of a part of it, or of a service.
    void MostrarHistorial(const QString &tipo, const QString &parte, const QString &folio);
    // The screen's own import of a document, with its question.
    void ImportarPlan(const QString &archivo);

protected:
    void closeEvent(QCloseEvent *evento) override;

private:
    void PonerPaginas();
    QWidget *HacerTipos();
    QWidget *HacerServicios();
    QWidget *HacerPrograma();
    QWidget *HacerCatalogos();
    QWidget *HacerHistorial();
    void AlMostrarPagina(const QString &nombre);
    void CopiarPlan(const QString &nuevo, const QString &origen);
    void Buscar();
    void AbrirServicio(const QString &tipo, const QString &parte, const QString &folio);
    bool Ver(const QString &tipo, const QString &parte, const QString &servicio);
    void PonerMenus();
    void PonerVer();
    void PonerHerramientas();
    void PonerAyuda();
    template <class Dialogo, class... Datos>
    void AbrirDialogo(int identificador, const Datos &...datos);
    void ActualizarPagina();
    void Recordar();

    QString tipoEquipo; // until the screen has opened on it
    QString direccion;  // of the database, "" while nothing is remembered
    QString nombreDeBase;
    bool enServidor = false;
    PantallaDelPlan *plan;
    Paginas *paginas;
    BarraDeEstado *barra;
    bool porReleer = false; // what the screen shows was changed
};
