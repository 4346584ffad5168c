#pragma once

#include "plan/Deshacer.h"
#include "plan/FilasDelPlan.h"

#include <QSet>
#include <algorithm>

namespace qvx
{

// What stands in the way of one part or service.
struct Obstaculo {
    DelPlan clase = DelPlan::Parte;
    QString clave;
    bool claveDada = false; // its key was given again
    QString texto;

    bool operator==(const Obstaculo &otro) const { return clase == otro.clase && clave == otro.clave; }
};

// One plan, and the operations that are taken back in it. Inside a transaction.
class DeshacerEnPlan
{
public:
    DeshacerEnPlan(Conexion &conexion_, const Firmante &firmante_, const QString &tipo_,
                   const QList<qint64> &operaciones)
        : conexion(conexion_)
        , firmante(firmante_)
        , tipo(tipo_)
        , primera(*std::min_element(operaciones.begin(), operaciones.end()))
        , donde("Te_Cve_Tipo_Equipo = ? AND Op_ID IN (" + QStringList(operaciones.size(), "?").join(", ") + ")")
    {
        valores = {tipo};
        for (const qint64 operacion : operaciones)
            valores.append(operacion);
    }

    // Before all else: finds the first and the last image of each row once, where the connection can keep them.
    void Reunir();
    // Rows that are not as the operations left them, and keys that were given again.
    QList<Obstaculo> Cambiadas() const;
    // Writes, and says how many rows it wrote. nuevas: the keys that rows get whose own were given again.
    void Escribir(Deshecho &deshecho, const QList<Obstaculo> &dadas) const;
    // What must not be now that it is written: something hangs from what went, or what came back lost its part.
    QList<Obstaculo> Sueltas() const;
    // Logs what was written.
    void Registrar() const;
    // Later operations that changed these rows.
    QSet<qint64> Posteriores(const QList<Obstaculo> &reparos) const;

private:
    // Choose among a class's rows of the history: the images that come back, the last ones of rows that are there
    // since, and of rows that are not. With the values of ValoresDeImagen.
    QString Volveran(DelPlan clase) const { return Imagenes(clase, "Primera", "min", "A"); }
    QString Quedaron(DelPlan clase) const { return Imagenes(clase, "Ultima", "max", "D"); }
    QString Faltaron(DelPlan clase) const { return Imagenes(clase, "Faltante", "max", "A"); }
    QString Imagenes(DelPlan clase, const QString &columna, const QString &cual, const QString &lado) const;
    QVariantList ValoresDeImagen() const { return reunidas ? QVariantList() : valores; }
    // Those images as h, beside the rows x of today.
    QString ConLasDeHoy(DelPlan clase, const QString &columna, const QString &imagenes) const;
    void FirmarServicios() const;
    int Anotar(DelPlan clase, const QString &lado, const QString &cuales, const QVariantList &suyos) const;
    // Whether the rows of two tables are of one key.
    static QString MismaClave(DelPlan clase, const QString &una, const QString &otra);
    QString PartesQueSeVan() const;
    QString ServiciosQueSeVan() const;
    Obstaculo Cambiada(DelPlan clase, const QString &clave, const QString &que) const;
    int Borrar(DelPlan clase, bool conHistoria) const;
    int Devolver(DelPlan clase, const QList<Obstaculo> &dadas, bool conHistoria) const;
    void DevolverConOtraClave(Deshecho &deshecho, const QList<Obstaculo> &dadas) const;
    int Copiar(DelPlan clase, const Obstaculo &dada, const QString &nueva) const;
    QString ClaveLibre(DelPlan clase) const;
    QVariantList FirmaDe(DelPlan clase) const
    {
        return TablaDe(clase).firma < 0 ? QVariantList() : QVariantList{firmante.operador, firmante.fecha()};
    }
    QString DeDespues(DelPlan clase) const;

    Conexion &conexion;
    const Firmante &firmante;
    const QString tipo;
    const qint64 primera;
    const QString donde;
    QVariantList valores;
    bool reunidas = false;
};

} // namespace qvx
