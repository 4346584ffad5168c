#include "app/lectura/Totales.h"
#include "app/servicios/ArbolDePartes.h"
#include "app/servicios/FiltroDeServicios.h"
#include "app/servicios/PaginaServicios.h"
#include "app/servicios/Propuestas.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/MoverParte.h"
#include "support/PruebaPantalla.h"

#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeView>

using propuestas::Peticion;
using qvx::Sesion;

// All services of a plan: how they are read and added up, and what is done to many of them at once.
class PrServicios : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void lecturas();
    void sumas();
    void filtros_data();
    void filtros();
    void cambios_data();
    void cambios();
    void escrituras_data();
    void escrituras();
    void averias_data();
    void averias();
    void entretanto_data();
    void entretanto();
    void editorAbierto();
    void pagina();
    void ordenes();
    void perdido();

private:
    static qvx::Conexion &Base() { return Sesion::Actual().Conexion(); }
    static lectura::Plan Leer(const QString &tipo = "0900") { return lectura::LeerPlan(Base(), tipo); }
    static QList<int> Lugares(const lectura::Plan &plan, const QStringList &folios);
    static QString Hacer(const lectura::Plan &plan, const QString &orden, bool juzgar = true);
    void Sembrar();
    // The plan of 0900 as rows, without signatures; and who signed and logged what.
    QStringList Filas() const;
    QStringList Firmas() const;
};

// Beside the plan of every test: 000004 in an active part below a retired one, 000005 of no part, 000006 in a part
// without a parent, 000007 retired itself and under a key with a blank behind it; a tool that an import gave a cost.
void PrServicios::Sembrar()
{
    const QString columnas = "INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Ts_Cve_Tipo_Servicio, Pm_Prioridad, "
                             "Tep_ID, Pm_ID, Pm_Frecuencia, Pm_Precio, Es_Cve_Estado) VALUES ('0900', '9001', '9001', ";
    Preparar(columnas + "'0004', '000004', 73, 10, 'AC');" + columnas + "'8888', '000005', 10, 20, 'AC');" + columnas
             + "'0006', '000006', 0, 40, 'AC');" + columnas + "'0005 ', '000007 ', 365, 80, 'BA');"
             + "UPDATE Plan_Mantenimiento_Detalle SET Pmd_Importe = 7.5 WHERE Pmd_ID = '000003'");
}

QList<int> PrServicios::Lugares(const lectura::Plan &plan, const QStringList &folios)
{
    QList<int> lugares;
    for (const QString &folio : folios)
        for (int i = 0; i < plan.servicios.size(); ++i)
            if (plan.servicios.at(i).leido.folio == folio)
                lugares.append(i);
    return lugares;
}

// An order by words: "mover 000001,000002 0005". What refused it, by the preview or, not judging, by the writing; ""
// when it was written.
QString PrServicios::Hacer(const lectura::Plan &plan, const QString &orden, bool juzgar)
{
    const QStringList palabras = orden.split(' ');
    const QString &que = palabras.at(0);
    const QList<int> cuales = Lugares(plan, palabras.at(1).split(','));
    const QString destino = palabras.value(2);
    const auto quien = Sesion::Actual().Firmante();
    try {
        propuestas::Propuesta vista;
        std::function<void()> escribir;
        if (que == "mover" || que == "duplicar") {
            const auto propuesta = propuestas::Trasladar(plan, cuales, destino, que == "duplicar");
            vista = propuesta;
            QList<qvx::Traslado> todos;
            for (const int cual : cuales)
                todos.append({plan.servicios.at(cual).leido, destino});
            escribir = [=] {
                if (que == "mover")
                    qvx::MoverServicios(Base(), quien, todos);
                else
                    qvx::DuplicarServicios(Base(), quien, todos);
            };
        } else if (que == "eliminar") {
            vista = propuestas::Eliminar(plan, cuales);
            QList<qvx::ServicioLeido> todos;
            for (const int cual : cuales)
                todos.append(plan.servicios.at(cual).leido);
            escribir = [=] { qvx::EliminarServicios(Base(), quien, todos); };
        } else if (que == "parte") {
            const auto propuesta = propuestas::MoverParte(plan, palabras.at(1), destino);
            vista = propuesta;
            escribir = [=] { qvx::MoverParte(Base(), quien, propuesta.traslado); };
        } else {
            const QHash<QString, Peticion::Que> cosas{{"precio", Peticion::Que::Precio},
                                                      {"dias", Peticion::Que::Dias},
                                                      {"lectura", Peticion::Que::Lectura},
                                                      {"prioridad", Peticion::Que::Prioridad},
                                                      {"tipo", Peticion::Que::TipoServicio}};
            Peticion peticion{cosas.value(que), destino.endsWith('%'), 0, {}};
            if (que == "prioridad" || que == "tipo")
                peticion.clave = destino;
            else
                peticion.numero = QString(destino).remove('%').toDouble();
            if (que == "lectura")
                peticion.clave = palabras.value(3);
            const auto propuesta = propuestas::Cambiar(plan, cuales, peticion, {});
            vista = propuesta;
            escribir = [=] { qvx::CambiarServicios(Base(), quien, propuesta.cambios); };
        }
        QStringList motivos{vista.objecion};
        for (const auto &fila : vista.filas)
            motivos.append(fila.motivo);
        motivos.removeAll({});
        if (juzgar && !motivos.isEmpty())
            return motivos.constFirst();
        escribir();
        return {};
    } catch (const qvx::ErrorEjecucion &error) {
        return error.Descripcion();
    }
}

