#pragma once

#include <QPointer>
#include <QTimer>

class AvisoDeGastos;

namespace comunesQVX
{
class ListView;
class TreeView;
} // namespace comunesQVX

namespace textoQVX
{
class txtQVX;
}

// The screen, as the rest of the desk sees it: which plan it shows, and what its controls are brought to show. All of
// it goes by way of the controls, as a planner's hands would.
class PantallaDelPlan : public QObject
{
    Q_OBJECT

public:
    PantallaDelPlan(QWidget *pantalla, QObject *padre);

    QWidget *Forma() const { return pantalla; }
    // The key in the screen's box, "" for none; and whether it was looked up and is an equipment type on offer.
    QString Tipo() const;
    bool Resuelta() const { return resuelta; }
    bool HayTipo() const;
    // The part and the service that are chosen, "" for none; the root is no part.
    QString ParteElegida() const;
    QString FolioElegido() const;

    // Opens the plan of an equipment type and chooses the part and the service, where they are named and there. False
    // when one of them is not there; the screen then shows what it has found.
    bool Mostrar(const QString &tipoEquipo, const QString &parte, const QString &servicio);
    // As a double click on the service that is chosen.
    void AbrirServicio();
    // Reads the screen's plan anew, and opens and chooses again what was open and chosen, as far as it is there still.
    void Releer();
    // The screen's own copy, with its questions, from one equipment type to another that is known.
    void Copiar(const QString &nuevo, const QString &origen);
    // The screen's own import of a document, with its question.
    void Importar(const QString &archivo);

    // What the planner does next, as the controls stand; "" for nothing in particular.
    QString Sugerencia() const;

Q_SIGNALS:
    // A key was looked up: whatever the screen was to open on, it has opened.
    void Abierta();
    // The suggestion may be another.
    void Cambio();

private:
    void Escuchar();
    bool ElegirParte(const QString &nodo);
    bool ElegirServicio(const QString &folio);

    QPointer<QWidget> pantalla;
    // Controls of the screen; gone with it.
    QPointer<textoQVX::txtQVX> tipo;
    QPointer<textoQVX::txtQVX> nombreTipo;
    QPointer<comunesQVX::TreeView> partes;
    QPointer<comunesQVX::ListView> servicios;
    AvisoDeGastos *gastos;
    QTimer cambio;         // one look at the screen for any number of its changes
    bool resuelta = false; // the key in the box was looked up
};
