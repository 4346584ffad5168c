#include "app/DialogoIntegridad.h"
#include "app/VentanaPrincipal.h"
#include "support/PruebaPantalla.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>

using qvx::Suelto;

// "Revisar integridad": what the trees do not reach, found and put back, by the library, the window and the command.
class PrIntegridad : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void buscar();
    void indices();
    void corregir();
    void corregidoPorOtro();
    void ventana();
    void programa_data();
    void programa();

private:
    qvx::Conexion &Base() { return qvx::Sesion::Actual().Conexion(); }
    void Soltar();
    QStringList Sueltos();
    QList<qvx::Correccion> Todos(const QString &destino);
};

// Beside the plan's part 0006: a service dropped on the root, with its lines; one of another type whose part is gone; a
// ring of two parts, with one below, and a part below itself; and a service and a part whose keys differ only in
// blanks.
void PrIntegridad::Soltar()
{
    const auto parte = [&](const QString &id, const QString &padre) {
        escenario->Motor("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) "
                         "VALUES ('0900', '"
                         + id + "', '" + padre + "', 'P" + id.trimmed() + "')");
    };
    escenario->Motor("UPDATE Plan_Mantenimiento SET Tep_ID = 'RAIZ' WHERE Pm_ID = '000001'");
    escenario->Motor("UPDATE Plan_Mantenimiento_Detalle SET Tep_ID = 'RAIZ' WHERE Pm_ID = '000001'");
    escenario->Motor("UPDATE Plan_Mantenimiento SET Tep_ID = '0002 ' WHERE Pm_ID = '000002'");
    escenario->Motor("INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio) VALUES "
                     "('0902', '0009', '000001', '9999')");
    parte("0007", "0006");
    parte("0010", "0011");
    parte("0011", "0010 ");
    parte("0012", "0011");
    parte("0013", "0013");
    parte("0014  ", "0001 ");
}

QStringList PrIntegridad::Sueltos()
{
    QStringList textos;
    for (const Suelto &suelto : qvx::BuscarSueltos(Base()))
        textos.append(suelto.tipoEquipo + (suelto.clase == Suelto::Clase::Parte ? " P " : " S ") + suelto.clave + " "
                      + suelto.descripcion + ": " + suelto.motivo);
    return textos;
}

// Everything that is found; services go under destino.
QList<qvx::Correccion> PrIntegridad::Todos(const QString &destino)
{
    QList<qvx::Correccion> todos;
    for (const Suelto &suelto : qvx::BuscarSueltos(Base()))
        todos.append({suelto, suelto.clase == Suelto::Clase::Servicio ? destino : QString()});
    return todos;
}

void PrIntegridad::buscar()
{
    Soltar();
    QCOMPARE(Sueltos(), (QStringList{
                            "0900 P 0006 SUELTA: Su parte superior «7777» no existe",
                            "0900 P 0010 P0010: Su parte superior «0011» cuelga a su vez de ella",
                            "0900 P 0011 P0011: Su parte superior «0010» cuelga a su vez de ella",
                            "0900 P 0013 P0013: Es su propia parte superior",
                            "0900 S 000001 REVISIÓN: Su parte «RAIZ» no existe",
                            "0902 S 000001 : Su parte «0009» no existe",
                        }));
    QStringList elegibles;
    for (const auto &[clave, descripcion] : qvx::PartesParaServicios(Base(), "0900"))
        elegibles.append(clave);
    QCOMPARE(elegibles.join(' '), "0001 0002 0004 0005 0014");
}

// With 10,000 parts no statement may look for each row's part by reading them all.
void PrIntegridad::indices()
{
    SembrarGrande(*escenario, "0904", 10000);
    escenario->Motor("UPDATE Plan_Mantenimiento SET Tep_ID = 'RAIZ' WHERE Te_Cve_Tipo_Equipo = '0904' AND Pm_ID = "
                     "'000123'");
    escenario->Traza();
    QVERIFY(Sueltos().contains("0904 S 000123 REVISIÓN: Su parte «RAIZ» no existe"));
    const QStringList traza = escenario->Traza();
    QCOMPARE(traza.size(), 5); // the types, the parts of each, the services
    for (const QString &renglon : traza) {
        const QString plan = escenario->PlanDe(renglon.section('\t', 1));
        static const QRegularExpression recorrido("Seq Scan|SCAN [pt]\\b|TEMP B-TREE");
        QVERIFY2(plan.contains("index", Qt::CaseInsensitive) && !plan.contains(recorrido), qPrintable(plan));
    }
}