QStringList PrServicios::Filas() const
{
    return escenario->Filas("SELECT Tep_ID, Tep_Padre FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' ORDER "
                            "BY 1")
           + escenario->Filas("SELECT Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, CAST(Pm_Frecuencia AS float), "
                              "CAST(Pm_Lectura AS float), Pm_Unidad_Lectura, CAST(Pm_Precio AS float), "
                              "CAST(Pm_Tiempo_Estimado AS float), Pm_Prioridad, Pm_Requiere_Paro, CAST(Pm_Tiempo_Paro "
                              "AS float), Es_Cve_Estado FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0900' "
                              "ORDER BY Pm_ID")
           + escenario->Filas("SELECT Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, CAST(Pmd_Cantidad AS float), "
                              "Pmd_Unidad, CAST(Pmd_Costo AS float), CAST(Pmd_Importe AS float), Pmd_Tipo_Gasto FROM "
                              "Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = '0900' ORDER BY Pm_ID, Pmd_ID");
}

QStringList PrServicios::Firmas() const
{
    const QString firma = "Oper_Ult_Modif || ' ' || Fecha_Ult_Modif FROM ";
    const QString hoy = " WHERE Fecha_Ult_Modif LIKE '2026-03-14%' ORDER BY 1";
    return escenario->Filas("SELECT Pm_ID || ' ' || " + firma + "Plan_Mantenimiento" + hoy)
           + escenario->Filas("SELECT Tep_ID || ' ' || " + firma + "Tipo_Equipo_Parte" + hoy)
           + escenario->Filas("SELECT Rc_Tabla || ' ' || Rc_Clave FROM Registro_Cambio ORDER BY Rc_ID");
}

// Every row of the plan is there once, with its state and the editor's costs, in a handful of statements of one moment.
void PrServicios::lecturas()
{
    Sembrar();
    escenario->Traza(true);
    const lectura::Plan plan = Leer();
    QStringList sentencias = escenario->Traza(true);
    sentencias.removeIf([](const QString &renglon) { return !renglon.contains("SELECT"); });
    QCOMPARE(sentencias.size(), 6);
    const QStringList situaciones{"Activo", "Servicio de baja", "Parte de baja", "Fuera del árbol", "Sin parte"};
    QStringList vistos;
    for (const auto &servicio : plan.servicios)
        vistos.append(servicio.leido.parte + " " + servicio.leido.folio + " " + servicio.ruta + " "
                      + qvx::NumeroATexto(servicio.costo) + " " + qvx::NumeroATexto(servicio.herramientas) + " "
                      + qvx::NumeroATexto(servicio.utilidad) + " "
                      + situaciones.at(static_cast<int>(servicio.situacion)));
    QCOMPARE(vistos,
             (QStringList{"0002 000001 CUERPO / IMPULSOR 420.65 7.5 579.35 Activo",
                          "0002 000002 CUERPO / IMPULSOR 30 0 470 Activo",
                          "0003 000003 CUERPO / SELLO 150.25 0 -50.25 Parte de baja",
                          "0004 000004 CUERPO / SELLO / RESORTE 0 0 10 Activo", "8888 000005  0 0 20 Sin parte",
                          "0006 000006 SUELTA 0 0 40 Fuera del árbol", "0005 000007 MOTOR 0 0 80 Servicio de baja"}));
    QVERIFY(plan.servicios.at(0).conParo);
    QVERIFY(!plan.servicios.at(2).conParo); // 'si' is not the screen's SI
    QVERIFY(plan.tipoActivo && !Leer("0903").tipoActivo && Leer("7777").nombreTipo.isEmpty());
}

