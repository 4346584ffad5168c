#include "Jornada.h"

#include "support/Procesos.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QRegularExpression>
#include <QXmlStreamReader>

namespace
{

QString Limpio(QString mensaje)
{
    return mensaje.replace(QRegularExpression("[\\t\\r\\n]+"), " ");
}

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
        if (pieza == QXmlStreamReader::StartElement && lector.name() == QLatin1String("TipoServicio")) {
            numeros.append(lector.attributes().value("Precio").toString().section('.', 0, 0));
            lineas = 0;
        } else if (pieza == QXmlStreamReader::StartElement && lector.attributes().hasAttribute("Cantidad")) {
            ++lineas;
        } else if (pieza == QXmlStreamReader::EndElement && lector.name() == QLatin1String("TipoServicio")
                   && lineas != 3) {
            numeros.last() += "!";
        }
    }
    if (lector.hasError())
        return {lector.errorString()};
    return numeros;
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

Jornada::Jornada(const QStringList &argumentos)
    : base(argumentos.at(0))
    , numero(argumentos.at(1).toInt())
    , azar(argumentos.at(2).toUInt() + static_cast<unsigned>(numero))
    , diario(argumentos.at(3))
    , listo(argumentos.at(4))
    , seguir(argumentos.at(5))
{
}

void Jornada::Escribir(const QStringList &campos)
{
    diario.write((campos.join(QLatin1Char('\t')) + "\n").toUtf8());
    diario.flush();
}

QString Jornada::Propia()
{
    QStringList nodos = planificador->Nodos(false);
    nodos.removeIf([this](const QString &nodo) { return !propias.contains(tipo + "|" + nodo); });
    return Uno(nodos);
}

