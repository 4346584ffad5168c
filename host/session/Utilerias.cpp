#include "session/Utilerias.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/Cambios.h"
#include "plan/Claves.h"
#include "plan/Consultas.h"
#include "session/Interaccion.h"
#include "session/Lista.h"
#include "session/Sesion.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace qvx
{

namespace
{

Conexion &Base()
{
    return Sesion::Actual().Conexion();
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
    return qvx::TextoFecha(fecha);
}

QString Utilerias::TextoTransaccion(const QString &aplicacion, const QString &transaccion) const
{
    return transaccion.isEmpty() ? aplicacion : aplicacion + " " + transaccion;
}

qint32 Utilerias::SiguienteClave(const QString &tabla, const QString &columna, const QString &filtro,
                                 const QString &valor, const QString &, const QString &, const QString &,
                                 const QString &, const QString &) const
{
    return claves::Siguiente(Base(), tabla, columna, {filtro}, {valor});
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
    const qint32 numero = claves::Siguiente(Base(), tabla, columna, columnas, valores);
    return ClaveConFormato(QString::number(numero), claves::Mascara(Base(), "FTO_" + tabla.toUpper(), claves::Raiz));
}

bool Utilerias::RegistrarCambio(const QString &tabla, const QStringList &claves) const
{
    Sesion &sesion = Sesion::Actual();
    try {
        const QString impedimento = qvx::RegistrarCambio(Base(), Sesion::Actual().Firmante(), tabla, claves);
        if (impedimento.isEmpty())
            return true;
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
    AnotarEstado(Base(), Sesion::Actual().Firmante(), tabla, clave, accion);
}

void Utilerias::InformacionRegistro(const QString &tabla, const QStringList &columnas, const QStringList &valores,
                                    QWidget *duena) const
{
    Sesion::Actual().Interaccion().InformacionRegistro(Autoria(Base(), tabla, columnas, valores), duena);
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
    return ConsultaGuardada(Base(), nombre);
}

bool Utilerias::LlenarLista(const QString &consulta, Lista &lista) const
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
