#include "app/VentanaPrincipal.h"
#include "app/programa/DialogoDatosDePrograma.h"
#include "app/programa/GraficaDeCarga.h"
#include "app/programa/HojasDePrograma.h"
#include "app/programa/Ics.h"
#include "app/programa/PaginaPrograma.h"
#include "app/programa/PaqueteDelMes.h"
#include "app/reportes/Csv.h"
#include "data/Conexion.h"
#include "plan/Planta.h"
#include "support/Archivos.h"
#include "support/DatosDePrueba.h"
#include "support/Procesos.h"
#include "support/PruebaPantalla.h"

#include <QBuffer>
#include <QDateEdit>
#include <QDir>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPdfWriter>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>

using qvx::Sesion;

// The year of an equipment type as it is kept, shown and written.
class PrPrograma : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void guardados();
    void averias_data();
    void averias();
    void guardadosEntretanto();
    void ordenes();
    void calendario();
    void paginas();
    void hondos();
    void archivosMalos();
    void pagina();
    void paquete();

private:
    void Sembrar();
    programa::PlanMedido Leer() const { return programa::LeerPlanMedido(Base(), "0900"); }
    static qvx::Conexion &Base() { return Sesion::Actual().Conexion(); }
};

// What is kept of a type, and what stays when it cannot be.
void PrPrograma::guardados()
{
    QVERIFY(!qvx::LeerDatosDePrograma(Base(), "0900"));
    qvx::DatosDePrograma datos = DatosDe("2026-12-31 HR=8.5/1200 KM=40 d=5.5 n=7 lectura sado 2027-01-01 2027-05-05");
    datos.incluidos = {{"000001", "000002"}};
    datos.capacidad = {{1, 160.5}, {12, 80}};
    const auto guardar = [&] { qvx::GuardarDatosDePrograma(Base(), Sesion::Actual().Firmante(), datos); };
    guardar();
    auto leidos = qvx::LeerDatosDePrograma(Base(), "0900");
    QVERIFY(leidos && !leidos->sello.isEmpty());
    datos.sello = leidos->sello;
    QVERIFY(*leidos == datos);
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave, Rc_Oper FROM Registro_Cambio"),
             QStringList{"Programa_Tipo|0900|mlopez"});
    datos.usos.remove("KM");
    datos.festivos.removeFirst();
    datos.descanso = qvx::DatosDePrograma::Descanso::Ninguno;
    guardar();
    leidos = qvx::LeerDatosDePrograma(Base(), "0900");
    QVERIFY(leidos->sello != datos.sello);
    const QStringList antes = escenario->Tablas();
    QVERIFY(Rechazo(guardar).contains("mlopez los cambió el")); // on what was read before
    datos = *leidos;
    datos.usos["HR"].porDia = 30;
    QVERIFY(Rechazo(guardar).contains("de 0 a 24"));
    datos.usos.clear();
    for (const char *tipo : {"0903", "0999"}) {
        datos.tipoEquipo = tipo;
        datos.sello.clear();
        QVERIFY(Rechazo(guardar).contains("no existe o está dado de baja"));
    }
    QCOMPARE(escenario->Tablas(), antes);
    escenario->Correr("DELETE FROM Tipo_Equipo WHERE Te_Cve_Tipo_Equipo = '0900'");
    QCOMPARE(escenario->Filas("SELECT * FROM Programa_Uso"), QStringList());
    QVERIFY(!qvx::LeerDatosDePrograma(Base(), "0900"));
}

void PrPrograma::averias_data()
{
    const Tabla<QString> fila("averia");
    for (const char *averia : {"INSERT ON Programa_Capacidad", "INSERT ON Registro_Cambio", "ocupada"})
        fila(averia, averia);
}

void PrPrograma::averias()
{
    QFETCH(const QString, averia);
    qvx::DatosDePrograma datos = DatosDe("2026-12-31 HR=8");
    datos.capacidad = {{1, 160}};
    const auto guardar = [&] { qvx::GuardarDatosDePrograma(Base(), Sesion::Actual().Firmante(), datos); };
    const QStringList antes = escenario->Tablas();
    Averia mala(*escenario, averia);
    QVERIFY(!Rechazo(guardar).isEmpty());
    mala.Reparar();
    QCOMPARE(escenario->Tablas(), antes);
    guardar();
    QCOMPARE(qvx::LeerDatosDePrograma(Base(), "0900")->capacidad, datos.capacidad);
}

