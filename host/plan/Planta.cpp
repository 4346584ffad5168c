#include "plan/Planta.h"

#include "data/ErrorEjecucion.h"
#include "data/Transaccion.h"

#include <algorithm>

namespace qvx
{

namespace
{

constexpr qsizetype LetrasDePlanta = 100;
const QString AjusteDelNombre = "NOMBRE";

Recordset LeerFila(Conexion &conexion)
{
    return conexion.Execute("SELECT Aj_Valor FROM Ajuste_Planta WHERE Aj_Nombre = ?", {AjusteDelNombre});
}

} // namespace

QString NombreDePlanta(Conexion &conexion)
{
    const auto fila = LeerFila(conexion);
    return fila.Eof() ? QString() : fila.Texto(0);
}

// The condition finds what was read, or nobody has written: of two who begin with nothing the second meets the key.
void GuardarNombreDePlanta(Conexion &conexion, const Firmante &firmante, const QString &leido, const QString &nombre)
{
    if (nombre.size() > LetrasDePlanta
        || std::any_of(nombre.begin(), nombre.end(), [](QChar letra) { return !letra.isPrint(); }))
        Rechazar("El nombre de la planta lleva hasta 100 caracteres en un solo renglón. No se guardó nada.");
    Transaccion transaccion(conexion);
    const QString ahora = NombreDePlanta(conexion);
    if (ahora != leido)
        Rechazar("Otra persona cambió el nombre de la planta a «" + ahora + "». No se guardó nada: ábralo de nuevo.");
    if (conexion
            .Execute("UPDATE Ajuste_Planta SET Aj_Valor = ? WHERE Aj_Nombre = ? AND Aj_Valor = ?",
                     {nombre, AjusteDelNombre, leido})
            .Afectadas()
        == 0) {
        if (!LeerFila(conexion).Eof())
            Rechazar("Otra persona cambió el nombre de la planta. No se guardó nada: ábralo de nuevo.");
        conexion.Execute("INSERT INTO Ajuste_Planta (Aj_Nombre, Aj_Valor) VALUES (?, ?)", {AjusteDelNombre, nombre});
    }
    AnotarCambio(conexion, firmante, "Ajuste_Planta", AjusteDelNombre);
    transaccion.Confirmar();
}

} // namespace qvx
