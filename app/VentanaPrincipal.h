#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

class QAction;
class QLabel;
class QTabWidget;

namespace comunesQVX
{
class TreeView;
}

namespace textoQVX
{
class txtQVX;
}

class AvisoDeGastos;
class PaginaCatalogos;

// The window of the stand-alone host, a page for each thing that a planner does. The screen is one of them, and the
// window its parent object ("Transaccion", "iParametros").
class VentanaPrincipal : public QMainWindow
{
    Q_OBJECT
    Q_PROPERTY(QString Transaccion READ Transaccion)
    Q_PROPERTY(QString iParametros READ iParametros)

public:
    VentanaPrincipal(QWidget *pantalla, const QString &tipoEquipo, const QString &operador, const QString &baseDatos);

    QString Transaccion() const { return "KT580"; }
    QString iParametros() const { return tipoEquipo; }

protected:
    void closeEvent(QCloseEvent *evento) override;

private:
    void PonerPaginas(QWidget *pantalla);
    void AlCambiarDePagina(int pagina);
    void PonerCatalogos();
    void CopiarPlan(const QString &nuevo, const QString &origen);
    void Releer();
    QLabel *Entre(const QString &nombre);
    void PonerAvance();
    void PonerSugerencia();
    QString Sugerencia() const;
    void PonerMenu();
    template <class Dialogo, class... Datos>
    void AbrirDialogo(int identificador, const Datos &...datos);
    QString TipoEnPantalla() const;

    QString tipoEquipo;
    QTabWidget *tabPaginas;
    QWidget *pantalla;
    PaginaCatalogos *catalogos = nullptr; // made when it is first shown
    bool porReleer = false;               // what the screen shows of the catalogues was changed
    // Controls of the screen; gone with it.
    QPointer<textoQVX::txtQVX> tipo;
    QPointer<textoQVX::txtQVX> nombreTipo;
    QPointer<comunesQVX::TreeView> partes;
    QLabel *sugerencia = nullptr;
    AvisoDeGastos *gastos = nullptr;
    QTimer cambio;             // one look at the screen for any number of its changes
    bool tipoResuelto = false; // the key in the box was looked up
};