// Two who begin with nothing kept: the second is told.
void PrPrograma::guardadosEntretanto()
{
    const qvx::DatosDePrograma datos = DatosDe("2026-12-31");
    escenario->Correr("INSERT INTO Programa_Tipo (Te_Cve_Tipo_Equipo, Pt_Dia_Cero, Oper_Ult_Modif, Fecha_Ult_Modif) "
                      "VALUES ('0900', '2025-12-31', 'otra', '2026-01-02 03:04:05')");
    QVERIFY(Rechazo([&] {
                qvx::GuardarDatosDePrograma(Base(), Sesion::Actual().Firmante(), datos);
            }).contains("otra los cambió el 2026-01-02 03:04:05"));
}

// A double service of 000002, one that is due later, one in a part without a parent.
void PrPrograma::Sembrar()
{
    const QString columnas = "INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Ts_Cve_Tipo_Servicio, Pm_Prioridad, "
                             "Tep_ID, Pm_ID, Pm_Frecuencia, Pm_Precio) VALUES ('0900', '9001', '9001', ";
    Preparar(
        "UPDATE Plan_Mantenimiento SET Pm_Frecuencia = 90, Pm_Lectura = 500, Pm_Unidad_Lectura = 'HR' WHERE Pm_ID = "
        "'000002';"
        + columnas + "'0004', '000004', 73, 10);" + columnas + "'0005', '000005', 400, 20);" + columnas
        + "'0006', '000006', 30, 40)");
}

// What the command writes and says, and what it refuses in one sentence.
void PrPrograma::ordenes()
{
    Sembrar();
    const QStringList base = escenario->Base().Argumentos();
    const QString csv = escenario->Ruta("p.csv");
    const QStringList orden{"--programa", "900", csv, "--desde", "2026-12-31", "--uso", "hr=8"};
    const QString dicho = Quorvex(orden + QStringList{"--equipos", "3", "--ics", escenario->Ruta("p.ics")} + base);
    QVERIFY2(
        dicho.startsWith("0Excluido: 000003 ")
            && dicho.contains("Excluido: 000004 REVISIÓN, parte 0004 CUERPO / SELLO / RESORTE: de baja arriba: la "
                              "parte 0003 SELLO.\n")
            && dicho.contains("Más adelante, primera fecha 2028-02-04: 000005 ")
            && dicho.contains("Excluido: 000006 REVISIÓN, parte 0006 SUELTA: huérfano: su parte 0006 no cuelga del "
                              "árbol.\n")
            && dicho.endsWith("Programados 2 + más adelante 1 + sin fecha 0 + excluidos 3 = 6 servicios.\n"),
        qPrintable(dicho));
    const QList<csv::Fila> filas = csv::Partir(QString::fromUtf8(Contenido(csv)), ';');
    QCOMPARE(filas.size(), 1 + 12 + 5);
    QCOMPARE(filas.at(0).celdas.mid(1).join(';'),
             "Fecha teórica;Parte;Ruta;Folio;Servicio;Veces;Motivo;Mano de obra;Paro;Costo;Precio");
    QCOMPARE(filas.at(1).celdas.join(';'),
             "2027-01-30;2027-01-30;0002;CUERPO / IMPULSOR;000001;REVISIÓN;1;cada 30 días;6;12;1261.95;3000");
    QCOMPARE(filas.at(3).celdas.join(';'),
             "2027-03-03;2027-03-03;0002;CUERPO / IMPULSOR;000002;REVISIÓN;1;cada 500 HR a 8 HR/día = 62.5 días; antes "
             "que 90 días;0;0;90;1500");
    const QByteArray antes = Contenido(csv);
    for (const auto &[mala, codigo, parte] : QList<std::tuple<QStringList, QString, QString>>{
             {{"--programa", "0900", csv, "--desde", "2027-02-30"}, "2", "no es una fecha"},
             {{"--programa", "0900", csv, "--desde", "2026-12-31", "--uso", "HR=-3"}, "1", "de 0 a 24"},
             {{"--programa", "0900", csv, "--desde", "2026-12-31", "--uso", "HR=1e400"}, "2", "no se entiende"},
             {{"--programa", "0900", csv, "--desde", "2026-12-31", "--uso", "KM=99999999"}, "1", "1000000"},
             {{"--programa", "0900", csv, "--desde", "2026-12-31", "--equipos", "0"}, "1", "de 1 a 100,000"},
             {{"--programa", "0900", csv}, "1", "Falta desde cuándo"},
             {{"--programa", "0900", csv, "--desde", "2026-12-31", "--festivos", csv}, "1", "no es una fecha"},
             {{"--programa", "0900", escenario->Ruta("no/p.csv"), "--desde", "2026-12-31"}, "1", "p.csv"},
             {{"--programa", "0903", csv, "--desde", "2026-12-31"}, "1", "dado de baja"},
             {{"--reporte", "otro", "0900", "x.pdf"}, "2", "plan, hojas, materiales"},
             {{"--reporte", "hojas", "0900", escenario->Ruta("x.pdf"), "--desde", "2026-12-31", "--mes", "2029-01"},
              "1",
              "no está en el programa"}}) {
        const QString fallo = Quorvex(mala + base);
        QVERIFY2(fallo.startsWith(codigo) && fallo.contains(parte), qPrintable(mala.join(' ') + ": " + fallo));
    }
    QCOMPARE(Contenido(csv), antes);
    for (const QString reporte : {"plan", "hojas", "materiales"}) {
        const QString pdf = escenario->Ruta(reporte + ".pdf");
        QCOMPARE(Quorvex(QStringList{"--reporte", reporte, "0900", pdf, "--desde", "2026-12-31"} + base), "0");
        QVERIFY(Contenido(pdf).startsWith("%PDF-") && Contenido(pdf).contains("/FontFile2"));
    }
}

