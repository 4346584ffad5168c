#pragma once

#include "data/Reglas.h"
#include "plan/Guion.h"
#include "system/Exporta.h"

#include <QSet>

namespace QVX_EXPORTA qvx
{

class Conexion;

// What the history calls an operation that takes others back.
inline const QString ClaseDeshacer = "Deshacer";
inline const QString ClaseRehacer = "Rehacer";
// What it calls a change that this system did not make.
inline const QString ClaseDeFuera = "Fuera de Quorvex";

// What a transaction does to plans, as the history is to name it: by what its statements are, unless who writes names
// it himself. The rows that it changes are noted by the database.
class OperacionEnCurso
{
public:
    explicit OperacionEnCurso(Motor motor_) : motor(motor_) {}

    // What a shape does to a plan, a number for Conocida::cambio, 0 for nothing; and where among its literals the keys
    // stand by which it is told.
    static int Cambio(const QString &forma);
    static QList<int> Claves(const QString &forma, int cambio);

    Motor DeMotor() const { return motor; }
    void Firmar(const QString &operador_) { operador = operador_; }
    void Empezar();
    // deshechas: the operations that it takes back.
    void Nombrar(const QString &clase, const QString &detalle, const QList<qint64> &deshechas);
    void Anotar(const Conocida &conocida, const Sentencia &sentencia);
    // Whether the transaction has emptied a plan.
    bool Vaciado() const;

    // What is run before the first change, and before the commit.
    QList<SentenciaConValores> Apertura() const;
    QList<SentenciaConValores> Cierre() const;

private:
    struct Nombre {
        QString clase;
        QString detalle;
    };
    Nombre Deducido() const;

    const Motor motor;
    QString operador;
    Nombre nombre; // the one that was given
    QList<qint64> deshechas;
    QHash<int, QStringList> cambios; // the keys that the first statement of each kind named
};

// Names what the transaction that is open does: words for the planner, such as "Servicios movidos" and "3 servicios a
// la parte 0005 MOTOR". For those that the statements do not tell by themselves.
void NombrarOperacion(Conexion &conexion, const QString &clase, const QString &detalle,
                      const QList<qint64> &deshechas = {});

// Who signs the operations of a connection, where the database does not know it by itself.
void FirmarOperaciones(Conexion &conexion, const QString &operador);

} // namespace qvx
