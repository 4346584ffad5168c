#include "bench/Informe.h"

#include "bench/Maquina.h"

#include <QFile>
#include <QMap>
#include <QTextStream>
#include <cmath>
#include <libpq-fe.h>
#include <libxml/xmlversion.h>
#include <sqlite3.h>

namespace
{

constexpr double MayorExponente = 1.1;

const QMap<QString, QString> Nombres{
    {"arbol", "tree, as shown"},
    {"arbol_y_control", "tree, the toolkit's own tree part of the baseline"},
    {"lista", "services list"},
    {"abrir", "opening a service"},
    {"guardar", "saving a service"},
    {"exportar", "export of the plan"},
    {"importar", "validation and import"},
    {"copiar", "copy of the plan"},
    {"arranque", "start to a filled tree"},
};

QList<QStringList> Leer(const QString &archivo)
{
    QFile leido(archivo);
    if (!leido.open(QIODevice::ReadOnly))
        qFatal("Falta %s", qPrintable(archivo));
    QList<QStringList> renglones;
    for (const QString &renglon : QString::fromUtf8(leido.readAll()).split('\n', Qt::SkipEmptyParts))
        renglones.append(renglon.split('\t'));
    return renglones;
}

QString Cifras(double valor, int decimales = 1)
{
    return QString::number(valor, 'f', decimales);
}

QString Faltante(bool falta)
{
    return falta ? " **missed**" : "";
}

void Renglon(QTextStream &salida, const QStringList &celdas)
{
    salida << "| " << celdas.join(" | ") << " |\n";
}

// The jobs beside their baselines.
void Comparacion(QTextStream &salida, const QString &titulo, const QList<QStringList> &tareas)
{
    salida << "\n### " << titulo << "\n\n| Job | Ours, ms | Raw, ms | Ratio | At most | Statements |\n"
           << "|---|--:|--:|--:|--:|--:|\n";
    for (const QStringList &tarea : tareas) {
        const double nuestro = tarea.at(1).toDouble();
        const double crudo = tarea.at(2).toDouble();
        const double limite = tarea.at(3).toDouble();
        Renglon(salida, {Nombres.value(tarea.at(0)), Cifras(nuestro), Cifras(crudo), Cifras(nuestro / crudo, 2),
                         limite > 0 ? tarea.at(3) + Faltante(nuestro / crudo > limite) : QString(), tarea.value(4)});
    }
}

// Milliseconds of each size of plan.
void DeLejos(QTextStream &salida, const QString &carpeta)
{
    const auto treinta = Leer(carpeta + "/lejos.1");
    const auto trescientas = Leer(carpeta + "/lejos.10");
    salida
        << "\n### Shared server, 20 ms away there and back\n\n| Job | 30 parts, ms | 300 parts, ms |\n|---|--:|--:|\n";
    for (qsizetype i = 0; i < treinta.size(); ++i)
        Renglon(salida, {Nombres.value(treinta.at(i).at(0)), Cifras(treinta.at(i).at(1).toDouble(), 0),
                         Cifras(trescientas.at(i).at(1).toDouble(), 0)});
}

// The exponent b of time = a * size^b, by least squares of the logarithms; sizes without a time do not count.
double Exponente(const QMap<int, double> &tiempos)
{
    double n = 0;
    double sx = 0;
    double sy = 0;
    double sxx = 0;
    double sxy = 0;
    for (auto i = tiempos.cbegin(); i != tiempos.cend(); ++i) {
        if (i.value() <= 0)
            continue;
        const double x = std::log(i.key());
        const double y = std::log(i.value());
        n += 1;
        sx += x;
        sy += y;
        sxx += x * x;
        sxy += x * y;
    }
    return (n * sxy - sx * sy) / (n * sxx - sx * sx);
}

void Crecimiento(QTextStream &salida, const QString &carpeta)
{
    QStringList orden;
    QMap<QString, QMap<int, double>> nuestros;
    QMap<QString, QMap<int, double>> crudos;
    for (const int veces : {1, 2, 4, 8}) {
        for (const QStringList &tarea : Leer(carpeta + "/veces." + QString::number(veces))) {
            if (!orden.contains(tarea.at(0)))
                orden.append(tarea.at(0));
            nuestros[tarea.at(0)][veces] = tarea.at(1).toDouble();
            crudos[tarea.at(0)][veces] = tarea.at(2).toDouble();
        }
    }
    salida << "\n### Growth, embedded engine, milliseconds\n\n"
           << "| Job | 1 × | 2 × | 4 × | 8 × | Exponent | Of the baseline, to 4 × |\n|---|--:|--:|--:|--:|--:|--:|\n";
    for (const QString &tarea : std::as_const(orden)) {
        QStringList celdas{Nombres.value(tarea)};
        for (const double tiempo : std::as_const(nuestros[tarea]))
            celdas.append(Cifras(tiempo));
        const double exponente = Exponente(nuestros[tarea]);
        celdas.append(Cifras(exponente, 2) + Faltante(exponente > MayorExponente));
        celdas.append(Cifras(Exponente(crudos[tarea]), 2));
        Renglon(salida, celdas);
    }
}

// Peak beyond what the process held before, for each part or line that the larger plan has more.
void Memoria(QTextStream &salida, const QString &carpeta)
{
    const auto una = Leer(carpeta + "/memoria.1");
    const auto cuatro = Leer(carpeta + "/memoria.4");
    salida << "\n### Peak memory, embedded engine\n\n| Job | 1 ×, MiB | 4 ×, MiB | Each more, bytes |\n"
           << "|---|--:|--:|---|\n";
    for (qsizetype i = 0; i < una.size(); ++i) {
        const QString tarea = una.at(i).at(0);
        const double menos = una.at(i).at(1).toDouble();
        const double mas = cuatro.at(i).at(1).toDouble();
        const double cosas = una.at(i).at(2).toDouble();
        Renglon(salida,
                {Nombres.value(tarea), Cifras(menos / 1024), Cifras(mas / 1024),
                 Cifras((mas - menos) * 1024 / (3 * cosas), 0) + (tarea == "arbol" ? " per part" : " per line")});
    }
}

} // namespace

QString Informe(const QString &carpeta)
{
    QString texto;
    QTextStream salida(&texto);
    salida << '\n'
           << Maquina() << ", SQLite " << sqlite3_libversion() << ", PostgreSQL " << PQlibVersion() / 10000 << '.'
           << PQlibVersion() % 10000 << ", libxml2 " << LIBXML_DOTTED_VERSION << ".\n";
    Comparacion(salida, "Embedded engine", Leer(carpeta + "/veces.1") + Leer(carpeta + "/arranque"));
    Comparacion(salida, "Shared server, loopback, waiting for the disk", Leer(carpeta + "/servidor"));
    DeLejos(salida, carpeta);
    Crecimiento(salida, carpeta);
    Memoria(salida, carpeta);
    return texto + '\n';
}