void PrPrograma::calendario()
{
    Sembrar();
    const programa::PlanMedido medido = Leer();
    const auto escrito = [&](const QString &datos, const QString &base) {
        const auto programado = programa::Programar(medido.entradas, DatosDe(datos));
        return programa::Ics(medido, programado, base, QDateTime(QDate(2026, 1, 2), QTime(3, 4), Qt::UTC),
                             programa::Todas(programado));
    };
    const auto uids = [](const QByteArray &ics) {
        QList<QByteArray> hallados;
        for (const QByteArray &linea : ics.split('\n'))
            if (linea.startsWith("UID:"))
                hallados.append(linea);
        return hallados;
    };
    const QByteArray uno = escrito("2026-12-31 HR=8", "a");
    QCOMPARE(uids(uno).size(), 17);
    const QList<QByteArray> suyos = uids(uno);
    QCOMPARE(QSet<QByteArray>(suyos.begin(), suyos.end()).size(), 17);
    QVERIFY(uids(escrito("2026-12-31 HR=8 sado n=4", "a")) == uids(uno)); // events that move, and no others
    QVERIFY(uids(escrito("2026-12-31 HR=8", "b")) != uids(uno));
    QVERIFY(uno.contains("\r\nDTSTART;VALUE=DATE:20270130\r\nDTEND;VALUE=DATE:20270131\r\n"));
    QCOMPARE(programa::Escapado("a;b,c\\d\ne\t"), "a\\;b\\,c\\\\d\\ne");
    const QByteArray largo = QString("SUMMARY:" + QString("áé€𝄞").repeated(40)).toUtf8();
    QByteArray leido;
    for (QByteArray linea : programa::Doblado(largo).split('\n')) {
        QVERIFY(linea.size() <= 76); // with its CR
        linea.replace("\r", "");
        leido += leido.isEmpty() ? linea : linea.mid(1);
        QCOMPARE(QString::fromUtf8(linea).toUtf8(), linea);
    }
    QCOMPARE(leido, largo);

    // As another program reads it.
    const QTemporaryDir carpeta;
    programa::EscribirIcs(escenario->Ruta("p.ics"), uno);
    const auto agenda = [&](const QStringList &orden) {
        QProcess otro;
        otro.start("calcurse", QStringList{"-q", "-D", carpeta.path()} + orden);
        otro.waitForFinished();
        return QString::fromUtf8(otro.readAllStandardOutput());
    };
    agenda({"-i", escenario->Ruta("p.ics")});
    const QString dias = agenda({"-Q", "--from", "01/01/2027", "--days", "365"});
    QVERIFY2(dias.count("\n * ") == 17 && dias.startsWith("01/30/27:\n * REVISIÓN, CUERPO / IMPULSOR (000001)\n"),
             qPrintable(dias));
}