QStringList Jornada::Mios() const
{
    const QStringList activas = planificador->Nodos(false);
    QStringList folios;
    const auto &enTipo = servicios[tipo];
    for (auto i = enTipo.begin(); i != enTipo.end(); ++i)
        if (activas.contains(i->parte))
            folios.append(i.key());
    folios.sort();
    return folios;
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
    for (const QString &mensaje : escenario->Personas().Tomar()) {
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

void Jornada::Hacer(const QString &nombre, Mando mando)
{
    esperado = -1;
    (this->*mando)();
    Hecho();
    const qint64 sentencias = Sentencias();
    for (const QString &dicho : dichos)
        Escribir({"mensaje", Limpio(dicho)});
    if (esperado >= 0)
        Escribir({"mando", nombre, QString::number(esperado), QString::number(sentencias),
                  dichos.filter(QRegularExpression("^(16|48)\\|")).isEmpty() ? "hecho" : "rechazado"});
    dichos.clear();
}

void Jornada::ParteNueva()
{
    const QString nodo = Al(4) == 0 || Activa().isEmpty() ? "N0000" : Activa();
    const QString clave = planificador->NuevaParte(nodo, "PARTE DE " + QString::number(numero));
    if (clave.isEmpty())
        return;
    propias.append(tipo + "|N" + clave);
    Escribir({"parte", tipo, clave});
}

void Jornada::ParteEditada()
{
    if (const QString nodo = Activa(); !nodo.isEmpty())
        planificador->EditarParte(nodo, "EDITADA POR " + QString::number(numero));
}

void Jornada::Etiqueta()
{
    if (const QString nodo = Activa(); !nodo.isEmpty())
        planificador->Rotular(nodo, "ROTULADA POR " + QString::number(numero));
}

void Jornada::Baja()
{
    if (const QString nodo = Propia(); !nodo.isEmpty())
        planificador->Retirar(nodo);
}

void Jornada::Reactivacion()
{
    if (const QString nodo = Uno(planificador->Nodos(true)); !nodo.isEmpty())
        planificador->Reactivar(nodo);
}

void Jornada::ParteEliminada()
{
    const QString nodo = Propia();
    if (nodo.isEmpty() || planificador->TieneHijas(nodo))
        return;
    planificador->EliminarParte(nodo);
    if (Hecho() && !planificador->Nodos(false).contains(nodo))
        Escribir({"parte eliminada", tipo, nodo.mid(1)});
}

void Jornada::ServicioNuevo()
{
    const QString nodo = Activa();
    if (nodo.isEmpty())
        return;
    const QString precio = QString::number(100000 * (numero + 1) + ++precios);
    const QString folio = planificador->NuevoServicio(nodo, precio);
    if (!folio.isEmpty())
        Apuntar(folio, {nodo, precio});
}

// The number stays, the cents change.
void Jornada::ServicioCambiado()
{
    const QString folio = Uno(Mios());
    if (folio.isEmpty())
        return;
    Servicio servicio = servicios[tipo][folio];
    servicio.precio = servicio.precio.section('.', 0, 0) + "." + QString::number(11 + Al(8)) + "5";
    if (planificador->CambiarServicio(servicio.parte, folio, servicio.precio))
        Apuntar(folio, servicio);
}

void Jornada::ServicioMovido()
{
    const QString folio = Uno(Mios());
    const QString destino = Activa();
    if (folio.isEmpty())
        return;
    Servicio servicio = servicios[tipo][folio];
    planificador->Mover(servicio.parte, folio, destino);
    if (!Hecho())
        return;
    servicio.parte = destino;
    Apuntar(folio, servicio);
}

void Jornada::ServicioEliminado()
{
    const QString folio = Uno(Mios());
    if (folio.isEmpty())
        return;
    planificador->EliminarServicio(servicios[tipo][folio].parte, folio);
    if (Hecho())
        Apuntar(folio, {{}, servicios[tipo][folio].precio});
}

// Afterwards the copy is on the screen: the next command's type is chosen anew.
void Jornada::Copia()
{
    if (planificador->Nodos(false).isEmpty())
        return;
    planificador->Copiar(Tipo(Serie::Copias, numero));
}

void Jornada::Exportacion()
{
    if (planificador->Nodos(false).isEmpty())
        return;
    const QString ruta = escenario->Ruta("exportado.xml");
    QFile::remove(ruta);
    const qint64 inicio = QDateTime::currentMSecsSinceEpoch();
    planificador->Exportar(ruta);
    if (Hecho())
        Escribir({"exportación", QString::number(inicio), QString::number(QDateTime::currentMSecsSinceEpoch()), tipo,
                  Contenido(ruta).join(',')});
}

// The last document, into a type that only this planner writes: what is there afterwards is what it held.
void Jornada::Importacion()
{
    const QString propio = Tipo(Serie::Importaciones, numero);
    QFile documento(escenario->Ruta("exportado.xml"));
    QFile otro(escenario->Ruta("importado.xml"));
    if (!documento.open(QIODevice::ReadOnly) || !otro.open(QIODevice::WriteOnly))
        return;
    const QRegularExpression clave("<TipoEquipo Id=\"\\d+\"");
    otro.write(QString::fromUtf8(documento.readAll()).replace(clave, "<TipoEquipo Id=\"" + propio + "\"").toUtf8());
    otro.close();
    planificador->Importar(otro.fileName());
    if (!Hecho())
        return;
    QStringList llegados =
        escenario->Filas("SELECT CAST(floor(Pm_Precio) AS text) || CASE WHEN 3 = (SELECT count(*) FROM "
                         "Plan_Mantenimiento_Detalle d WHERE d.Te_Cve_Tipo_Equipo = s.Te_Cve_Tipo_Equipo AND d.Pm_ID = "
                         "s.Pm_ID AND d.Tep_ID = s.Tep_ID) THEN '' ELSE '!' END FROM Plan_Mantenimiento s WHERE "
                         "Te_Cve_Tipo_Equipo = '"
                         + propio + "'");
    QStringList enviados = Contenido(otro.fileName());
    llegados.sort();
    enviados.sort();
    Escribir({"importación", llegados == enviados ? "igual" : enviados.join(',') + " <> " + llegados.join(',')});
}

void Jornada::trabajar()
{
    static const QList<std::tuple<int, QString, Mando>> mandos{
        {20, "parte nueva", &Jornada::ParteNueva},
        {8, "parte editada", &Jornada::ParteEditada},
        {8, "etiqueta", &Jornada::Etiqueta},
        {5, "baja", &Jornada::Baja},
        {5, "reactivación", &Jornada::Reactivacion},
        {4, "parte eliminada", &Jornada::ParteEliminada},
        {16, "servicio nuevo", &Jornada::ServicioNuevo},
        {12, "servicio cambiado", &Jornada::ServicioCambiado},
        {14, "servicio arrastrado", &Jornada::ServicioMovido},
        {4, "servicio eliminado", &Jornada::ServicioEliminado},
        {3, "plan copiado", &Jornada::Copia},
        {5, "exportación", &Jornada::Exportacion},
        {3, "plan importado", &Jornada::Importacion},
    };
    std::vector<int> pesos;
    for (const auto &mando : mandos)
        pesos.push_back(std::get<0>(mando));
    std::discrete_distribution<> cual(pesos.begin(), pesos.end());

    QVERIFY(diario.open(QIODevice::WriteOnly));
    escenario = std::make_unique<Escenario>(base);
    const auto medir = [this] { reloj.start(); };
    const auto anotar = [this] {
        esperado = reloj.elapsed();
        return false;
    };
    planificador = std::make_unique<Planificador>(*escenario, Planificador::Intento{medir, anotar});
    // Somebody else has just put a part below the one that is deleted.
    escenario->Personas().ResponderSiempre(7500046, qvx::mensaje::No);
    escenario->Pantalla(Compartido);
    Encontrarse(listo, seguir);
    for (const QDeadlineTimer fin(1000LL * Segundos()); !fin.hasExpired();) {
        escenario->ahora = QDateTime::currentDateTime();
        tipo = numero < Planificadores / 2 || Al(2) == 0 ? Compartido : Tipo(Serie::Propia, numero);
        planificador->ElegirTipo(tipo);
        Hecho();
        Sentencias();
        const auto &mando = mandos.at(cual(azar));
        Hacer(std::get<1>(mando), std::get<2>(mando));
    }
    Escribir({"fin"});
}