// Sums against those of somebody who looks at every service for every part.
void PrServicios::sumas()
{
    SembrarGrande(*escenario, "0950", 300);
    Preparar("UPDATE Tipo_Equipo_Parte SET Tep_Padre = '00250' WHERE Te_Cve_Tipo_Equipo = '0950' AND Tep_ID = '00025';"
             "UPDATE Tipo_Equipo_Parte SET Tep_Padre = '9999' WHERE Te_Cve_Tipo_Equipo = '0950' AND Tep_ID = '00003';"
             "UPDATE Plan_Mantenimiento SET Pm_Frecuencia = 0, Pm_Lectura = 5 WHERE Te_Cve_Tipo_Equipo = '0950' AND "
             "Pm_Frecuencia > 400");
    const lectura::Plan plan = Leer("0950");
    const auto porParte = lectura::SumarPorParte(plan);
    QCOMPARE(porParte.size(), 301); // and what is out of the tree
    const auto bajo = [&](const QString &parte, QString cual) {
        for (int vueltas = 0; vueltas < 400 && cual != parte; ++vueltas) {
            const qvx::Parte *suya = plan.arbol.Buscar(cual);
            if (!suya)
                return false;
            cual = suya->padre;
        }
        return cual == parte;
    };
    for (const auto &[clave, parte] : plan.arbol.Partes()) {
        int servicios = 0;
        int porLectura = 0;
        double costo = 0;
        double alAno = 0;
        QList<int> cuales;
        for (int i = 0; i < plan.servicios.size(); ++i) {
            const auto &servicio = plan.servicios.at(i);
            if (!bajo(clave, servicio.leido.parte))
                continue;
            cuales.append(i);
            ++servicios;
            costo += servicio.costo;
            if (!servicio.Activo())
                continue;
            if (servicio.dias > 0)
                alAno += 365 / servicio.dias * servicio.costo;
            else
                ++porLectura;
        }
        const lectura::Totales suyos = porParte.value(clave);
        QCOMPARE(suyos.servicios, servicios);
        QCOMPARE(suyos.soloPorLectura, porLectura);
        QCOMPARE(suyos.unaVez.costo, costo); // whole numbers
        QVERIFY(qAbs(suyos.alAno.costo - alAno) <= 1e-9 * alAno);
        QCOMPARE(lectura::ServiciosBajo(plan, clave), cuales);
        QCOMPARE(lectura::Sumar(plan, cuales).unaVez, suyos.unaVez);
    }
    QCOMPARE(porParte.value({}).servicios, lectura::ServiciosBajo(plan, {}).size());
    QVERIFY(porParte.value({}).servicios > 2);
    QCOMPARE(lectura::ServiciosBajo(plan, "0000").size(), 600);
}

void PrServicios::filtros_data()
{
    const Tabla<int, QString, QString> fila("columna", "texto", "folios"); // -1: over all columns
    fila("palabras en desorden", -1, "revisión Impulsor", "1 2");
    fila("sin acentos", -1, "RÉSORTE revision", "4");
    fila("estado", -1, "baja impulsor", "");
    fila("en una columna", servicios::Estado, "de baja", "3 7");
    fila("mayor", servicios::Precio, ">80", "1 2 3");
    fila("al menos", servicios::Precio, ">= $80", "1 2 3 7");
    fila("menor", servicios::Utilidad, "<0", "3");
    fila("entre", servicios::Dias, "30..90", "1 3 4");
    fila("igual", servicios::Dias, "30", "1");
    fila("miles", servicios::Precio, "1,000", "1");
    fila("unidad", servicios::Lectura, "hrs", "2 3");
    fila("paro", servicios::Paro, ">0", "1");
    fila("sin paro", servicios::Paro, "no", "2 3 4 5 6 7");
    fila("no es número", servicios::Precio, "$1,0", "1"); // looked for as it is shown
}

void PrServicios::filtros()
{
    QFETCH(const int, columna);
    QFETCH(const QString, texto);
    QFETCH(const QString, folios);
    Sembrar();
    const lectura::Plan plan = Leer();
    FiltroDeServicios filtro;
    filtro.Poner(&plan.servicios);
    if (columna < 0)
        filtro.Buscar(texto);
    else
        filtro.PonerEnColumna(columna, texto);
    QStringList admitidos;
    for (int i = 0; i < plan.servicios.size(); ++i)
        if (filtro.Admite(i))
            admitidos.append(QString::number(plan.servicios.at(i).leido.folio.toInt()));
    QCOMPARE(admitidos.join(' '), folios);
}

void PrServicios::cambios_data()
{
    const Tabla<QString> fila("motivo"); // the row is the order; "" is written
    const QString baja = "La parte «0003 SELLO» está dada de baja";
    fila("mover 000003 0005", baja + ".");
    fila("mover 000001 0003", baja + ": elija una parte activa.");
    fila("mover 000001 0000", "La raíz no lleva servicios: elija una parte.");
    fila("mover 000001 0006", "La parte «0006 SUELTA» está fuera del árbol.");
    fila("mover 000001 7777", "La parte «7777» no existe.");
    fila("mover 000001 0002", "Ya está en esa parte.");
    fila("mover 000005 0002", "Está fuera del árbol: corríjalo con Revisar integridad.");
    fila("mover 000007 0002", "El servicio está dado de baja.");
    fila("mover 000004 0005", "");
    fila("duplicar 000003 0005", baja + ".");
    fila("eliminar 000003", baja + ".");
    fila("precio 000001 -5", "El precio y las frecuencias son números desde 0.");
    fila("precio 000001 1000", "No cambia nada.");
    fila("dias 000001 0", "Se quedaría sin frecuencia: debe tener días o lectura.");
    fila("lectura 000001 5", "La lectura pide una unidad.");
    fila("tipo 000001 9009", "Tipos de servicio: la clave 9009 no existe o está dada de baja. No se guardó nada: "
                             "elija otra.");
    fila("parte 0001 0002", "La parte «0002 IMPULSOR» cuelga de la que se mueve: elija otra.");
    fila("parte 0001 0001", "Una parte no puede colgar de sí misma.");
    fila("parte 0001 0000", "La parte «0001 CUERPO» ya está ahí.");
    fila("parte 0001 0003", baja + ": elija una parte activa.");
    fila("parte 0003 0005", baja + ".");
    fila("parte 0006 0005", "La parte «0006 SUELTA» está fuera del árbol.");
}