// Every block on one page, in order; nothing that belongs to what follows ends a page, also where rows are high.
void PrPrograma::paginas()
{
    impreso::Documento documento;
    documento.AgregarTabla({{"Uno", 1}, {"Dos", 3}});
    for (int i = 0; i < 400; ++i) {
        documento.Tramo("GRUPO").conLoQueSigue = true;
        for (int fila = 0; fila < i % 5; ++fila)
            documento.Fila({"x", QString("palabras ").repeated(i % 7 * 20)});
        documento.Fila({"suma", ""});
    }
    for (int i = 0; i < 300; ++i) // together longer than a page
        documento.Tramo("SIGUE").conLoQueSigue = true;
    QBuffer memoria;
    memoria.open(QIODevice::WriteOnly);
    QPdfWriter hoja(&memoria);
    hoja.setPageLayout(impreso::Disposicion(documento, impreso::Papel::A4));
    impreso::Paginador paginador(documento, hoja);
    QVERIFY(paginador.Repartir([](int, int) { return true; }));
    QVERIFY(paginador.Paginas() > 20);
    const QList<qsizetype> &comienzos = paginador.Comienzos();
    QVERIFY(std::is_sorted(comienzos.begin(), comienzos.end(), std::less_equal<>()));
    for (const qsizetype comienzo : comienzos.mid(1))
        if (comienzo < documento.bloques.size() - 300)
            QVERIFY(!documento.bloques.at(comienzo - 1).conLoQueSigue);

    // A number stays on its line; a sheet of several pages says on each whose it is.
    documento = {};
    documento.AgregarTabla({{"Uno", 1}, {"Dos", 30}, {"Importe", 2, true}});
    for (const QString titulo : {"UNA", "OTRA"}) {
        documento.Salto();
        documento.Agregar(impreso::Bloque::Clase::Titulo, {titulo});
        for (int i = 0; i < 70; ++i)
            documento.Fila({"x", "", "$123,456,789,012.34"});
    }
    impreso::Paginador otro(documento, hoja);
    QVERIFY(otro.Repartir([](int, int) { return true; }));
    QCOMPARE(otro.Siguen(), (QList<QString>{"", "UNA", "", "OTRA"}));
}

// A part deeper than paper is wide, a product of many services, a service of several times a day.
void PrPrograma::hondos()
{
    const QString sentencias =

        "INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) "
        "WITH RECURSIVE n(i) AS (SELECT 1001 UNION ALL SELECT i + 1 FROM n WHERE i < 1700) SELECT '0900', "
        "CAST(i AS CHAR(4)), CASE i WHEN 1001 THEN '0001' ELSE CAST(i - 1 AS CHAR(4)) END, 'P' || i FROM n;"
        "INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Ts_Cve_Tipo_Servicio, Pm_Prioridad, Tep_ID, Pm_ID, "
        "Pm_Frecuencia) SELECT '0900', '9001', '9001', Tep_ID, '00' || Tep_ID, 0.5 FROM Tipo_Equipo_Parte "
        "WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID BETWEEN '1661' AND '1700';"
        "INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, "
        "Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad) SELECT '0900', Tep_ID, Pm_ID, Pm_ID, '02', '9000000004', 1, "
        "'PZA' FROM Plan_Mantenimiento WHERE Pm_ID LIKE '0016%' OR Pm_ID = '001700'";
    for (const QString &sentencia : sentencias.split(';'))
        escenario->Correr(sentencia);
    const programa::PlanMedido medido = Leer();
    const lectura::Servicio &ultimo = medido.plan.servicios.constLast();
    QCOMPARE(ultimo.ruta, medido.plan.arbol.Ruta("1700")); // no longer than any path
    const auto textos = [](const impreso::Documento &documento, int celda) {
        QStringList todos;
        for (const impreso::Bloque &bloque : documento.bloques)
            todos.append(bloque.textos.value(celda));
        return todos.join('\n');
    };
    const QString plan = textos(programa::ReporteDePlan(medido, {}), 0);
    QVERIFY(plan.contains("\n1001  CUERPO / P1001\n"));
    QVERIFY(plan.contains("\n1700  CUERPO / … / P1678 / ") && plan.contains(" / P1699 / P1700\n"));
    const auto materiales = programa::ReporteDeMateriales(medido, programa::UnaRonda(medido), "", {});
    QVERIFY(textos(materiales, 6).contains("001690 y otros 10"));
    const auto &bloques = materiales.bloques;
    QVERIFY(bloques.at(bloques.size() - 2).conLoQueSigue && bloques.at(bloques.size() - 3).conLoQueSigue);
    const auto programado = programa::Programar(medido.entradas, DatosDe("2026-12-31 n=3"));
    QVERIFY(textos(programa::HojasDeTrabajo(medido,
                                            programa::LaboresDe(medido, programado, programa::Todas(programado)), {}),
                   5)
                .contains("3, 2 veces cada uno"));
}

