#include "session/Utilerias.h"

#include "controls/Comunes.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"

#include <QApplication>
#include <QHash>
#include <QKeyEvent>
#include <limits>

namespace qvx
{

namespace
{

Conexion &Base()
{
    return Sesion::Actual().Conexion();
}

// The keys that RegistrarCambio is given for a table, in the order in which the screens pass them.
QStringList ColumnasDeClave(const QString &tabla)
{
    static const QHash<QString, QStringList> columnas{
        {"Tipo_Equipo_Parte", {"Tep_ID", "Te_Cve_Tipo_Equipo"}},
        {"Plan_Mantenimiento", {"Te_Cve_Tipo_Equipo", "Pm_ID", "Tep_ID"}},
    };
    const QStringList halladas = columnas.value(tabla);
    if (halladas.isEmpty())
        throw ErrorEjecucion(errores::ElementoNoEncontrado, "No se registran cambios de la tabla " + tabla);
    return halladas;
}

QString Condicion(const QStringList &columnas, const QStringList &valores)
{
    if (columnas.size() != valores.size())
        throw ErrorEjecucion(errores::TiposNoCoinciden, "La clave no tiene las columnas de su tabla");
    QStringList partes;
    for (int i = 0; i < columnas.size(); ++i)
        partes.append(columnas.at(i) + " = " + Literal(valores.at(i)));
    return partes.join(" AND ");
}

// The root of every tree of parts, which never is a row: one that were would hide the tree.
bool EsLaRaiz(const QString &tabla, const QStringList &claves)
{
    return tabla == "Tipo_Equipo_Parte" && claves.value(0).trimmed() == "0000";
}

// Whether a part is there to hang something from.
bool HayParte(const QString &tipoEquipo, const QString &parte)
{
    return parte.trimmed() == "0000"
           || !Base()
                   .Execute("SELECT 1 AS Hay FROM Tipo_Equipo_Parte WHERE "
                            + Condicion({"Te_Cve_Tipo_Equipo", "Tep_ID"}, {tipoEquipo, parte}))
                   .Eof();
}

QString CambioAjeno(const Recordset &fila)
{
    const QString quien = fila["Oper_Anterior"];
    const QString propio = quien == Sesion::Actual().Operador() ? "Usted mismo (" + quien + ")" : quien;
    return propio + " cambió este registro el " + fila["Fecha_Anterior"]
           + ", después de que esta pantalla lo leyó. No se guardó nada, y lo escrito sigue en "
             "la pantalla. Para ver cómo quedó, ábralo de nuevo o actualice el árbol con F5.";
}

// What is wrong with a row that was just written, "" when nothing is. Another's change of it since this program read it
// would be lost, and what hangs from a part that is gone would be out of the tree's reach.
QString Impedimento(const QString &tabla, const QStringList &claves)
{
    const bool servicio = tabla == "Plan_Mantenimiento";
    // Without its version, which would count as read from then on.
    const auto fila = Base().Execute(QString("SELECT Te_Cve_Tipo_Equipo, Tep_ID, ") + (servicio ? "Pm_ID" : "Tep_Padre")
                                     + ", Version_Anterior, Oper_Anterior, Fecha_Anterior FROM " + tabla + " WHERE "
                                     + Condicion(ColumnasDeClave(tabla).mid(0, claves.size()), claves));
    if (fila.Eof())
        return "El registro ya no existe: otra persona lo eliminó o lo cambió de lugar.";
    const QString tipoEquipo = fila["Te_Cve_Tipo_Equipo"];
    const QString anterior = fila["Version_Anterior"];
    const QString leida = Base().Leidas().Leida(tabla, tipoEquipo, fila[servicio ? "Pm_ID" : "Tep_ID"]);
    if (!anterior.isEmpty() && !leida.isEmpty() && anterior != leida)
        return CambioAjeno(fila);
    // A service that is moved is given without its part: dropped on the root, it is left under the root's text, no
    // part.
    const bool enLaRaiz = claves.size() == 2 && fila["Tep_ID"].trimmed() == "RAIZ";
    if (servicio && !enLaRaiz && !HayParte(tipoEquipo, fila["Tep_ID"]))
        return "La parte del servicio ya no existe: otra persona la eliminó.";
    if (!servicio && !HayParte(tipoEquipo, fila["Tep_Padre"]))
        return "La parte superior ya no existe: otra persona la eliminó.";
    return {};
}

// Keys are numbered by the number column beside each, which an index holds.
qint32 SiguienteNumero(const QString &tabla, const QString &columna, const QString &condicion)
{
    QString numero = columna;
    numero.replace("_ID", "_Numero");
    const auto filas = Base().Execute("SELECT MAX(" + numero + ") AS Ultimo FROM " + tabla + " WHERE " + condicion);
    const double ultimo = filas.Numero("Ultimo");
    if (ultimo >= std::numeric_limits<qint32>::max())
        throw ErrorEjecucion(errores::Desbordamiento, "Desbordamiento");
    return static_cast<qint32>(ultimo) + 1;
}

void GuardarError(const QString &descripcion)
{
    Sesion::Actual().ultimoErrorDatos = descripcion;
}

} // namespace

QDateTime Utilerias::FechaServidor() const
{
    return Sesion::Actual().Ahora();
}

QString Utilerias::TextoFecha(const QDateTime &fecha) const
{
    return fecha.toString("yyyy-MM-dd HH:mm:ss");
}

QString Utilerias::TextoTransaccion(const QString &aplicacion, const QString &transaccion) const
{
    return transaccion.isEmpty() ? aplicacion : aplicacion + " " + transaccion;
}

qint32 Utilerias::SiguienteClave(const QString &tabla, const QString &columna, const QString &filtro,
                                 const QString &valor, const QString &, const QString &, const QString &,
                                 const QString &, const QString &) const
{
    return SiguienteNumero(tabla, columna, Condicion({filtro}, {valor}));
}

QString Utilerias::SiguienteClaveTexto(const QString &tabla, const QString &columna, const QString &filtro1,
                                       const QString &valor1, const QString &filtro2, const QString &valor2) const
{
    QStringList columnas{filtro1};
    QStringList valores{valor1};
    if (!filtro2.isEmpty()) {
        columnas.append(filtro2);
        valores.append(valor2);
    }
    const qint32 numero = SiguienteNumero(tabla, columna, Condicion(columnas, valores));
    const QString mascara = Sistema().FormatoClave("FTO_" + tabla.toUpper(), "", "T", "0000");
    return ClaveConFormato(QString::number(numero), mascara);
}

bool Utilerias::RegistrarCambio(const QString &tabla, const QStringList &claves) const
{
    Sesion &sesion = Sesion::Actual();
    try {
        if (EsLaRaiz(tabla, claves))
            throw ErrorEjecucion(errores::Datos, "La clave 0000 está reservada para la raíz del árbol.");
        const QString impedimento = Impedimento(tabla, claves);
        if (impedimento.isEmpty()) {
            Base().Execute("INSERT INTO Registro_Cambio (Rc_Tabla, Rc_Clave, Rc_Oper, Rc_Fecha) VALUES ("
                           + Literal(tabla) + ", " + Literal(claves.join(QLatin1Char('|'))) + ", "
                           + Literal(sesion.Operador()) + ", " + Literal(TextoFecha(sesion.Ahora())) + ")");
            return true;
        }
        GuardarError(impedimento);
    } catch (const ErrorEjecucion &error) {
        GuardarError(error.Descripcion());
    }
    sesion.detallesPendientes = sesion.ultimoErrorDatos;
    return false;
}

QString Utilerias::UltimoErrorDatos() const
{
    return Sesion::Actual().ultimoErrorDatos;
}

void Utilerias::Bitacora(const QString &tabla, const QString &clave, const QString &accion) const
{
    Base().Execute("INSERT INTO Bitacora (Bi_Tabla, Bi_Clave, Bi_Accion, Bi_Oper, Bi_Fecha) VALUES (" + Literal(tabla)
                   + ", " + Literal(clave) + ", " + Literal(accion) + ", " + Literal(Sesion::Actual().Operador()) + ", "
                   + Literal(TextoFecha(FechaServidor())) + ")");
}

void Utilerias::InformacionRegistro(const QString &tabla, const QStringList &columnas, const QStringList &valores,
                                    QWidget *duena) const
{
    const auto fila = Base().Execute("SELECT * FROM " + tabla + " WHERE " + Condicion(columnas, valores));
    if (fila.Eof())
        throw ErrorEjecucion(errores::SinRegistroActual, "El registro ya no existe");
    Sesion::Actual().Interaccion().InformacionRegistro({{"Creado por", fila["Oper_Alta"]},
                                                        {"Fecha de creación", fila["Fecha_Alta"]},
                                                        {"Último cambio por", fila["Oper_Ult_Modif"]},
                                                        {"Fecha del último cambio", fila["Fecha_Ult_Modif"]},
                                                        {"Dado de baja por", fila["Oper_Baja"]},
                                                        {"Fecha de baja", fila["Fecha_Baja"]}},
                                                       duena);
}

QString Utilerias::ValorDe(const QString &tabla, const QString &columnaClave, const QString &columnaValor,
                           const QString &clave) const
{
    const auto fila =
        Base().Execute("SELECT " + columnaValor + " FROM " + tabla + " WHERE " + Condicion({columnaClave}, {clave}));
    return fila.Eof() ? QString() : fila[columnaValor];
}

QString Utilerias::BuscarEnCatalogo(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                                    QWidget *duena) const
{
    return Sesion::Actual().Interaccion().BuscarEnCatalogo(catalogo, maximo, filtro, fuente, duena);
}

QString Utilerias::ConsultaPorNombre(const QString &nombre) const
{
    const auto fila = Base().Execute("SELECT Co_Texto FROM Consulta WHERE Co_Nombre = " + Literal(nombre));
    if (fila.Eof())
        throw ErrorEjecucion(errores::ElementoNoEncontrado, "No existe la consulta " + nombre);
    return fila["Co_Texto"];
}

bool Utilerias::LlenarLista(const QString &consulta, comunesQVX::ListView &lista) const
{
    lista.Clear();
    try {
        for (auto filas = Base().Execute(consulta); !filas.Eof(); filas.MoveNext()) {
            QStringList textos;
            for (int i = 0; i < filas.Columnas(); ++i)
                textos.append(filas.Texto(i));
            lista.AgregarFila(textos);
        }
        return true;
    } catch (const ErrorEjecucion &error) {
        GuardarError(error.Descripcion());
        return false;
    }
}

void Utilerias::EnviarTecla(const QString &tecla) const
{
    if (tecla != "\t")
        throw ErrorEjecucion(errores::TiposNoCoinciden, "Solo se envía la tecla Tab");
    if (QWidget *foco = QApplication::focusWidget()) {
        QCoreApplication::postEvent(foco, new QKeyEvent(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, tecla));
        QCoreApplication::postEvent(foco, new QKeyEvent(QEvent::KeyRelease, Qt::Key_Tab, Qt::NoModifier, tecla));
    }
}

} // namespace qvx