void PrIntegridad::corregir()
{
    Soltar();
    const auto corregidos = qvx::CorregirSueltos(Todos("0005").mid(0, 5)); // the other type has no part for the service
    QCOMPARE(corregidos.partes, 3);                                        // one of the ring is enough
    QCOMPARE(corregidos.servicios, 1);
    const QString firma = "Oper_Ult_Modif = 'mlopez' AND Fecha_Ult_Modif = '2026-03-14 09:26:53'";
    QCOMPARE(Partes("Tep_ID || Tep_Padre", firma), "00060000 00100000 00130000");
    QCOMPARE(escenario->Filas("SELECT Tep_ID, Pm_ID FROM Plan_Mantenimiento WHERE " + firma),
             QStringList{"0005|000001"});
    QCOMPARE(escenario->Filas("SELECT Tep_ID, Pm_ID, Pmd_ID FROM Plan_Mantenimiento_Detalle ORDER BY Pmd_ID"),
             (QStringList{"0005|000001|000001", "0005|000001|000002", "0005|000001|000003", "0003|000003|000004"}));
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave FROM Registro_Cambio ORDER BY Rc_ID"),
             (QStringList{"Tipo_Equipo_Parte|0006|0900", "Tipo_Equipo_Parte|0010|0900", "Tipo_Equipo_Parte|0013|0900",
                          "Plan_Mantenimiento|0900|000001"}));
    QCOMPARE(Sueltos(), QStringList{"0902 S 000001 : Su parte «0009» no existe"});
}

// What was put right after the search is not touched.
void PrIntegridad::corregidoPorOtro()
{
    Soltar();
    const auto todos = Todos("0005");
    escenario->Motor("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) VALUES "
                     "('0900', '7777', '0000', 'VUELTA'), ('0900', 'RAIZ', '0000', 'VUELTA')");
    Preparar("UPDATE Tipo_Equipo_Parte SET Tep_Padre = '0005' WHERE Tep_ID = '0011';DELETE FROM Tipo_Equipo_Parte "
             "WHERE Tep_ID = '0013';DELETE FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0902'");
    const QStringList antes = escenario->Tablas();
    const auto corregidos = qvx::CorregirSueltos(todos);
    QCOMPARE(corregidos.partes + corregidos.servicios, 0);
    QCOMPARE(escenario->Tablas(), antes);
}

