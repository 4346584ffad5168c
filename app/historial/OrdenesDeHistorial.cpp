#include "app/historial/OrdenesDeHistorial.h"

#include "app/Acceso.h"
#include "app/Argumentos.h"
#include "app/InteraccionDeConsola.h"
#include "app/Reporte.h"
#include "app/Textos.h"
#include "app/comparar/TextoDeComparacion.h"
#include "app/historial/CambioDeOperacion.h"
#include "app/historial/TextosDeHistorial.h"
#include "data/Momento.h"
#include "plan/Claves.h"
#include "plan/Respaldo.h"
#include "session/Sesion.h"

#include <QDateTime>

namespace
{

QString EnCelda(const QVariant &valor)
{
    return valor.toString().simplified();
}

// Rows below their titles, each column as wide as its widest cell; the last one as it comes.
void EscribirTabla(const QStringList &titulos, const QList<QVariantList> &filas)
{
    QList<qsizetype> anchos;
    for (qsizetype columna = 0; columna < titulos.size(); ++columna) {
        anchos.append(titulos.at(columna).size());
        for (const QVariantList &fila : filas)
            anchos[columna] = qMax(anchos.at(columna), EnCelda(fila.at(columna)).size());
    }
    const auto escribir = [&](const QVariantList &fila) {
        QString renglon;
        for (qsizetype columna = 0; columna < fila.size(); ++columna)
            renglon += EnCelda(fila.at(columna)).leftJustified(anchos.at(columna)) + "  ";
        Escribir(stdout, renglon.trimmed());
    };
    escribir(QVariantList(titulos.begin(), titulos.end()));
    for (const QVariantList &fila : filas)
        escribir(fila);
}

// What changes in the plans, line by line.
void EscribirCambios(qvx::Conexion &conexion, const QStringList &tipos, const QList<qint64> &operaciones,
                     comparar::Comparados (*leer)(qvx::Conexion &, const QString &, const QList<qint64> &))
{
    for (const QString &tipo : tipos) {
        const auto comparados = leer(conexion, tipo, operaciones);
        Escribir(stdout, "Tipo de equipo " + tipo + ". " + comparar::Resumen(comparados.comparacion));
        for (const QString &renglon : comparar::Renglones(comparados.comparacion))
            Escribir(stdout, "  " + renglon);
    }
}

int Detallar(qvx::Conexion &conexion, const QString &tipo, qint64 numero)
{
    const qvx::Momento momento(conexion);
    const qvx::Operacion operacion = historial::Buscar(conexion, numero);
    if (!tipo.isEmpty() && !operacion.tipos.contains(tipo))
        qvx::Rechazar(
            QString("La operación %1 no cambió el plan del tipo de equipo %2.").arg(QString::number(numero), tipo));
    EscribirTabla(historial::Titulos(), {historial::Fila(operacion)});
    EscribirCambios(conexion, tipo.isEmpty() ? operacion.tipos : QStringList{tipo}, {numero},
                    &historial::LoQueHicieron);
    return salida::Hecho;
}

int Listar(qvx::Conexion &conexion, const Argumentos &argumentos)
{
    const QString tipo = argumentos.claves.isEmpty()
                             ? QString()
                             : qvx::ClaveConFormato(argumentos.claves.constFirst(),
                                                    qvx::claves::Mascara(conexion, "FTO_TIPO_EQUIPO", ""));
    if (argumentos.operacion > 0)
        return Detallar(conexion, tipo, argumentos.operacion);
    const qvx::Momento momento(conexion);
    qvx::FiltroDeHistoria filtro;
    filtro.tipoEquipo = tipo;
    QList<QVariantList> filas;
    while (true) { // in portions, as the reading gives them
        const QList<qvx::Operacion> operaciones = qvx::LeerOperaciones(conexion, filtro);
        for (const qvx::Operacion &operacion : operaciones)
            filas.append(historial::Fila(operacion));
        if (operaciones.size() < filtro.maximo)
            break;
        filtro.anteriorA = operaciones.constLast().numero;
    }
    EscribirTabla(historial::Titulos(), filas);
    Escribir(stdout, historial::Tamano(qvx::LeerTamanoDeHistoria(conexion)));
    return salida::Hecho;
}

qvx::Deshecho Intentar(qvx::Sesion &sesion, const Argumentos &argumentos, bool ensayo)
{
    return argumentos.rehacer ? qvx::Rehacer(sesion.Conexion(), sesion.Firmante(), argumentos.operacion, ensayo)
                              : qvx::Deshacer(sesion.Conexion(), sesion.Firmante(), {argumentos.operacion},
                                              qvx::AlDeshacer::SoloEsas, ensayo);
}

int DarVuelta(qvx::Sesion &sesion, const Argumentos &argumentos)
{
    const QString verbo = argumentos.rehacer ? "rehacer" : "deshacer";
    const qvx::Deshecho deshecho = Intentar(sesion, argumentos, !argumentos.si);
    if (!deshecho.SePuede()) {
        Escribir(stderr, QString("La operación %1 no se puede %2: no se cambió nada.")
                             .arg(QString::number(argumentos.operacion), verbo));
        for (const QString &reparo : historial::Reparos(deshecho))
            Escribir(stderr, "  " + reparo);
        if (deshecho.bastaConPosteriores || deshecho.bastaConOtraClave)
            Escribir(stderr, QString("Se puede en la ventana, página Historial: %1.")
                                 .arg(deshecho.bastaConPosteriores ? "deshacer también las operaciones posteriores"
                                                                   : "restaurar con otra clave"));
        return salida::Fallido;
    }
    EscribirCambios(sesion.Conexion(), deshecho.tipos, deshecho.operaciones, &historial::LoQueVuelve);
    Escribir(stdout, historial::Resumen(deshecho));
    Escribir(stdout, argumentos.si
                         ? QString("Hecho: es la operación %1. Con --%2 %1 --si se vuelve atrás.")
                               .arg(QString::number(deshecho.numero), argumentos.rehacer ? "deshacer" : "rehacer")
                         : "No cambió nada: dé también --si para " + verbo + "la.");
    return salida::Hecho;
}

int Depurar(qvx::Sesion &sesion, const Argumentos &argumentos)
{
    const QString antesDe = sesion.Ahora().date().addDays(-*argumentos.depurar).toString(Qt::ISODate);
    if (!argumentos.servidor) {
        const QString copia =
            argumentos.baseDatos + ".antes-de-depurar-" + sesion.Ahora().toString("yyyy-MM-dd_HHmmss");
        qvx::Respaldar(argumentos.baseDatos, copia);
        Escribir(stdout, "Como estaba antes quedó en la copia «" + copia + "».");
    }
    const int depuradas = qvx::DepurarHistoria(sesion.Conexion(), antesDe);
    Escribir(stdout, "Se borraron de la historia " + Cuantos(depuradas, "operación", "operaciones") + " de antes del "
                         + antesDe + ".");
    Escribir(stdout, historial::Tamano(qvx::LeerTamanoDeHistoria(sesion.Conexion())));
    return salida::Hecho;
}

} // namespace

int OrdenarHistorial(const Argumentos &argumentos)
{
    ExigirBase(argumentos);
    const auto sesion =
        IniciarSesion(argumentos, AbrirBase(argumentos), std::make_unique<InteraccionDeConsola>("", argumentos.si));
    if (argumentos.historial)
        return Listar(sesion->Conexion(), argumentos);
    return argumentos.depurar ? Depurar(*sesion, argumentos) : DarVuelta(*sesion, argumentos);
}
