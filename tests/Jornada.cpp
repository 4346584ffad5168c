#include "Jornada.h"

#include "support/Planificador.h"
#include "support/Procesos.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <random>

namespace
{

// What a document holds: its services' numbers, "!" behind one without its three lines.
QStringList Contenido(const QString &ruta)
{
    QFile archivo(ruta);
    if (!archivo.open(QIODevice::ReadOnly))
        return {"sin archivo"};
    QStringList numeros;
    QXmlStreamReader lector(&archivo);
    int lineas = 0;
    while (!lector.atEnd()) {
        const auto pieza = lector.readNext();
        const bool servicio = lector.name() == QLatin1String("TipoServicio");
        if (pieza == QXmlStreamReader::StartElement && servicio) {
            numeros.append(lector.attributes().value("Precio").toString().section('.', 0, 0));
            lineas = 0;
        } else if (pieza == QXmlStreamReader::StartElement && lector.attributes().hasAttribute("Cantidad")) {
            ++lineas;
        } else if (pieza == QXmlStreamReader::EndElement && servicio && lineas != 3) {
            numeros.last() += "!";
        }
    }
    return lector.hasError() ? QStringList{lector.errorString()} : numeros;
}

class Jornada
{
public:
    explicit Jornada(const QStringList &argumentos);
    void Trabajar();

private:
    struct Servicio {
        QString parte;
        QString precio;
    };
    struct Mando {
        int peso;
        QString nombre;
        std::function<void(const QString &nodo)> correr; // on an active part
    };

    int Al(qsizetype cuantos) { return std::uniform_int_distribution<>(0, static_cast<int>(cuantos) - 1)(azar); }
    QString Uno(const QStringList &lista) { return lista.isEmpty() ? QString() : lista.at(Al(lista.size())); }
    QString Activa() { return Uno(planificador.Nodos(false)); }
    QString Propia(); // an active part that this planner made
    void ConServicio(const std::function<void(const QString &folio, Servicio &servicio)> &pasos);
    void Escribir(const QStringList &campos);
    void Apuntar(const QString &folio, const Servicio &servicio);
    bool Hecho();
    qint64 Sentencias();
    void Hacer(const Mando &mando);
    QList<Mando> DePartes();
    QList<Mando> DeServicios();
    QList<Mando> DePlanes();
    void Exportar();
    void Importar();