// What must not be is refused by the preview, and by the writing too.
void PrServicios::cambios()
{
    QFETCH(const QString, motivo);
    Sembrar();
    const lectura::Plan plan = Leer();
    const QString orden = QTest::currentDataTag();
    const QStringList antes = escenario->Tablas();
    QCOMPARE(Hacer(plan, orden), motivo);
    QCOMPARE(escenario->Tablas() == antes, !motivo.isEmpty());
    if (motivo.isEmpty() || motivo.startsWith("Ya está") || motivo.startsWith("No cambia"))
        return;
    const QString negado = Hacer(plan, orden, false);
    QVERIFY2(negado.contains(motivo) || orden.startsWith("precio") || orden.startsWith("dias")
                 || orden.startsWith("lectura"), // those are not even proposed
             qPrintable(negado));
    QCOMPARE(escenario->Tablas(), antes);
}

void PrServicios::escrituras_data()
{
    // What takes the place of which rows: "old<new", "+new", "-old".
    const Tabla<QStringList, QStringList> fila("cambian", "firmas");
    const QString yo = " mlopez 2026-03-14 09:26:53";
    const QStringList dos{"Plan_Mantenimiento 0900|000001|0002", "Plan_Mantenimiento 0900|000002|0002"};
    const QStringList firmados = QStringList{"000001" + yo, "000002" + yo} + dos;
    fila("mover 000001,000002 0005", {"0002|00000<0005|00000"}, firmados);
    fila("duplicar 000002,000001 0005",
         {"+0005|000004|9001|0|1250.5|HRS|500|2|9001|NO|0|AC", "+0005|000005|9001|30|0||1000|8.5|9001|SI|4|AC",
          "+0005|000004|000006|02|9000000004|3|PZA|10|30|9009", "+0005|000005|000007|01|9000000001|2|HR|150.25|300.5|",
          "+0005|000005|000008|02|9000000002|1.5|PZA|80.1|120.15|9001", "+0005|000005|000009|03|9000000003|1|PZA|0|0|"},
         {"000004" + yo, "000005" + yo, "Plan_Mantenimiento 0900|000004|0005", "Plan_Mantenimiento 0900|000005|0005"});
    fila("eliminar 000001,000002", {"-0002|00000"}, dos);
    fila("precio 000001,000002 -12.5%", {"0||1000|8.5<0||875|8.5", "HRS|500|<HRS|437.5|"}, firmados);
    fila("dias 000001,000002 45", {"000001|9001|30|<000001|9001|45|", "000002|9001|0|<000002|9001|45|"}, firmados);
    fila("dias 000001 -99%", {"000001|9001|30|<000001|9001|1|"}, {firmados.at(0), dos.at(0)});
    fila("lectura 000001,000002 10.25 HRS", {"9001|30|0||<9001|30|10.25|HRS|", "|1250.5|<|10.25|"}, firmados);
    fila("prioridad 000001,000002 9002", {"8.5|9001<8.5|9002", "500|2|9001<500|2|9002"}, firmados);
    fila("tipo 000001 9002", {"0002|000001|9001|<0002|000001|9002|"}, {firmados.at(0), dos.at(0)});
    fila("parte 0001 0005", {"=0001|0000<0001|0005"}, {"0001" + yo, "Tipo_Equipo_Parte 0001|0900"});
    fila("parte 0002 0000", {"=0002|0001<0002|0000"}, {"0002" + yo, "Tipo_Equipo_Parte 0002|0900"});
}

