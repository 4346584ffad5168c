#pragma once

#include "system/Exporta.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <optional>

// The keeping of the catalogues: their rows with all columns and in every state, the rules for changing them, and the
// one way to write them.
namespace QVX_EXPORTA qvx
{

class Conexion;
struct Firmante;

namespace estado
{
inline const QString Activo = "AC";
inline const QString Baja = "BA";
inline const QString Cancelado = "CA";
} // namespace estado

// A column of a catalogue beside its key and its state.
struct ColumnaDeCatalogo {
    enum class Clase { Texto, Numero, ClaseDeProducto, Unidad };
    QString nombre; // in the table: "Pr_Costo_Estandar"
    QString titulo; // for the person: "Costo"
    Clase clase;
    QStringList sinonimos; // other headings by which a spreadsheet may call it
};

// Where keys of a catalogue stand: a table and its column.
struct UsoDeCatalogo {
    QString tabla;
    QString columna;
};

struct TablaDeCatalogo {
    QString nombre; // "Producto"
    QString titulo; // "Productos"
    QString uno;    // "producto", in sentences
    QString columnaClave;
    QString formato;                   // code of the mask of its keys
    QList<ColumnaDeCatalogo> columnas; // the description first
    QStringList sinonimosDeClave;
    QList<UsoDeCatalogo> usos;
    bool claveDeCifras = false; // the grids of the service editor look no other key up

    // Where a column of a class stands among columnas, -1 where there is none.
    int Lugar(ColumnaDeCatalogo::Clase clase) const;
};

const QList<TablaDeCatalogo> &TablasDeCatalogo();
// In any letter case; nullptr for none.
const TablaDeCatalogo *TablaDeCatalogoPorNombre(const QString &nombre);

struct RegistroDeCatalogo {
    QString clave;
    QStringList valores; // as columnas; numbers as NumeroATexto writes them
    QString estado = estado::Activo;

    QString Descripcion() const { return valores.value(0); }
    bool operator==(const RegistroDeCatalogo &otro) const = default;
};

// What becomes of a row: without antes it is a new one, without despues it is deleted.
struct CambioDeCatalogo {
    std::optional<RegistroDeCatalogo> antes;
    std::optional<RegistroDeCatalogo> despues;

    const QString &Clave() const { return antes ? antes->clave : despues->clave; }
};

// What is known of a catalogue while changes of it are judged.
struct SituacionDeCatalogo {
    QString mascara;
    QHash<QString, RegistroDeCatalogo> registros; // by key without trailing blanks
    QSet<QString> usadas;                         // keys that something uses, whatever its state
    QSet<QString> unidades;                       // on offer; of products only
};

// All rows, by key. Raises data errors.
QList<RegistroDeCatalogo> LeerRegistros(Conexion &conexion, const TablaDeCatalogo &tabla);
// claves: of which rows it is asked; all of them when it is empty. Raises data errors.
SituacionDeCatalogo LeerSituacion(Conexion &conexion, const TablaDeCatalogo &tabla, const QStringList &claves = {});

// Why a change must not be, as a sentence on what is expected, and where: ObjecionDeClave, ObjecionDeEstado, or the
// place in columnas. Nothing for a change that may be. Keys are taken as they will be written: in their mask.
struct Objecion {
    int columna;
    QString motivo;
};
constexpr int ObjecionDeClave = -1;
constexpr int ObjecionDeEstado = -2;
std::optional<Objecion> Objetar(const TablaDeCatalogo &tabla, const SituacionDeCatalogo &situacion,
                                const CambioDeCatalogo &cambio);

// A free key after the highest number among the keys, in the mask; "" where no key is a number.
QString ClavePropuesta(const SituacionDeCatalogo &situacion);

// Writes all changes and their log in one transaction, or nothing. Rules are asked again inside, and each row must be
// as antes has it. Raises an ErrorEjecucion in Spanish that names the row and, where somebody else changed it, who and
// when; and data errors.
void EscribirCambios(Conexion &conexion, const Firmante &firmante, const TablaDeCatalogo &tabla,
                     const QList<CambioDeCatalogo> &cambios);

// What whoever is signed in may change. Raises data errors.
struct Derechos {
    bool planes;
    bool catalogos;
};
Derechos LeerDerechos(Conexion &conexion);

} // namespace qvx
