#pragma once

#include "plan/DatosDePrograma.h"

#include <QStringList>

class QCommandLineParser;

// What the command line says of a programme or a report. What it leaves out is as it is kept.
struct PedidoDePrograma {
    enum class Reporte { Ninguno, Plan, Hojas, Materiales };

    bool programa = false;
    Reporte reporte = Reporte::Ninguno;
    QString clave;   // of the equipment type
    QString archivo; // CSV of a programme, PDF of a report
    QString ics;     // also the calendar, "" for none
    std::optional<QDate> desde;
    QMap<QString, double> usos;
    QMap<QString, double> lecturas;
    std::optional<int> equipos;
    std::optional<double> diasSemana;
    std::optional<qvx::DatosDePrograma::Inicio> inicio;
    std::optional<qvx::DatosDePrograma::Descanso> descanso;
    QString festivos; // file with a date in each line
    // Of a report.
    bool a4 = false;
    std::optional<QDate> mes; // its first day; all of the year without it
    QStringList folios;
    bool conCostos = false;
    bool conLineas = false;
    bool porParte = false;
    bool unaRonda = false;

    bool Hay() const { return programa || reporte != Reporte::Ninguno; }
    // Takes its file, and a report's equipment type, from the arguments that no option names. Why the line is wrong, ""
    // when it is right.
    QString Leer(const QCommandLineParser &lector, QStringList &sueltos);
    // The data that are kept, changed by what the line says. Raises an ErrorEjecucion for a file of holidays that
    // cannot be read.
    qvx::DatosDePrograma Sobre(qvx::DatosDePrograma datos) const;
    // The options that go with --programa and --reporte; the names of those that take a value, and of those that do
    // not.
    static QStringList ConValor();
    static QStringList SinValor();

private:
    QString LeerDatos(const QCommandLineParser &lector);
    QString LeerNumeros(const QCommandLineParser &lector);
    QString LeerReporte(const QCommandLineParser &lector);
};