    Escenario escenario;
    int numero;
    std::mt19937 azar;
    QFile diario;
    QElapsedTimer reloj;
    qint64 esperado = 0;
    Planificador planificador;
    qint64 leidoDeTraza = 0;
    int precios = 0;
    QString tipo;
    QStringList propias; // parts of this planner's, as "type|node"
    QHash<QString, QHash<QString, Servicio>> servicios;
    QStringList dichos;
};

Jornada::Jornada(const QStringList &argumentos)
    : escenario(argumentos.at(0))
    , numero(argumentos.at(1).toInt())
    , azar(argumentos.at(2).toUInt() + static_cast<unsigned>(numero))
    , diario(argumentos.at(3))
    , planificador(escenario, {[this] { reloj.start(); },
                               [this] {
                                   esperado = reloj.elapsed();
                                   return false;
                               }})
{
    if (!diario.open(QIODevice::WriteOnly))
        qFatal("%s", qPrintable(diario.errorString()));
    // Somebody else has just put a part below the one that is deleted.
    escenario.Personas().ResponderSiempre(7500046, qvx::mensaje::No);
    escenario.Pantalla(Compartido);
    Encontrarse(argumentos.at(4), argumentos.at(5));
}

void Jornada::Escribir(const QStringList &campos)
{
    diario.write((campos.join(QLatin1Char('\t')) + "\n").toUtf8());
}

QString Jornada::Propia()
{
    QStringList nodos = planificador.Nodos(false);
    nodos.removeIf([this](const QString &nodo) { return !propias.contains(tipo + "|" + nodo); });
    return Uno(nodos);
}

// One of this planner's services in the active parts of the tree.
void Jornada::ConServicio(const std::function<void(const QString &folio, Servicio &servicio)> &pasos)
{
    const QStringList activas = planificador.Nodos(false);
    QStringList folios = servicios[tipo].keys();
    folios.removeIf([&](const QString &folio) { return !activas.contains(servicios[tipo][folio].parte); });
    folios.sort();
    Servicio servicio;
    if (const QString folio = Uno(folios); !folio.isEmpty())
        pasos(folio, servicio = servicios[tipo][folio]);
}

// An empty part: deleted.
void Jornada::Apuntar(const QString &folio, const Servicio &servicio)
{
    if (servicio.parte.isEmpty())
        servicios[tipo].remove(folio);
    else
        servicios[tipo].insert(folio, servicio);
    Escribir({"servicio", QString::number(QDateTime::currentMSecsSinceEpoch()), tipo, folio, servicio.parte.mid(1),
              servicio.precio});
}

// Whether the command that was just given said nothing but questions.
bool Jornada::Hecho()
{
    bool hecho = true;
    for (const QString &mensaje : escenario.Personas().Tomar()) {
        const int estilo = mensaje.section('|', 0, 0).toInt();
        if ((estilo & 0xF) != 0)
            continue;
        dichos.append(mensaje);
        hecho = hecho && estilo == qvx::mensaje::Informacion;
    }
    return hecho;
}

qint64 Jornada::Sentencias()
{
    QFile traza(qEnvironmentVariable("QVX_TRAZA"));
    if (!traza.open(QIODevice::ReadOnly) || !traza.seek(leidoDeTraza))
        qFatal("Sin traza");
    const QByteArray nueva = traza.readAll();
    leidoDeTraza += nueva.size();
    return nueva.count('\n');
}

void Jornada::Hacer(const Mando &mando)
{
    const QString nodo = Activa();
    if (nodo.isEmpty() && mando.nombre != "parte nueva")
        return;
    esperado = -1;
    mando.correr(nodo);
    Hecho();
    const qint64 sentencias = Sentencias();
    for (const QString &dicho : dichos)
        Escribir({"mensaje", QString(dicho).replace(QRegularExpression("[\\t\\r\\n]+"), " ")});
    if (esperado >= 0)
        Escribir({"mando", mando.nombre, QString::number(esperado), QString::number(sentencias),
                  dichos.filter(QRegularExpression("^(16|48)\\|")).isEmpty() ? "hecho" : "rechazado"});
    dichos.clear();
}

QList<Jornada::Mando> Jornada::DePartes()
{
    const QString yo = QString::number(numero);
    const auto nueva = [this, yo](const QString &nodo) {
        const QString clave = planificador.NuevaParte(Al(4) == 0 || nodo.isEmpty() ? "N0000" : nodo, "PARTE DE " + yo);
        if (clave.isEmpty())
            return;
        propias.append(tipo + "|N" + clave);
        Escribir({"parte", tipo, clave});
    };
    const auto baja = [this](const QString &) {
        if (const QString propia = Propia(); !propia.isEmpty())
            planificador.Retirar(propia);
    };
    const auto reactivacion = [this](const QString &) {
        if (const QString retirada = Uno(planificador.Nodos(true)); !retirada.isEmpty())
            planificador.Reactivar(retirada);
    };
    const auto eliminada = [this](const QString &) {
        const QString propia = Propia();
        if (propia.isEmpty() || planificador.TieneHijas(propia))
            return;
        planificador.EliminarParte(propia);
        if (Hecho() && !planificador.Nodos(false).contains(propia))
            Escribir({"parte eliminada", tipo, propia.mid(1)});
    };
    return {
        {20, "parte nueva", nueva},
        {8, "parte editada", [this, yo](const QString &nodo) { planificador.EditarParte(nodo, "EDITADA POR " + yo); }},
        {8, "etiqueta", [this, yo](const QString &nodo) { planificador.Rotular(nodo, "ROTULADA POR " + yo); }},
        {5, "baja", baja},
        {5, "reactivación", reactivacion},
        {4, "parte eliminada", eliminada},
    };
}

QList<Jornada::Mando> Jornada::DeServicios()
{
    const auto nuevo = [this](const QString &nodo) {
        const QString precio = QString::number(100000 * (numero + 1) + ++precios);
        if (const QString folio = planificador.NuevoServicio(nodo, precio); !folio.isEmpty())
            Apuntar(folio, {nodo, precio});
    };
    // The number stays, the cents change.
    const auto cambiado = [this](const QString &folio, Servicio &servicio) {
        servicio.precio = servicio.precio.section('.', 0, 0) + "." + QString::number(11 + Al(8)) + "5";
        if (planificador.CambiarServicio(servicio.parte, folio, servicio.precio))
            Apuntar(folio, servicio);
    };
    const auto movido = [this](const QString &folio, Servicio &servicio) {
        const QString destino = Activa();
        planificador.Mover(servicio.parte, folio, destino);
        if (Hecho())
            Apuntar(folio, {destino, servicio.precio});
    };
    const auto eliminado = [this](const QString &folio, Servicio &servicio) {
        planificador.EliminarServicio(servicio.parte, folio);
        if (Hecho())
            Apuntar(folio, {{}, servicio.precio});
    };
    return {
        {16, "servicio nuevo", nuevo},
        {12, "servicio cambiado", [=, this](const QString &) { ConServicio(cambiado); }},
        {14, "servicio arrastrado", [=, this](const QString &) { ConServicio(movido); }},
        {4, "servicio eliminado", [=, this](const QString &) { ConServicio(eliminado); }},
    };
}

// After a copy or an import its target is on the screen: the next command's type is chosen anew.
QList<Jornada::Mando> Jornada::DePlanes()
{
    return {
        {3, "plan copiado", [this](const QString &) { planificador.Copiar(Tipo(Serie::Copias, numero)); }},
        {5, "exportación", [this](const QString &) { Exportar(); }},
        {3, "plan importado", [this](const QString &) { Importar(); }},
    };
}

void Jornada::Exportar()
{
    const QString ruta = escenario.Ruta("exportado.xml");
    QFile::remove(ruta);
    const qint64 inicio = QDateTime::currentMSecsSinceEpoch();
    planificador.Exportar(ruta);
    if (Hecho())
        Escribir({"exportación", QString::number(inicio), tipo, Contenido(ruta).join(',')});
}

// The last document, into a type that only this planner writes: what is there afterwards is what it held.
void Jornada::Importar()
{
    const QString propio = Tipo(Serie::Importaciones, numero);
    QFile documento(escenario.Ruta("exportado.xml"));
    QFile otro(escenario.Ruta("importado.xml"));
    if (!documento.open(QIODevice::ReadOnly) || !otro.open(QIODevice::WriteOnly))
        return;
    const QRegularExpression clave("<TipoEquipo Id=\"\\d+\"");
    otro.write(QString::fromUtf8(documento.readAll()).replace(clave, "<TipoEquipo Id=\"" + propio + "\"").toUtf8());
    otro.close();
    planificador.Importar(otro.fileName());
    if (!Hecho())
        return;
    QStringList llegados =
        escenario.Filas("SELECT CAST(floor(Pm_Precio) AS text) || CASE WHEN 3 = (SELECT count(*) FROM "
                        "Plan_Mantenimiento_Detalle d WHERE d.Te_Cve_Tipo_Equipo = s.Te_Cve_Tipo_Equipo AND d.Pm_ID = "
                        "s.Pm_ID AND d.Tep_ID = s.Tep_ID) THEN '' ELSE '!' END FROM Plan_Mantenimiento s WHERE "
                        "Te_Cve_Tipo_Equipo = '"
                        + propio + "'");
    QStringList enviados = Contenido(otro.fileName());
    llegados.sort();
    enviados.sort();
    Escribir({"importación", llegados == enviados ? "igual" : enviados.join(',') + " <> " + llegados.join(',')});
}

void Jornada::Trabajar()
{
    const QList<Mando> mandos = DePartes() + DeServicios() + DePlanes();
    std::vector<int> pesos;
    for (const Mando &mando : mandos)
        pesos.push_back(mando.peso);
    std::discrete_distribution<> cual(pesos.begin(), pesos.end());
    for (const QDeadlineTimer fin(1000LL * Segundos()); !fin.hasExpired();) {
        escenario.ahora = QDateTime::currentDateTime();
        tipo = numero < Planificadores / 2 || Al(2) == 0 ? Compartido : Tipo(Serie::Propia, numero);
        planificador.ElegirTipo(tipo);
        Hecho();
        Sentencias();
        Hacer(mandos.at(cual(azar)));
    }
    Escribir({"fin"});
}

} // namespace

QString Tipo(Serie serie, int numero)
{
    return QString::number(100 * static_cast<int>(serie) + numero);
}

int Segundos()
{
    const int segundos = qEnvironmentVariableIntValue("QVX_PRUEBA_SEGUNDOS");
    return segundos > 0 ? segundos : 6;
}

void TrabajarComoPlanificador(const QStringList &argumentos)
{
    Jornada(argumentos).Trabajar();
}