// Exactly those rows change, under the keys that the screen would give, signed and logged.
void PrServicios::escrituras()
{
    QFETCH(const QStringList, cambian);
    QFETCH(const QStringList, firmas);
    Preparar("INSERT INTO Prioridad_Servicio VALUES ('9002', 'OTRA', 'AC');"
             "INSERT INTO Tipo_Servicio VALUES ('9002', 'OTRO', 'AC')");
    QStringList debidas = Filas();
    for (const QString &cambio : cambian) {
        if (cambio.startsWith('+'))
            debidas.append(cambio.mid(1));
        else if (cambio.startsWith('-'))
            debidas.removeIf([&](const QString &una) { return una.startsWith(cambio.mid(1)); });
        else if (cambio.startsWith('=')) // a whole row
            debidas.replace(debidas.indexOf(cambio.section('<', 0, 0).mid(1)), cambio.section('<', 1));
        else
            debidas.replaceInStrings(cambio.section('<', 0, 0), cambio.section('<', 1));
    }
    QCOMPARE(Hacer(Leer(), QTest::currentDataTag()), "");
    QStringList filas = Filas();
    filas.sort();
    debidas.sort();
    QCOMPARE(filas, debidas);
    if (motor::EsPostgres()) // the server's own clock signs
        QCOMPARE(Firmas().filter("Plan_Mantenimiento ").size(), firmas.filter("Plan_Mantenimiento ").size());
    else
        QCOMPARE(Firmas(), firmas);
    const QStringList creados = escenario->Filas("SELECT Oper_Alta FROM Plan_Mantenimiento WHERE Pm_ID IN ('000004')");
    QCOMPARE(creados.join(' '), QString(QTest::currentDataTag()).startsWith("duplicar") ? "mlopez" : "");
}

void PrServicios::averias_data()
{
    const Tabla<QString, QString> fila("orden", "averia");
    const auto fallas = [&](const QString &orden, const QStringList &sucesos) {
        for (const QString &suceso : sucesos + QStringList{"INSERT ON Registro_Cambio"})
            fila(orden + ": " + suceso, orden, suceso);
    };
    fila("ocupada", "mover 000001,000002 0005", "ocupada"); // waits for as long as a lock is waited for
    const QString servicio = "UPDATE ON Plan_Mantenimiento WHEN ";
    const QString linea = " ON Plan_Mantenimiento_Detalle WHEN ";
    const QString segundo = "INSERT ON Registro_Cambio WHEN NEW.Rc_Clave LIKE '0900|000002%'";
    fallas("mover 000001,000002 0005",
           {servicio + "NEW.Pm_ID = '000001'", servicio + "NEW.Pm_ID = '000002'", segundo,
            servicio + "NEW.Pm_ID = '000002' AND NEW.Tep_ID = '0005'", "UPDATE" + linea + "NEW.Pm_ID = '000001'",
            "UPDATE" + linea + "NEW.Pm_ID = '000002'"});
    fallas("duplicar 000001,000002 0005",
           {"INSERT ON Plan_Mantenimiento WHEN NEW.Pm_ID = '000004'",
            "INSERT ON Plan_Mantenimiento WHEN NEW.Pm_ID = '000005'", "INSERT" + linea + "NEW.Pmd_ID = '000006'",
            "INSERT" + linea + "NEW.Pmd_ID = '000009'",
            "INSERT ON Registro_Cambio WHEN NEW.Rc_Clave LIKE '0900|000005%'", "confirmación"});
    fallas("eliminar 000001,000002",
           {servicio + "NEW.Pm_ID = '000002'", segundo, "DELETE ON Plan_Mantenimiento WHEN OLD.Pm_ID = '000001'",
            "DELETE ON Plan_Mantenimiento WHEN OLD.Pm_ID = '000002'", "DELETE" + linea + "OLD.Pmd_ID = '000003'",
            "DELETE" + linea + "OLD.Pmd_ID = '000005'"});
    fallas("precio 000001,000002 10%", {servicio + "NEW.Pm_Precio = 1100", servicio + "NEW.Pm_Precio = 550", segundo});
    fallas("dias 000001,000002 45", {servicio + "NEW.Pm_ID = '000002' AND NEW.Pm_Frecuencia = 45"});
    fallas("lectura 000001,000002 7 HRS", {servicio + "NEW.Pm_ID = '000002' AND NEW.Pm_Lectura = 7",
                                           servicio + "NEW.Pm_ID = '000001' AND NEW.Pm_Unidad_Lectura = 'HRS'"});
    fallas("prioridad 000001,000002 9002", {servicio + "NEW.Pm_ID = '000002' AND NEW.Pm_Prioridad = '9002'"});
    fallas("tipo 000001,000002 9002", {servicio + "NEW.Pm_ID = '000002' AND NEW.Ts_Cve_Tipo_Servicio = '9002'"});
    fallas("parte 0001 0005", {"UPDATE ON Tipo_Equipo_Parte WHEN NEW.Tep_ID = '0001'"});
}

// Whatever statement fails, all tables are as they were; and once it does not, the same order is written.
void PrServicios::averias()
{
    QFETCH(const QString, orden);
    QFETCH(const QString, averia);
    Preparar("INSERT INTO Prioridad_Servicio VALUES ('9002', 'OTRA', 'AC');"
             "INSERT INTO Tipo_Servicio VALUES ('9002', 'OTRO', 'AC')");
    const lectura::Plan plan = Leer();
    const QStringList antes = escenario->Tablas();
    Averia falla(*escenario, averia);
    QVERIFY(!Hacer(plan, orden).isEmpty());
    QVERIFY(!Base().EnTransaccion());
    falla.Reparar();
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Hacer(plan, orden), "");
}

