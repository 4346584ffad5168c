#include "app/programa/PaqueteDelMes.h"

#include "app/programa/Ics.h"
#include "data/ErrorEjecucion.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace programa
{

QList<int> FilasDelMes(const Programa &programa, int mes)
{
    QList<int> filas;
    for (int i = 0; i < programa.filas.size(); ++i)
        if (programa.Mes(programa.filas.at(i)) == mes)
            filas.append(i);
    return filas;
}

PaqueteDelMes PaqueteDelMes::En(const QString &ruta)
{
    return {ruta + " hojas.pdf", ruta + " surtido.pdf", ruta + " calendario.ics"};
}

// All three are made in a folder of their own, and put in their places together.
bool PaqueteDelMes::Escribir(const PlanMedido &medido, const Programa &programa, int mes, const Encargo &encargo,
                             impreso::Papel papel, const impreso::Avance &avance) const
{
    for (const QString &archivo : Archivos())
        if (QFileInfo::exists(archivo))
            qvx::Rechazar("No se escribió el paquete: " + archivo + " ya existe. Elija otro nombre o quítelo.");
    const QTemporaryDir carpeta(QFileInfo(hojas).absolutePath() + "/.quorvex-XXXXXX");
    if (!carpeta.isValid())
        qvx::Rechazar("No se pudo escribir el paquete: " + carpeta.errorString());
    const QList<int> filas = FilasDelMes(programa, mes);
    const QString nombre = programa.meses.Nombre(mes);
    const auto en = [&](const QString &archivo) { return carpeta.filePath(QFileInfo(archivo).fileName()); };
    if (!impreso::EscribirPdf(en(hojas), HojasDeTrabajo(medido, LaboresDe(medido, programa, filas), encargo), papel,
                              avance)
        || !impreso::EscribirPdf(
            en(surtido),
            ReporteDeMateriales(medido, VecesDe(medido, programa, filas), "Lista de surtido, " + nombre, encargo, true),
            papel, avance))
        return false;
    EscribirIcs(en(calendario), Ics(medido, programa, encargo.base, QDateTime::currentDateTimeUtc(), filas));
    QStringList puestos;
    for (const QString &archivo : Archivos()) {
        if (QFile::rename(en(archivo), archivo)) { // never over another
            puestos.append(archivo);
            continue;
        }
        for (const QString &puesto : std::as_const(puestos))
            QFile::remove(puesto);
        qvx::Rechazar("No se pudo escribir el paquete: " + archivo + " no se puede poner en su lugar.");
    }
    return true;
}

} // namespace programa