// A disk that is full, a place that is none, a person who stops it: nothing is there that was not, and what was stays.
void PrPrograma::archivosMalos()
{
    const programa::PlanMedido medido = Leer();
    impreso::Documento documento = programa::ReporteDePlan(medido, {"PLANTA", "yo", "base", escenario->ahora});
    for (int i = 0; i < 2000; ++i)
        documento.Agregar(impreso::Bloque::Clase::Parrafo, {QString::number(i * 7919)});
    const QString pdf = Poner(escenario->Ruta("plan.pdf"), "anterior");
    const auto escribir = [&](const impreso::Avance &avance) {
        return impreso::EscribirPdf(pdf, documento, impreso::Papel::Carta, avance);
    };
    for (const rlim_t tope : {1000, 20000}) { // before and within the pages
        const DiscoLleno disco(tope);
        QVERIFY(Rechazo([&] { escribir([](int, int) { return true; }); }).endsWith("plan.pdf: File too large"));
        QPrinter impresora; // the file that the dialog lists among the printers
        impresora.setOutputFormat(QPrinter::PdfFormat);
        impresora.setOutputFileName(pdf);
        QVERIFY(Rechazo([&] {
                    impreso::Imprimir(impresora, documento, [](int, int) { return true; });
                }).contains("plan.pdf"));
    }
    for (const int paso : {0, 3, int(documento.bloques.size())}) {
        int pasos = 0;
        QVERIFY(!escribir([&](int, int) { return pasos++ < paso; }));
    }
    QCOMPARE(Contenido(pdf), "anterior");
    QCOMPARE(QDir(escenario->Ruta("")).entryList({"plan.pdf*"}), QStringList{"plan.pdf"});
    QVERIFY(!Rechazo([&] {
                 impreso::EscribirPdf(escenario->Ruta(""), documento, impreso::Papel::A4,
                                      [](int, int) { return true; });
             }).isEmpty());
    QVERIFY(escribir([](int, int) { return true; }));
    QVERIFY(Contenido(pdf).startsWith("%PDF-"));
}