void PrServicios::entretanto_data()
{
    const Tabla<QString, QString, QString> fila("cambio", "orden", "dicho");
    const QString jcruz = "Oper_Ult_Modif = 'jcruz', Fecha_Ult_Modif = '2026-03-14 08:00:00'";
    const QString deServicio = "UPDATE Plan_Mantenimiento SET " + jcruz + " WHERE Pm_ID = '000002'";
    const QString autor = "El servicio 000002 del tipo de equipo 0900: jcruz lo cambió el 2026-03-14 08:00:00, después";
    for (const QString orden : {"mover 000001,000002 0005", "duplicar 000001,000002 0005", "eliminar 000001,000002",
                                "precio 000001,000002 10%"})
        fila("servicio, " + orden, deServicio, orden, autor);
    fila("servicio movido", "UPDATE Plan_Mantenimiento SET Tep_ID = '0005' WHERE Pm_ID = '000002'",
         "eliminar 000001,000002",
         "El servicio 000002 del tipo de equipo 0900 ya no existe: otra persona lo eliminó o");
    const QString dePartes = "UPDATE Tipo_Equipo_Parte SET " + jcruz;
    const QString quien = " jcruz la cambió el 2026-03-14 08:00:00. No se guardó nada";
    fila("destino de baja", dePartes + ", Es_Cve_Estado = 'BA' WHERE Tep_ID = '0005'", "mover 000001 0005",
         "La parte «0005 MOTOR» está dada de baja: elija una parte activa." + quien);
    fila("origen de baja", dePartes + ", Es_Cve_Estado = 'BA' WHERE Tep_ID = '0002'", "eliminar 000001",
         "El servicio 000001 no se puede cambiar. La parte «0002 IMPULSOR» está dada de baja." + quien);
    fila("servicio de baja", "UPDATE Plan_Mantenimiento SET Es_Cve_Estado = 'BA' WHERE Pm_ID = '000001'",
         "eliminar 000001", "El servicio 000001 no se puede cambiar. El servicio está dado de baja.");
    fila("tipo de baja", "UPDATE Tipo_Equipo SET Es_Cve_Estado = 'BA' WHERE Te_Cve_Tipo_Equipo = '0900'",
         "eliminar 000001", "El tipo de equipo 0900 no existe o está dado de baja.");
    fila("parte", dePartes + " WHERE Tep_ID = '0001'", "parte 0001 0005",
         "La parte «0001 CUERPO» ya no es como se leyó en esta página." + quien);
    fila("parte eliminada", "DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0002'", "parte 0002 0005",
         "La parte «0002» ya no existe: otra persona la eliminó.");
    // Each would be below the other.
    fila("en cruz", dePartes + ", Tep_Padre = '0002' WHERE Tep_ID = '0005'", "parte 0001 0005",
         "La parte «0005 MOTOR» cuelga de la que se mueve: elija otra." + quien);
}

// Another planner's work after the page was read is neither lost nor written over, and told.
void PrServicios::entretanto()
{
    QFETCH(const QString, cambio);
    QFETCH(const QString, orden);
    QFETCH(const QString, dicho);
    const lectura::Plan plan = Leer();
    escenario->Correr(cambio);
    const QStringList antes = escenario->Tablas();
    const QString negado = Hacer(plan, orden);
    QVERIFY2(negado.startsWith(dicho), qPrintable(negado));
    QCOMPARE(escenario->Tablas(), antes);
}

// Who has a service open in the screen's editor is told that the page changed it.
void PrServicios::editorAbierto()
{
    EnElServicio("N0002", "000001", [&](QWidget &editor) {
        QCOMPARE(Hacer(Leer(), "precio 000001 10%"), "");
        Escribir(Caja(editor, "txtPrecio"), "7");
        Aceptar(editor);
    });
    QVERIFY(Mensajes().join(' ').contains("7500080"));
    QCOMPARE(escenario->Filas("SELECT CAST(Pm_Precio AS float) FROM Plan_Mantenimiento WHERE Pm_ID = '000001'"),
             QStringList{"1100"});
}

