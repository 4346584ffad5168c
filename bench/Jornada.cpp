#include "bench/Jornada.h"

#include "support/Planificador.h"
#include "support/Procesos.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QTextStream>
#include <random>

namespace
{

// What another planner's work may bring about. Everything else is a fault.
const QRegularExpression Previsto(
    R"(ERR-ID:(7500018\|Se generó el archivo)"
    R"(|75000(10|14|42|96)\|(.* cambió este registro el |(El registro|La parte superior|La parte del servicio) ya no existe))"
    R"(|7500080\|ERROR$)" // why is in its details
    R"(|75000(03|06|29|30)\|No se encontró la ruta de la parte$))");

// The commands, each so many times.
struct Frecuencia {
    const char *enIngles;
    int veces;
};
const QMap<QString, Frecuencia> Mandos{
    {"parte nueva", {"new part", 4}},
    {"parte editada", {"edit part", 2}},
    {"baja", {"retire part", 1}},
    {"reactivación", {"reactivate part", 2}},
    {"servicio nuevo", {"new service", 4}},
    {"servicio cambiado", {"change service", 3}},
    {"servicio arrastrado", {"drag service", 3}},
    {"servicio eliminado", {"delete service", 1}},
    {"plan copiado", {"copy plan", 1}},
    {"exportación", {"export plan", 1}},
    {"plan importado", {"import plan", 1}},
};

QStringList Sorteo()
{
    QStringList todos;
    for (auto i = Mandos.cbegin(); i != Mandos.cend(); ++i)
        todos += QStringList(i->veces, i.key());
    return todos;
}

// What the process that carries the load on reads: lines of fields with tabs between them.
void Anotar(const QStringList &campos)
{
    QTextStream(stdout) << campos.join('\t') << Qt::endl;
}

// What a document holds: its services' numbers, "!" behind one without its three lines.
QStringList Contenido(const QString &documento)
{
    static const QRegularExpression precio("Precio=\"(\\d+)");
    QStringList numeros;
    for (const QString &servicio : documento.split("<TipoServicio ").mid(1))
        numeros.append(precio.match(servicio).captured(1) + (servicio.count("Cantidad=") == 3 ? "" : "!"));
    numeros.sort();
    return numeros;
}

void Comparar(const QString &que, const QStringList &hay, const QStringList &esperado)
{
    if (hay != esperado)
        Anotar({que + ": " + hay.join(", ") + " <> " + esperado.join(", ")});
}

struct Servicio {
    QString tipo;
    QString folio;
    QString parte;
    QString precio;
    QString Numero() const { return precio.section('.', 0, 0); } // no other service has it
};

class Jornada
{
public:
    explicit Jornada(const QStringList &argumentos);
    void Trabajar();

private:
    int Al(qsizetype cuantos) { return std::uniform_int_distribution<>(0, static_cast<int>(cuantos) - 1)(azar); }
    QString Uno(const QStringList &lista) { return lista.isEmpty() ? QString() : lista.at(Al(lista.size())); }
    bool Hecho();
    void Hacer(const QString &mando, const QString &nodo);
    void Exportar();
    void Importar();
    void Revisar() const;