// From the menu: parts to choose from, consent, and the screen's tree afterwards.
void PrIntegridad::ventana()
{
    Soltar();
    Preparar("");
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.show();
    QVERIFY(QTest::qWaitForWindowActive(&principal));
    QCOMPARE(Arbol().Count(), 7);
    bool abierto = false;
    EnElDialogo([&](QWidget &dialogo) {
        abierto = true;
        auto &lista = escenario->En<QTreeWidget>(dialogo, "lvSueltos");
        auto &parte = escenario->En<QComboBox>(dialogo, "cboParte");
        auto &corregir = escenario->En<QPushButton>(dialogo, "cmdCorregir");
        auto &aviso = escenario->En<QLabel>(dialogo, "lblAviso");
        const auto renglon = [&](int numero) {
            QStringList textos;
            for (int columna = 0; columna < lista.columnCount(); ++columna)
                textos.append(lista.topLevelItem(numero)->text(columna));
            return textos.join('|');
        };
        const auto elegir = [&](int numero, bool elegido) { lista.topLevelItem(numero)->setSelected(elegido); };
        QCOMPARE(renglon(0), "0900|Parte|0006|SUELTA|Su parte superior «7777» no existe|RAIZ");
        QCOMPARE(renglon(4), "0900|Servicio|000001|REVISIÓN|Su parte «RAIZ» no existe|(elija una parte)");
        QCOMPARE(aviso.text(), "Se encontraron: 6 renglones.");
        elegir(4, true);
        elegir(5, true); // services of two types
        QVERIFY(!corregir.isEnabled() && !parte.isEnabled());
        elegir(5, false);
        elegir(0, true);
        QVERIFY(!corregir.isEnabled() && parte.isEnabled());
        QTest::keyClicks(&parte, "0005");
        QVERIFY(renglon(4).endsWith("|0005 - MOTOR") && corregir.isEnabled());

        const QString pregunta = "292|Quorvex|QVX|ERR-ID:1000003|Se corregirán 1 parte y 1 servicio. ¿Desea continuar?";
        const QStringList antes = escenario->Tablas();
        Averia averia(*escenario, "INSERT ON Registro_Cambio");
        for (int respuesta : {qvx::mensaje::No, qvx::mensaje::Si}) {
            escenario->Personas().Responder(1000003, respuesta);
            QTest::mouseClick(&corregir, Qt::LeftButton);
            QCOMPARE(escenario->Tablas(), antes);
        }
        QCOMPARE(Mensajes(), (QStringList{pregunta, pregunta, "16|Quorvex|QVX|ERR-ID:1000004|falla"}));
        averia.Reparar();
        escenario->Personas().Responder(1000003, qvx::mensaje::Si);
        QTest::mouseClick(&corregir, Qt::LeftButton);
        QCOMPARE(Mensajes(), QStringList{pregunta});
        QCOMPARE(aviso.text(), "Se corrigió: 1 parte y 1 servicio. Se encontraron: 4 renglones.");
        QTest::mouseClick(&escenario->En<QPushButton>(dialogo, "cmdCerrar"), Qt::LeftButton);
    });
    principal.findChild<QAction *>("mnuRevisarIntegridad")->trigger();
    QVERIFY(abierto);
    QCOMPARE(Arbol().Count(), 9); // 0006 and what hangs from it
    ElegirNodo(Arbol(), "N0005");
    QCOMPARE(Lista().Texto(0), "000001");
}

void PrIntegridad::programa_data()
{
    const Tabla<QStringList, QString, int, QString> fila("argumentos", "antes", "salida", "texto");
    fila("encuentra", {}, "", 1, "Tipo de equipo 0900, parte 0006 SUELTA: Su parte superior «7777» no existe.\n");
    fila("nada", {}, "DELETE FROM Plan_Mantenimiento; DELETE FROM Tipo_Equipo_Parte", 0,
         "No se encontró nada que corregir.\n");
    fila("no existe", {"--base-datos", "no/existe.db"}, "", 1, "La base de datos «no/existe.db» no existe.\n");
    fila("con otra orden", {"--validar", "plan.xml"}, "", 2, "--revisar");
}

// Without a display, and without a change to the database.
void PrIntegridad::programa()
{
    QFETCH(QStringList, argumentos);
    QFETCH(QString, antes);
    QFETCH(QString, texto);
    Preparar(antes);
    const QStringList tablas = escenario->Tablas();
    QProcess quorvex;
    auto entorno = QProcessEnvironment::systemEnvironment();
    for (const char *variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        entorno.remove(variable);
    quorvex.setProcessEnvironment(entorno);
    quorvex.setProcessChannelMode(QProcess::MergedChannels);
    if (!argumentos.contains("--base-datos"))
        argumentos += escenario->Base().Argumentos();
    quorvex.start(PROGRAMA_QUORVEX, QStringList{"--revisar"} + argumentos);
    QVERIFY(quorvex.waitForFinished());
    const QString dicho = QString::fromUtf8(quorvex.readAll());
    QVERIFY2(dicho.contains(texto), qPrintable(dicho));
    QTEST(quorvex.exitCode(), "salida");
    QCOMPARE(escenario->Tablas(), tablas);
}

PRUEBA_MAIN(PrIntegridad)
#include "pr_integridad.moc"