// With keys alone: searching, filtering, grouping, copying, opening; what is chosen stays chosen.
void PrServicios::pagina()
{
    Sembrar();
    PaginaServicios hoja;
    hoja.PonerTipo("0900");
    hoja.resize(1300, 700);
    hoja.show();
    QVERIFY(QTest::qWaitForWindowActive(&hoja));
    auto &tabla = En<QTreeView>(hoja, "lvServiciosDelPlan");
    auto &cuenta = En<QLabel>(hoja, "lblCuentaDeServicios");
    auto &arbol = En<QTreeView>(hoja, "tvPartesDelPlan");
    const auto celda = [&](int fila, int columna) { return tabla.model()->index(fila, columna).data().toString(); };
    QCOMPARE(cuenta.text(), "7 servicios");
    tabla.sortByColumn(servicios::Precio, Qt::DescendingOrder);
    QCOMPARE(celda(0, servicios::Folio) + celda(6, servicios::Folio), "000001000004");
    tabla.setCurrentIndex(tabla.model()->index(1, 0));
    QTest::keyClicks(&En<QLineEdit>(hoja, "txtBuscarServicios"), "impulsor");
    QCOMPARE(cuenta.text(), "2 servicios de 7");
    QCOMPARE(tabla.currentIndex().row(), 1);
    En<QLineEdit>(hoja, "txtFiltro" + QString::number(servicios::Dias)).setText(">0");
    QCOMPARE(cuenta.text(), "1 servicio de 7");
    QTest::mouseClick(&En<QPushButton>(hoja, "cmdQuitarFiltros"), Qt::LeftButton);
    QCOMPARE(cuenta.text(), "7 servicios");
    En<QComboBox>(hoja, "cboAgrupar").setCurrentIndex(1);
    QCOMPARE(celda(1, 0), "CUERPO / IMPULSOR — 2 servicios");
    QCOMPARE(celda(1, servicios::Costo), "$450.65");
    En<QComboBox>(hoja, "cboAgrupar").setCurrentIndex(0);

    arbol.setCurrentIndex(arbol.model()->index(0, 0, arbol.model()->index(0, 0))); // CUERPO
    QCOMPARE(cuenta.text(), "4 servicios de 7");
    const auto *totales = En<QTreeView>(hoja, "lvTotales").model();
    QCOMPARE(totales->index(3, 0).data().toString(), "0001 y lo de abajo, al año");
    QCOMPARE(totales->index(3, 7).data().toString(), "$5,117.91"); // 365/30 of 420.65
    auto &nota = En<QLabel>(hoja, "lblNotaDeTotales");
    QCOMPARE(nota.text(), "De lo que se muestra, al año no cuentan: 1 no activo, 1 solo por lectura.");

    QSignalSpy pedido(&hoja, &PaginaServicios::ServicioPedido);
    tabla.sortByColumn(servicios::Folio, Qt::AscendingOrder);
    tabla.setFocus();
    tabla.setCurrentIndex(tabla.model()->index(0, 0));
    QTest::keyClick(&tabla, Qt::Key_Return);
    QCOMPARE(pedido.size(), 1);
    QCOMPARE(pedido.at(0), (QVariantList{"0900", "0002", "000001"}));
    QTest::keyClick(&tabla, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&tabla, Qt::Key_C, Qt::ControlModifier);
    const QStringList copiado = QGuiApplication::clipboard()->text().split("\r\n", Qt::SkipEmptyParts);
    QCOMPARE(copiado.size(), 3);
    QCOMPARE(copiado.at(1), "0002\tCUERPO / IMPULSOR\t000001\tREVISIÓN\t30\t0\t\t8.5\tSí\t4\tURGENTE DE "
                            "PRUEBA\t300.5\t120.15\t7.5\t420.65\t1000\t579.35\t57.9350\tActivo");
}

