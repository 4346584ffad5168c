#pragma once

#include "app/servicios/Propuestas.h"

#include <QDialog>
#include <functional>

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace qvx
{
class ModeloTabla;
class VistaTabla;
} // namespace qvx

// What is about to be done to services or parts, row by row, before anybody consents: what each is, what it is to be,
// and why some stay as they are.
class DialogoDeLote : public QDialog
{
    Q_OBJECT

public:
    struct Textos {
        QString titulo;
        QString explicacion;
        QString aceptar; // of the button
        QString uno;     // "servicio", "parte"
        QString varios;
        QString hecho; // "Se moverán"
    };
    // escribir: raises errors, which are told; then the dialog stays open.
    DialogoDeLote(QWidget *duena, const Textos &textos, std::function<void()> escribir);

    // Above the preview: where to, or what is asked.
    void PonerArriba(QWidget *arriba, int estirar);
    void Mostrar(const propuestas::Propuesta &propuesta);
    // Shows the dialog; true when it was written, and no longer once it was tried.
    bool Preguntar();
    // It was tried to write, and failed: what the page shows may be out of date.
    bool Fallo() const { return fallo; }

protected:
    void showEvent(QShowEvent *evento) override;

private:
    void Ajustar();
    void Aceptar();

    Textos textos;
    std::function<void()> escribir;
    QVBoxLayout *disposicion;
    qvx::ModeloTabla *modelo;
    qvx::VistaTabla *lista;
    QLabel *lblResumen;
    QPushButton *cmdAceptar;
    bool fallo = false;
};
