#pragma once

#include "app/Argumentos.h"

#include <QObject>
#include <functional>
#include <memory>

class VentanaPrincipal;
class QWidget;
class VentanaSinBase;

namespace qvx
{
class Conexion;
class Interaccion;
class Sesion;
} // namespace qvx

// What is open: one database at a time, its session and its window; or none.
class Escritorio : public QObject
{
    Q_OBJECT

public:
    Escritorio();
    ~Escritorio() override;

    // Signs in and shows the window. Raises an ErrorEjecucion.
    void Empezar(const Argumentos &argumentos, std::unique_ptr<qvx::Conexion> conexion,
                 std::unique_ptr<qvx::Interaccion> personas);
    // Opens another database in the place of the one that is open, which stays when the other cannot be opened: the
    // person is told why.
    void Cambiar(const QString &direccion);
    // Puts what a copy holds in the place of all that the open file holds, and opens the window anew on it; the person
    // is told how it ended.
    void Restaurar(const QString &copia);
    // Closes the database. A window stays that opens another.
    void Cerrar();

    VentanaPrincipal *Ventana() const { return ventana.get(); }
    VentanaSinBase *SinBase() const { return sinBase.get(); }

private:
    static void Mostrar(QWidget &cual);
    void EntreVentanas(const std::function<void()> &pasos);
    void Terminar();
    void PonerCopias();

    Argumentos argumentos;
    std::unique_ptr<qvx::Sesion> sesion;
    std::unique_ptr<VentanaPrincipal> ventana;
    std::unique_ptr<VentanaSinBase> sinBase;
};