// The commands, from the keys to the rows: nothing is written before the preview is accepted, and what was written is
// read again, by the page and by who hears of it.
void PrServicios::ordenes()
{
    Sembrar();
    PaginaServicios hoja;
    hoja.PonerTipo("0900");
    hoja.show();
    QVERIFY(QTest::qWaitForWindowActive(&hoja));
    auto &tabla = En<QTreeView>(hoja, "lvServiciosDelPlan");
    QSignalSpy cambiado(&hoja, &PaginaServicios::PlanCambiado);
    const auto pulsar = [&](Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier) {
        hoja.activateWindow(); // as a window manager does when a dialog closes
        QVERIFY(QTest::qWaitForWindowActive(&hoja));
        QTest::keyClick(&tabla, tecla, con);
    };
    tabla.selectAll();
    tabla.setFocus();
    const QStringList antes = escenario->Tablas();
    EnElDialogo([&](QWidget &dialogo) {
        QVERIFY(!En<QPushButton>(dialogo, "cmdAceptar").isEnabled());
        QTest::keyClicks(&En<QLineEdit>(dialogo, "txtBuscarDestino"), "motor");
        QTest::keyClick(&En<QLineEdit>(dialogo, "txtBuscarDestino"), Qt::Key_Down);
        QCOMPARE(En<QLabel>(dialogo, "lblResumen").text(),
                 "Se moverán: 3 servicios. Se quedan como están: 4 servicios, por el motivo que dice la lista.");
        QCOMPARE(En<QTreeView>(dialogo, "lvPrevia").model()->index(2, 4).data().toString(),
                 "La parte «0003 SELLO» está dada de baja.");
        QCOMPARE(escenario->Tablas(), antes);
        QTest::mouseClick(&En<QPushButton>(dialogo, "cmdAceptar"), Qt::LeftButton);
    });
    pulsar(Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(cambiado, (QList<QVariantList>{{"0900"}}));
    QCOMPARE(escenario->Filas("SELECT Pm_ID FROM Plan_Mantenimiento WHERE Tep_ID = '0005' ORDER BY 1").mid(0, 3),
             (QStringList{"000001", "000002", "000004"}));
    QCOMPARE(tabla.model()->index(0, 0).data().toString(), "MOTOR");
    QCOMPARE(tabla.selectionModel()->selectedRows().size(), 7);
    // Let go over a part: one that takes nothing says so, another one is only proposed.
    auto &arbol = En<ArbolDePartes>(hoja, "tvPartesDelPlan");
    const QStringList movidos = escenario->Tablas();
    Q_EMIT arbol.ServiciosSoltados("0003", false);
    QVERIFY(Mensajes().join(' ').contains("ERR-ID:1000089|La parte «0003 SELLO» está dada de baja: elija una parte"));
    Q_EMIT arbol.ParteSoltada("0001", "0002");
    QVERIFY(Mensajes().join(' ').contains("cuelga de la que se mueve: elija otra. No se movió nada."));
    EnElDialogo([&](QWidget &dialogo) {
        QCOMPARE(En<QTreeView>(dialogo, "lvDestinos").currentIndex().siblingAtColumn(0).data().toString(), "0002");
        QCOMPARE(En<QLabel>(dialogo, "lblResumen").text(),
                 "Se duplicarán: 3 servicios. Se quedan como están: 4 servicios, por el motivo que dice la lista.");
    });
    Q_EMIT arbol.ServiciosSoltados("0002", true);
    QCOMPARE(escenario->Tablas(), movidos);

    tabla.selectionModel()->setCurrentIndex(tabla.model()->index(0, 0),
                                            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    EnElDialogo([&](QWidget &dialogo) {
        En<QComboBox>(dialogo, "cboComo").setCurrentIndex(1);
        QTest::keyClicks(&En<QLineEdit>(dialogo, "txtNumero"), "1x");
        QVERIFY(!En<QPushButton>(dialogo, "cmdAceptar").isEnabled());
        En<QLineEdit>(dialogo, "txtNumero").setText("12.5");
        QCOMPARE(En<QLabel>(dialogo, "lblResumen").text(),
                 "Se cambiarán: 1 servicio. Sus precios suman $1,000.00 y sumarán $1,125.00.");
        escenario->Correr("UPDATE Plan_Mantenimiento SET Oper_Ult_Modif = 'jcruz' WHERE Pm_ID = '000001'");
        QTest::mouseClick(&En<QPushButton>(dialogo, "cmdAceptar"), Qt::LeftButton);
        QVERIFY(Mensajes().join(' ').contains("ERR-ID:1000080|El servicio 000001 del tipo de equipo 0900: jcruz"));
        QVERIFY(dialogo.isVisible()); // nothing was lost of what was asked
    });
    pulsar(Qt::Key_F2);
    QVERIFY(En<QLabel>(hoja, "lblAvisoDelPlan").text().startsWith("NO ES ACTUAL"));
    QCOMPARE(cambiado.size(), 1);
    hoja.Actualizar();
    QVERIFY(!En<QLabel>(hoja, "lblAvisoDelPlan").isVisible());
    EnElDialogo([&](QWidget &dialogo) { QTest::mouseClick(&En<QPushButton>(dialogo, "cmdAceptar"), Qt::LeftButton); });
    pulsar(Qt::Key_Delete);
    QCOMPARE(cambiado.size(), 2);
    QCOMPARE(escenario->Filas("SELECT Pm_ID FROM Plan_Mantenimiento WHERE Pm_ID = '000001'"), QStringList());
    QCOMPARE(En<QLabel>(hoja, "lblCuentaDeServicios").text(), "6 servicios");
}

// What cannot be read again stays in sight, and says that it is old.
void PrServicios::perdido()
{
    PaginaServicios hoja;
    hoja.PonerTipo("0900");
    hoja.show();
    QVERIFY(QTest::qWaitForWindowActive(&hoja));
    auto &aviso = En<QLabel>(hoja, "lblAvisoDelPlan");
    QVERIFY(!aviso.isVisible());
    escenario->Correr("ALTER TABLE Plan_Mantenimiento RENAME TO Perdida");
    hoja.Actualizar();
    QVERIFY(Mensajes().join(' ').contains("1000081"));
    QVERIFY2(aviso.text().startsWith("NO ES ACTUAL: esto se leyó a las "), qPrintable(aviso.text()));
    QCOMPARE(En<QLabel>(hoja, "lblCuentaDeServicios").text(), "3 servicios");
    escenario->Correr("ALTER TABLE Perdida RENAME TO Plan_Mantenimiento");
    hoja.Actualizar();
    QVERIFY(!aviso.isVisible());
}

PRUEBA(PrServicios)
#include "pr_servicios.moc"
