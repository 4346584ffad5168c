#pragma once

#include "system/Exporta.h"

#include <QDateTime>
#include <QFont>
#include <QString>
#include <QStringList>

class QWidget;

namespace QVX_EXPORTA qvx
{

class Lista;

// The host's utility services, as a component sees them. All but those that answer a Boolean raise data errors.
class Utilerias
{
public:
    QDateTime FechaServidor() const;
    // The date as the database keeps it: "yyyy-MM-dd HH:mm:ss".
    QString TextoFecha(const QDateTime &fecha) const;
    QString TextoTransaccion(const QString &aplicacion, const QString &transaccion) const;

    // The next free key number: highest + 1 among the rows that match the filter, seen from inside the running
    // transaction. The five further texts are not used. Raises "Desbordamiento" past 2147483647.
    qint32 SiguienteClave(const QString &tabla, const QString &columna, const QString &filtro, const QString &valor,
                          const QString &, const QString &, const QString &, const QString &, const QString &) const;
    // Likewise as text in the mask of the table's keys; the second filter may be empty.
    QString SiguienteClaveTexto(const QString &tabla, const QString &columna, const QString &filtro1,
                                const QString &valor1, const QString &filtro2, const QString &valor2) const;

    // Registers the row that was just written, inside its transaction. claves: of Tipo_Equipo_Parte the part and the
    // equipment type; of Plan_Mantenimiento the equipment type, the service and, where it must still be there, its
    // part. False when the row is not there, when somebody else changed it since this program read it, when the part
    // that it hangs from is gone, or when it could not be registered; UltimoErrorDatos then says why.
    bool RegistrarCambio(const QString &tabla, const QStringList &claves) const;
    QString UltimoErrorDatos() const;
    // Logs a change of state ("Baja", "Reactivación").
    void Bitacora(const QString &tabla, const QString &clave, const QString &accion) const;

    // Shows who created and last changed a row.
    void InformacionRegistro(const QString &tabla, const QStringList &columnas, const QStringList &valores,
                             QWidget *duena) const;

    // The value of a column for a key, "" when there is no such row.
    QString ValorDe(const QString &tabla, const QString &columnaClave, const QString &columnaValor,
                    const QString &clave) const;
    // The key chosen in a catalogue's search dialog, "" for none. maximo: rows shown at once, 0 for all.
    QString BuscarEnCatalogo(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                             QWidget *duena) const;

    QString ConsultaPorNombre(const QString &nombre) const;
    // Clears the list and adds one row per row of the query. False when the query fails: UltimoErrorDatos says why,
    // and the list is empty.
    bool LlenarLista(const QString &consulta, Lista &lista) const;

    // Sends a key to the control with the focus, after the present event. Only "\t".
    void EnviarTecla(const QString &tecla) const;
};

} // namespace qvx