// The page from its data to its filters, as a person uses it.
void PrPrograma::pagina()
{
    Sembrar();
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.show();
    QVERIFY(QTest::qWaitForWindowActive(&principal));
    QTest::keyClick(&principal, Qt::Key_F11);
    auto &suya = *principal.findChild<PaginaPrograma *>();
    const auto texto = [&](const char *nombre) { return suya.findChild<QLabel *>(nombre)->text(); };
    QVERIFY(texto("lblAvisoDePrograma").startsWith("Elija"));
    suya.PonerTipo("0900");
    QVERIFY(texto("lblAvisoDePrograma").contains("no se ha guardado"));
    const auto dialogo = [&](const std::function<void(DialogoDatosDePrograma &)> &pasos) {
        QTimer::singleShot(0, &suya,
                           [&] { pasos(*qobject_cast<DialogoDatosDePrograma *>(QApplication::activeModalWidget())); });
        suya.findChild<QPushButton *>("cmdDatosDePrograma")->click();
    };
    dialogo([](DialogoDatosDePrograma &forma) {
        forma.findChild<QDateEdit *>("fecDiaCero")->setDate(QDate(2026, 12, 31));
        forma.findChild<QDoubleSpinBox *>("spnUsoHR")->setValue(8);
        forma.findChild<QPlainTextEdit *>("txtFestivos")->setPlainText("mañana");
        forma.findChild<QPushButton *>("cmdGuardarDatos")->click();
        QVERIFY(forma.isVisible() && forma.findChild<QLabel *>("lblObjecionDeDatos")->text().contains("renglón 1"));
        forma.findChild<QPlainTextEdit *>("txtFestivos")->setPlainText("2027-01-30");
        forma.findChild<QTabWidget *>()->setCurrentIndex(3);
        forma.findChild<QPushButton *>("cmdGuardarDatos")->click();
    });
    QCOMPARE(qvx::LeerDatosDePrograma(Base(), "0900")->usos.value("HR").porDia, 8.0);
    QCOMPARE(texto("lblConciliacion"), "Programados 2 + más adelante 1 + sin fecha 0 + excluidos 3 = 6 servicios.");
    QCOMPARE(texto("lblCuentaDePrograma"), "17 fechas");
    const auto *lista = suya.findChild<QTreeView *>("lvPrograma");
    QCOMPARE(lista->model()->index(0, 0).data().toString() + lista->model()->index(0, 1).data().toString(),
             "2027-01-292027-01-30");
    Q_EMIT suya.findChild<GraficaDeCarga *>()->Elegido(4, -1);
    QCOMPARE(texto("lblCuentaDePrograma"), "2 fechas de 17");
    QCOMPARE(suya.findChild<QTreeView *>("lvTotalesDePrograma")->model()->index(0, 4).data().toString(), "$450.65");
    suya.findChild<QPushButton *>("cmdQuitarFiltrosDelPrograma")->click();
    QCOMPARE(texto("lblCuentaDePrograma"), "17 fechas");
    auto &fichas = *suya.findChild<QTabWidget *>("tabPrograma");
    for (int ficha = 0; ficha < fichas.count(); ++ficha)
        fichas.setCurrentIndex(ficha);
    suya.findChild<QDoubleSpinBox *>("spnSiUsoHR")->setValue(16);
    QTRY_VERIFY(texto("lblFechasQueSi").startsWith("Se mueven 5 fechas, aparecen 6 y desaparecen 0."));
    QCOMPARE(qvx::LeerDatosDePrograma(Base(), "0900")->usos.value("HR").porDia, 8.0);
    escenario->Personas().DarArchivo(escenario->Ruta("si.csv")); // what stands there is what goes out
    QTimer::singleShot(0, &suya, [] { qobject_cast<QDialog *>(QApplication::activeModalWidget())->accept(); });
    suya.findChild<QAction *>("accExportarProgramaCsv")->trigger();
    QVERIFY(Contenido(escenario->Ruta("si.csv")).contains("\r\nServicios hechos;17;23;6\r\n"));
    escenario->Correr("UPDATE Programa_Tipo SET Oper_Ult_Modif = 'otra'");
    dialogo([&](DialogoDatosDePrograma &forma) {
        forma.findChild<QPushButton *>("cmdGuardarDatos")->click();
        QVERIFY(Mensajes().value(0).contains("otra los cambió el"));
        forma.reject();
    });
    Preparar("UPDATE Plan_Mantenimiento SET Pm_Frecuencia = 0.01, Pm_Lectura = 0 WHERE Pm_ID = '000002'");
    suya.Actualizar();
    QVERIFY(texto("lblAvisoDePrograma").contains("000002 REVISIÓN"));
    QVERIFY(!fichas.isEnabled());
}

// Three files or none.
void PrPrograma::paquete()
{
    const programa::PlanMedido medido = Leer();
    const auto programado = programa::Programar(medido.entradas, DatosDe("2026-12-31"));
    const auto paquete = programa::PaqueteDelMes::En(escenario->Ruta("marzo"));
    const auto escribir = [&](bool sigue) {
        return paquete.Escribir(medido, programado, 2, {}, impreso::Papel::Carta, [&](int, int) { return sigue; });
    };
    QVERIFY(!escribir(false));
    QVERIFY(QDir(escenario->Ruta("")).entryList({"marzo*", ".quorvex*"}, QDir::AllEntries | QDir::Hidden).isEmpty());
    QVERIFY(escribir(true));
    QCOMPARE(QDir(escenario->Ruta("")).entryList({"marzo*"}),
             (QStringList{"marzo calendario.ics", "marzo hojas.pdf", "marzo surtido.pdf"}));
    QVERIFY(Rechazo([&] { escribir(true); }).contains("ya existe"));
    qvx::GuardarNombreDePlanta(Base(), Sesion::Actual().Firmante(), "", "PLANTA NORTE");
    QCOMPARE(qvx::NombreDePlanta(Base()), "PLANTA NORTE");
    QVERIFY(Rechazo([&] {
                qvx::GuardarNombreDePlanta(Base(), Sesion::Actual().Firmante(), "", "PLANTA SUR");
            }).contains("PLANTA NORTE"));
}

PRUEBA(PrPrograma)
#include "pr_programa.moc"
