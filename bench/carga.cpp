// Many planners on one server at the same time, each with a screen in a process of its own: carga [SECONDS], beside
// tools/con_servidor. Prints what docs/fiabilidad.md says of it, and fails when a planner was told what is not so.

#include "bench/Jornada.h"
#include "bench/Maquina.h"
#include "support/Planificador.h"
#include "support/Procesos.h"

#include <QDeadlineTimer>
#include <QMap>
#include <QRegularExpression>
#include <QTextStream>
#include <algorithm>

namespace
{

struct Mando {
    QList<int> tiempos; // milliseconds
    QList<int> sentencias;
    int rechazados = 0;
};

// The value below which so many hundredths of them are.
int Cuantil(QList<int> valores, int centesimas)
{
    std::sort(valores.begin(), valores.end());
    return valores.isEmpty() ? 0 : valores.at((valores.size() * centesimas + 99) / 100 - 1);
}

void Sembrar(const Escenario &escenario)
{
    SembrarPlan(escenario);
    escenario.Correr(
        "INSERT INTO Tipo_Equipo SELECT CAST(t AS text), 'DE CARGA', 'AC' FROM (SELECT 1000 AS t UNION ALL "
        "SELECT 100 * s + n FROM generate_series(11, 13) s, generate_series(0, 7) n) todos");
    escenario.Correr("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) SELECT "
                     "Te_Cve_Tipo_Equipo, '000' || n, '0000', 'PARTE ' || n FROM Tipo_Equipo, generate_series(1, 3) n "
                     "WHERE Te_Descripcion = 'DE CARGA' AND Te_Cve_Tipo_Equipo < '1200'");
}

// Keys are unique where planners make them, and nothing hangs from what is gone.
void Comprobar(const Escenario &escenario)
{
    for (const char *sql :
         {"SELECT 'parte', Te_Cve_Tipo_Equipo, Tep_Numero FROM Tipo_Equipo_Parte GROUP BY 1, 2, 3 HAVING count(*) > 1",
          "SELECT 'servicio', Te_Cve_Tipo_Equipo, Pm_Numero FROM Plan_Mantenimiento GROUP BY 1, 2, 3 HAVING count(*) "
          "> 1",
          // Those of an import are numbered within their service.
          "SELECT 'renglón', Te_Cve_Tipo_Equipo, Pmd_Numero FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo "
          "BETWEEN '1000' AND '1299' GROUP BY 1, 2, 3 HAVING count(*) > 1",
          "SELECT 'renglón sin servicio', d.* FROM Plan_Mantenimiento_Detalle d LEFT JOIN Plan_Mantenimiento s USING "
          "(Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID) WHERE s.Pm_ID IS NULL",
          "SELECT 'servicio sin parte', s.* FROM Plan_Mantenimiento s LEFT JOIN Tipo_Equipo_Parte p USING "
          "(Te_Cve_Tipo_Equipo, Tep_ID) WHERE p.Tep_ID IS NULL"})
        if (const QStringList filas = escenario.Filas(sql); !filas.isEmpty())
            qFatal("%s", qPrintable(filas.join('\n')));
}

void Renglon(QTextStream &salida, const QString &nombre, const QString &rechazados, const Mando &mando, int segundos)
{
    const auto cuantos = mando.tiempos.size();
    salida << "| " << nombre << " | " << cuantos - mando.rechazados << " | " << rechazados << " | "
           << QString::number(static_cast<double>(cuantos) / segundos, 'f', 2) << " | " << Cuantil(mando.tiempos, 50)
           << " | " << Cuantil(mando.tiempos, 95) << " | " << Cuantil(mando.tiempos, 100) << " | "
           << (mando.sentencias.isEmpty() ? QString() : QString::number(Cuantil(mando.sentencias, 50))) << " |\n";
}

// All commands of the screen, in a plan of their own and in one that they share.
void Carga(QTextStream &salida, int segundos)
{
    const Escenario escenario;
    Sembrar(escenario);
    QMap<QString, Mando> mandos;
    QMap<QString, int> mensajes;
    Mando todos;
    QStringList faltas;
    const QStringList orden{"--planificador", QString::number(segundos)};
    for (const QString &dicho : CorrerJuntos(escenario, Planificadores, orden)) {
        for (const QString &renglon : dicho.split('\n', Qt::SkipEmptyParts)) {
            const QStringList campos = renglon.split('\t');
            if (campos.constFirst() == "mando") {
                Mando &mando = mandos[campos.at(1)];
                mando.tiempos.append(campos.at(2).toInt());
                todos.tiempos.append(campos.at(2).toInt());
                if (campos.at(4) == "hecho")
                    mando.sentencias.append(campos.at(3).toInt());
                else
                    ++mando.rechazados;
            } else if (campos.constFirst() == "mensaje") {
                ++mensajes[campos.at(1)];
            } else {
                faltas.append(renglon);
            }
        }
    }
    if (!faltas.isEmpty())
        qFatal("%s", qPrintable(faltas.join('\n')));
    Comprobar(escenario);

    salida << Maquina() << ", " << escenario.Correr("SELECT 'PostgreSQL ' || split_part(version(), ' ', 2)").toString()
           << ". " << Planificadores << " planners worked for " << segundos << " s.\n\n"
           << "| Command | Done | Refused | per second | Median ms | 95 % ms | Longest ms | Statements, median |\n"
           << "|---|--:|--:|--:|--:|--:|--:|--:|\n";
    for (auto i = mandos.cbegin(); i != mandos.cend(); ++i)
        Renglon(salida, EnIngles(i.key()), QString::number(i->rechazados), i.value(), segundos);
    Renglon(salida, "all", "", todos, segundos);
    salida << "\n| Messages that another planner's work brought about | Times |\n|---|--:|\n";
    for (auto i = mensajes.cbegin(); i != mensajes.cend(); ++i)
        salida << "| " << i.key() << " | " << i.value() << " |\n";
}

// Changes a service on the screen, and then repeats that save's statements as fast as the server takes them.
int RepetirGuardado(const QStringList &argumentos)
{
    Escenario escenario(argumentos.at(1));
    escenario.Pantalla(QString::number(Propios + argumentos.at(2).toInt()));
    Planificador planificador(&escenario);
    const QString folio = planificador.NuevoServicio("N0001", "70");
    if (planificador.CambiarServicio("N0001", folio, "71").isEmpty())
        return 1;
    const QStringList renglones = escenario.Traza(true);
    const auto inicio = renglones.lastIndexOf("-\tBEGIN");
    const QStringList guardado = renglones.mid(inicio + 1, renglones.lastIndexOf("-\tCOMMIT") - inicio - 1);
    auto &conexion = qvx::Sesion::Actual().Conexion();
    Encontrarse(argumentos.at(3), argumentos.at(4));
    int veces = 0;
    for (const QDeadlineTimer fin(1000LL * argumentos.at(0).toInt()); !fin.hasExpired(); ++veces) {
        conexion.BeginTrans();
        for (const QString &renglon : guardado)
            conexion.Execute(renglon.section('\t', 1));
        conexion.CommitTrans();
    }
    QTextStream(stdout) << veces << ' ' << guardado.size() + 2 << Qt::endl;
    return 0;
}

// How many saves the server takes: the statements of a service's save, from one planner, and from all of them without a
// pause, each on an equipment type of their own. Every one is registered.
void Guardados(QTextStream &salida, int segundos)
{
    salida << "\n| Planners, each on a type of their own | Saves per second | Statements per second |\n|--:|--:|--:|\n";
    int uno = 0;
    int todos = 0;
    int sentencias = 0;
    for (const int cuantos : {1, Planificadores}) {
        const Escenario escenario;
        Sembrar(escenario);
        int total = 0;
        for (const QString &dicho : CorrerJuntos(escenario, cuantos, {"--guardar", QString::number(segundos)})) {
            total += dicho.section(' ', 0, 0).toInt();
            sentencias = dicho.section(' ', 1).toInt();
        }
        const int registrados = escenario.Correr("SELECT count(*) FROM Registro_Cambio").toInt();
        if (total == 0 || registrados != total + 2 * cuantos)
            qFatal("%d guardados, %d registrados", total, registrados);
        (cuantos == 1 ? uno : todos) = total / segundos;
        salida << "| " << cuantos << " | " << total / segundos << " | " << total / segundos * sentencias << " |\n";
    }
    salida << "\nA save takes " << sentencias << " statements. A planner who saves once a minute, and reads four times "
           << "as many between two\nsaves, asks for " << 5 * sentencias << " a minute: at half of the rate of all, "
           << "this server carries about " << todos * 60 / 2 / 5 << " such planners\nwhose saves spread over equipment "
           << "types. One type alone carries about " << uno * 60 / 2 << " saves a minute at half its rate.\n";
}

} // namespace

int main(int argc, char **argv)
{
    qvx::Aplicacion aplicacion(argc, argv);
    const QStringList argumentos = QCoreApplication::arguments();
    if (argumentos.value(1) == "--guardar")
        return RepetirGuardado(argumentos.mid(2));
    if (argumentos.value(1) == "--planificador") {
        TrabajarComoPlanificador(argumentos.mid(2));
        return 0;
    }
    const int segundos = argumentos.value(1, "60").toInt();
    if (segundos < 2)
        qFatal("Uso: carga [SEGUNDOS]");
    qputenv("QVX_PRUEBA_MOTOR", "postgres");
    QTextStream salida(stdout);
    Carga(salida, segundos);
    Guardados(salida, segundos / 2);
    return 0;
}
