#pragma once

#include "component/FormularioConPadre.h"

#include <memory>

namespace Ui
{
class frmAddParte;
}

// The dialog that adds a part under another or changes a part's description.
class frmAddParte : public FormularioConPadre
{
    Q_OBJECT

public:
    // The main screen it works for: the dialog takes its parent object, and its fields from the caller.
    explicit frmAddParte(FormularioConPadre &pantalla);
    ~frmAddParte() override;

    bool Nuevo = false;    // set by the caller: true creates a part, false changes one
    bool Aceptado = false; // true once the row was saved

    void LlenarTipo(const QString &tipoEquipo, const QString &nombreTipo);
    void LlenarPadre(const QString &padre, const QString &ruta);
    void LlenarParte(const QString &clave, const QString &descripcion);
    QString Clave() const;
    QString Texto() const;

protected:
    void Form_Load() override;
    void Form_Activate() override;

private:
    void cmdAceptar();
    bool Validar();
    QString ClaveLibre() const;
    QString Insertar(const QString &clave) const;
    QString Actualizar() const;

    std::unique_ptr<Ui::frmAddParte> ui;
    FormularioConPadre &pantalla;
    QString propuesta; // the key that a new part was offered
    QString operador;  // audit values of the accept that is running
    QString fecha;
};