    int segundos;
    Escenario escenario;
    int numero;
    std::mt19937 azar{std::random_device()()};
    QElapsedTimer reloj;
    qint64 esperado = 0;
    Planificador planificador;
    QString tipo;
    QList<Servicio> servicios; // what this planner was told to be saved
    int precios = 0;
    QStringList partes;
    QString documento; // the last one that was exported
    QString resultado;
};

Jornada::Jornada(const QStringList &argumentos)
    : segundos(argumentos.at(0).toInt())
    , escenario(argumentos.at(1))
    , numero(argumentos.at(2).toInt())
    , planificador(&escenario, {[this] { reloj.start(); },
                                [this] {
                                    esperado = reloj.elapsed();
                                    return false;
                                }})
{
    escenario.Pantalla(QString::number(Compartido));
    Encontrarse(argumentos.at(3), argumentos.at(4));
}

// Whether what was just done said nothing but questions and news.
bool Jornada::Hecho()
{
    for (const QString &mensaje : escenario.Personas().Tomar()) {
        const int estilo = mensaje.section('|', 0, 0).toInt();
        if ((estilo & 0xF) != 0)
            continue;
        if (!mensaje.contains(Previsto))
            Anotar({mensaje.simplified()});
        if (estilo == qvx::mensaje::Informacion)
            continue;
        resultado = "rechazado";
        static const QRegularExpression fecha("el \\d{4}-[-0-9]+ [0-9:]+");
        Anotar({"mensaje", mensaje.simplified().section('|', 3).replace(fecha, "el …").replace('|', ": ")});
    }
    return resultado == "hecho";
}

// On a part, and where the command is for a service, on one of this planner's in the active parts of the tree.
void Jornada::Hacer(const QString &mando, const QString &nodo)
{
    const QStringList activas = planificador.Nodos(false);
    QList<Servicio *> propios;
    for (Servicio &servicio : servicios)
        if (servicio.tipo == tipo && activas.contains(servicio.parte))
            propios.append(&servicio);
    Servicio *propio = propios.isEmpty() ? nullptr : propios.at(Al(propios.size()));
    const QString retirada = Uno(planificador.Nodos(true));

    if (mando == "parte nueva") {
        const QString clave = planificador.GuardarParte(Al(4) == 0 ? "N0000" : nodo, "Nuevo", "NUEVA");
        if (!clave.isEmpty())
            partes.append(tipo + "|" + clave);
    } else if (mando == "parte editada") {
        planificador.GuardarParte(nodo, "Editar", "EDITADA POR " + QString::number(numero));
    } else if (mando == "baja") {
        planificador.Mandar(nodo, "Eliminar");
    } else if (mando == "reactivación" && !retirada.isEmpty()) {
        planificador.Mandar(retirada, "Reactivar", 7500045, qvx::mensaje::Aceptar);
    } else if (mando == "servicio nuevo") {
        const QString precio = QString::number(100000 * (numero + 1) + ++precios);
        if (const QString folio = planificador.NuevoServicio(nodo, precio); !folio.isEmpty())
            servicios.append({tipo, folio, nodo, precio});
    } else if (mando == "servicio cambiado" && propio) { // the number stays, the cents change
        const QString precio = propio->Numero() + "." + QString::number(11 + Al(8)) + "5";
        if (!planificador.CambiarServicio(propio->parte, propio->folio, precio).isEmpty())
            propio->precio = precio;
    } else if (mando == "servicio arrastrado" && propio) {
        planificador.Mover(propio->parte, propio->folio, nodo);
        if (Hecho())
            propio->parte = nodo;
    } else if (mando == "servicio eliminado" && propio) {
        planificador.EliminarServicio(propio->parte, propio->folio);
        if (Hecho())
            servicios.removeAt(propio - servicios.data());
    } else if (mando == "plan copiado") {
        planificador.Copiar(QString::number(Copias + numero));
    } else if (mando == "exportación") {
        Exportar();
    } else if (mando == "plan importado") {
        Importar();
    }
}

// Of a moment: no service twice or without its lines, and none of this planner's, which nobody else moves, is missing.
void Jornada::Exportar()
{
    QFile archivo(escenario.Ruta("exportado.xml"));
    archivo.remove();
    planificador.Exportar(archivo.fileName());
    if (!Hecho() || !archivo.open(QIODevice::ReadOnly))
        return;
    documento = QString::fromUtf8(archivo.readAll());
    QStringList exportados = Contenido(documento);
    Comparar("Sin sus líneas", exportados.filter("!"), {});
    QStringList unicos = exportados;
    unicos.removeDuplicates();
    Comparar("Exportados dos veces", exportados, unicos);
    for (const Servicio &servicio : std::as_const(servicios))
        if (servicio.tipo == tipo)
            Comparar("No exportado", exportados.filter(servicio.Numero()), {servicio.Numero()});
}

// The last document, into a type that only this planner writes.
void Jornada::Importar()
{
    QFile archivo(escenario.Ruta("importado.xml"));
    if (documento.isEmpty() || !archivo.open(QIODevice::WriteOnly))
        return;
    static const QRegularExpression clave("<TipoEquipo Id=\"\\d+\"");
    const QString propio = QString("<TipoEquipo Id=\"%1\"").arg(Importados + numero);
    archivo.write(QString(documento).replace(clave, propio).toUtf8());
    archivo.close();
    planificador.Importar(archivo.fileName());
}

// Every service that was reported saved is there as it was saved last, with its three lines, and nothing else.
void Jornada::Revisar() const
{
    QStringList dichos;
    for (const Servicio &servicio : servicios)
        dichos.append(QStringList{servicio.tipo, servicio.folio, servicio.parte.mid(1),
                                  QString::number(servicio.precio.toDouble(), 'f', 3), "3"}
                          .join('|'));
    dichos.sort();
    QStringList hay = escenario.Filas(
        "SELECT rtrim(Te_Cve_Tipo_Equipo), rtrim(Pm_ID), rtrim(Tep_ID), CAST(round(Pm_Precio, 3) AS text), "
        "count(DISTINCT Pmd_Tipo) FROM Plan_Mantenimiento LEFT JOIN Plan_Mantenimiento_Detalle USING "
        "(Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID) WHERE Te_Cve_Tipo_Equipo < '1200' AND floor(Pm_Precio / 100000) = 1 + "
        + QString::number(numero) + " GROUP BY 1, 2, 3, 4");
    hay.sort();
    Comparar("Servicios", hay, dichos);
    const QStringList guardadas = escenario.Filas("SELECT Te_Cve_Tipo_Equipo, Tep_ID FROM Tipo_Equipo_Parte");
    for (const QString &parte : partes)
        if (!guardadas.contains(parte))
            Comparar("Falta la parte", {}, {parte});
}

void Jornada::Trabajar()
{
    const QStringList sorteo = Sorteo();
    for (const QDeadlineTimer fin(1000LL * segundos); !fin.hasExpired();) {
        escenario.ahora = QDateTime::currentDateTime();
        tipo = QString::number(numero < Planificadores / 2 || Al(2) == 0 ? Compartido : Propios + numero);
        planificador.ElegirTipo(tipo); // after a copy or an import its target is on the screen
        Hecho();
        escenario.Traza(true);
        esperado = -1;
        resultado = "hecho";
        const QString nodo = Uno(planificador.Nodos(false));
        const QString mando = nodo.isEmpty() ? "reactivación" : Uno(sorteo);
        Hacer(mando, nodo);
        Hecho();
        if (esperado >= 0)
            Anotar(
                {"mando", mando, QString::number(esperado), QString::number(escenario.Traza(true).size()), resultado});
    }
    Revisar();
}

} // namespace

QString EnIngles(const QString &mando)
{
    return Mandos.value(mando).enIngles;
}

void TrabajarComoPlanificador(const QStringList &argumentos)
{
    Jornada(argumentos).Trabajar();
}
