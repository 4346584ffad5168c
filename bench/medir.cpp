// Measures jobs of the real component against their baselines; bench/medir runs it. Results are lines of fields with
// tabs between them, on the standard output; --informe makes tables of all of them.

#include "bench/Informe.h"
#include "bench/Tareas.h"
#include "session/Aplicacion.h"

#include <QCommandLineParser>
#include <QFile>
#include <QTextStream>
#include <malloc.h>

namespace
{

// Peak of the process's memory since the last call of Olvidar, in KiB.
qint64 Pico()
{
    QFile estado("/proc/self/status");
    if (!estado.open(QIODevice::ReadOnly))
        qFatal("Sin /proc");
    for (const QByteArray &renglon : estado.readAll().split('\n'))
        if (renglon.startsWith("VmHWM:"))
            return renglon.mid(6).trimmed().split(' ').constFirst().toLongLong();
    qFatal("Sin VmHWM");
}

// Forgets the peak so far. Also what was freed before: the job would take from it unseen.
void Olvidar()
{
    malloc_trim(0);
    QFile marcas("/proc/self/clear_refs");
    if (!marcas.open(QIODevice::WriteOnly) || marcas.write("5") != 1)
        qFatal("No se pudo olvidar el pico de memoria");
}

// Peak of a job in a process that has not done it before, in KiB beyond what it held.
qint64 Memoria(const QString &tarea, const Base &base, const QString &documento)
{
    Taller taller(base, false);
    taller.Persona().archivo = documento;
    if (tarea != "arbol")
        taller.Elegir(tipos::Plan);
    Olvidar();
    const qint64 antes = Pico();
    if (tarea == "arbol")
        taller.Elegir(tipos::Plan);
    else
        taller.Pulsar(tarea == "exportar" ? "B1" : "B2");
    return Pico() - antes;
}

} // namespace

int main(int argc, char **argv)
{
    qvx::Aplicacion aplicacion(argc, argv);
    QCommandLineParser linea;
    linea.addOption({"veces", "Size of the plan.", "n", "1"});
    linea.addOption({"rondas", "Rounds that count.", "n", "9"});
    linea.addOption({"solo", "The component without the baselines."});
    linea.addOption({"postgres", "On the server instead of the embedded engine."});
    linea.addOption({"lejos", "Of an ordinary plan, on a server so many milliseconds there and back away.", "ms", "0"});
    linea.addOption({"memoria",
                     "Peak of memory of arbol, exportar or importar instead of times; with the document's file.",
                     "document"});
    linea.addOption({"informe", "Only the tables of what was measured into a folder.", "folder"});
    linea.addPositionalArgument("tareas", "Jobs, all without them.");
    linea.process(aplicacion);

    QTextStream salida(stdout);
    if (linea.isSet("informe")) {
        salida << Informe(linea.value("informe"));
        return 0;
    }
    const int lejos = linea.value("lejos").toInt();
    const Tamano tamano = (lejos > 0 ? Ordinario : Tamano()).Por(linea.value("veces").toInt());
    const auto crear = linea.isSet("postgres") ? &BaseEnServidor : &BaseEnArchivo;
    const auto nuestra = lejos > 0 ? BaseLejana(tamano, lejos) : crear(tamano);
    if (linea.isSet("memoria")) {
        const QString tarea = linea.positionalArguments().value(0);
        salida << tarea << '\t' << Memoria(tarea, *nuestra, linea.value("memoria")) << '\t'
               << (tarea == "arbol" ? tamano.partes : tamano.lineas) << Qt::endl;
        return 0;
    }
    const bool solo = linea.isSet("solo");
    const auto ajena = solo ? nullptr : crear(tamano);
    int faltas = 0;
    const QStringList nombres = linea.positionalArguments().isEmpty() ? Tareas::Nombres() : linea.positionalArguments();
    for (const QString &nombre : nombres) {
        Tareas tareas = solo ? Tareas(*nuestra, tamano) : Tareas(*nuestra, *ajena, tamano);
        const Tarea tarea = tareas.Preparar(nombre);
        if (tarea.debidas != 0 && tarea.sentencias != tarea.debidas) {
            ++faltas;
            qWarning("%s: %lld sentencias, debían ser %lld", qPrintable(nombre), tarea.sentencias, tarea.debidas);
        }
        const Medida medida = Medir(tarea, linea.value("rondas").toInt(), solo);
        salida << nombre << '\t' << medida.nuestro << '\t' << medida.crudo << '\t' << tarea.limite << '\t'
               << tarea.sentencias << Qt::endl;
    }
    return faltas == 0 ? 0 : 1;
}
