#pragma once

#include "plan/Usos.h"

#include <QDialog>

class QDialogButtonBox;
class QLabel;

namespace qvx
{
class ModeloTabla;
class VistaTabla;
} // namespace qvx

// Where an entry of a catalogue is used; and, before it is retired or replaced, what becomes of these uses.
class DialogoUsos : public QDialog
{
    Q_OBJECT

public:
    enum class Respuesta { Nada, Baja, Reemplazar };

    // Shows them. Raises data errors.
    static void Mostrar(QWidget *duena, const qvx::TablaDeCatalogo &tabla, const qvx::RegistroDeCatalogo &registro);
    // Asks what to do with an entry that is about to be retired. Raises data errors.
    static Respuesta PreguntarBaja(QWidget *duena, const qvx::TablaDeCatalogo &tabla,
                                   const qvx::RegistroDeCatalogo &registro);
    // Shows what would be replaced, and replaces it with the person's consent. True when it was done. Raises data
    // errors.
    static bool Reemplazar(QWidget *duena, const qvx::TablaDeCatalogo &tabla, const qvx::RegistroDeCatalogo &registro,
                           const qvx::RegistroDeCatalogo &nuevo);

    ~DialogoUsos() override;

private:
    DialogoUsos(QWidget *duena, const qvx::TablaDeCatalogo &tabla, const qvx::RegistroDeCatalogo &registro);
    void Disponer();
    void OfrecerBaja();
    void OfrecerReemplazo(const qvx::RegistroDeCatalogo &nuevo);

    const qvx::TablaDeCatalogo &tabla;
    const qvx::RegistroDeCatalogo registro;
    const QList<qvx::Uso> usos;
    qvx::ModeloTabla *modelo;
    QLabel *lblExplicacion;
    qvx::VistaTabla *lvUsos;
    QDialogButtonBox *botones;
    Respuesta respuesta = Respuesta::Nada;
};
