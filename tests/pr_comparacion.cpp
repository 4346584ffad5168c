#include "app/VentanaPrincipal.h"
#include "app/comparar/DialogoComparar.h"
#include "app/comparar/Fuentes.h"
#include "app/comparar/ModeloComparacion.h"
#include "app/comparar/Previsto.h"
#include "app/comparar/TextoDeComparacion.h"
#include "data/ErrorEjecucion.h"
#include "plan/Deshacer.h"
#include "plan/Historia.h"
#include "plan/RestaurarPlan.h"
#include "support/Archivos.h"
#include "support/Procesos.h"
#include "support/PruebaPantalla.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

using qvx::FilasDelPlan;

// Plans side by side: what differs, what an import would leave, and the rows of one written over the other's.
class PrComparacion : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void previsto_data();
    void previsto();
    void rechazado_data();
    void rechazado();
    void diferencias_data();
    void diferencias();
    void restaurado_data();
    void restaurado();
    void sinRestaurar();
    void historia();
    void ventana();
    void linea();

private:
    static qvx::Conexion &Base() { return qvx::Sesion::Actual().Conexion(); }
    static FilasDelPlan Filas(const QString &tipo = "0900") { return qvx::LeerFilas(Base(), tipo); }
    static FilasDelPlan SinFirmas(FilasDelPlan plan);
    QString Guardar(const QByteArray &contenido, const QByteArray &tipo = "0900") const
    {
        return Poner(escenario->Ruta("documento.xml"), "<?xml version='1.0'?>\n<PlanMantenimiento><TipoEquipo Id=\""
                                                           + tipo + "\">" + contenido
                                                           + "</TipoEquipo></PlanMantenimiento>\n");
    }
};

namespace
{

QByteArray Servicio(const QByteArray &lineas, const QByteArray &paro = "SI", const QByteArray &numero = "2")
{
    return "<TipoServicio Id=\"9001\" UnidadLectura=\"HRS\" FrecuenciaLectura=\"" + numero
           + "\" FrecuenciaDias=\"0\" RequiereParo=\"" + paro + "\" Duracion=\"" + numero + "\" Precio=\"" + numero
           + "\" Prioridad=\"9001\">" + (lineas.isEmpty() ? "<ManoObra/><Refacciones/><Herramientas/>" : lineas)
           + "</TipoServicio>";
}

QByteArray Parte(const QByteArray &clave, const QByteArray &contenido = {})
{
    return "<Parte Id=\"" + clave + "\" Descripción=\"PIEZA \">" + contenido + "</Parte>";
}

QByteArray Lineas(const QList<QByteArray> &refacciones)
{
    QByteArray lineas;
    for (const QByteArray &una : refacciones)
        lineas += "<Refaccion Id=\"" + una.split('*').at(0) + "\" Cantidad=\"" + una.split('*').at(1)
                  + "\" TipoGasto=\"9009\"/>";
    return "<ManoObra><Servicio Id=\"9000000009\" Cantidad=\"1.50\"/></ManoObra><Refacciones>" + lineas
           + "</Refacciones><Herramientas><Herramienta Id=\"9000000003\" Cantidad=\"2\"/></Herramientas>";
}

} // namespace

FilasDelPlan PrComparacion::SinFirmas(FilasDelPlan plan)
{
    for (auto &fila : plan.partes)
        for (int i = qvx::parte::OperAlta; i <= qvx::parte::FechaBaja; ++i)
            fila[i] = QVariant();
    for (auto &fila : plan.servicios)
        for (int i = qvx::servicio::OperAlta; i <= qvx::servicio::FechaBaja; ++i)
            fila[i] = QVariant();
    return plan;
}

void PrComparacion::previsto_data()
{
    const Tabla<QByteArray> fila("contenido");
    fila("vacío", "");
    fila("lo exportado", "exportar");
    fila("en el tipo y en partes",
         Servicio("") + Parte("0009 ", Servicio("", "si") + Parte("A-1", Servicio("", "NO"))));
    fila("renglones",
         Parte("1", Servicio(Lineas({"9000000002*1", "9000000002*2", "9000000004 *3", "NADA*4", "*1", "NADA*5"}))
                        + Servicio(Lineas({"NADA*1"}))));
    fila("números",
         Parte("0001", Servicio(Lineas({"9000000002*0.30000000000000004", "9000000002*12345678901234567890"}), "SI",
                                "0.1000000000000000055")
                           + Servicio("", "SI", "-7.") + Servicio("", "SI", ".5")));
}

// What is foretold is what the screen's import leaves: every row, with its keys and values.
void PrComparacion::previsto()
{
    QFETCH(QByteArray, contenido);
    QString ruta = Guardar(contenido);
    ElegirTipo("0900");
    escenario->Correr("UPDATE Producto SET Pr_Costo_Estandar = 0.1 WHERE Pr_Cve_Producto = '9000000002'");
    if (contenido == "exportar")
        Exportar(ruta = escenario->Ruta("exportado.xml"));
    const QStringList antes = escenario->Tablas();
    const comparar::Previsto previsto = comparar::PreverImportacion(Base(), ruta);
    QCOMPARE(escenario->Tablas(), antes);
    Importar(ruta);
    const QString dicho = Mensajes().join('\n');
    QVERIFY2(SinFirmas(Filas()) == previsto.filas, qPrintable(dicho));
    QCOMPARE(previsto.filas.Vacio(), contenido.isEmpty());
    for (const QString &desconocido : previsto.desconocidos)
        QVERIFY(dicho.contains(" ," + desconocido));
    QCOMPARE(previsto.desconocidos.isEmpty(), !dicho.contains("no están registrados"));
    const auto despues = comparar::CompararConDocumento(Base(), ruta); // the same import again
    QVERIFY2(despues.comparacion.SonIguales() && despues.comparacion.folios == 0,
             qPrintable(comparar::Renglones(despues.comparacion).join('\n')));
}

void PrComparacion::rechazado_data()
{
    const Tabla<QByteArray, QByteArray, QString> fila("tipo", "contenido", "motivo");
    fila("dos veces", "0900", Parte("1") + Parte("2", Parte("1 ")), "dos partes con la clave 1 ");
    fila("comillas", "0900", Parte("1", Servicio("", "S'I'")), "comillas sencillas");
    fila("sin siguiente", "0900", Parte("2147483647"), "no queda número");
    fila("sin fin", "0900", Parte("1", Servicio(Lineas({"9000000002*" + QByteArray(310, '9')}))), "");
    fila("cancelado", "0903", Parte("1"), "No existe el tipo de equipo");
    fila("sin formato", "0900", "<Otra/>", "Renglón 2");
}

// What the import would not do is said before, and it does not do it.
void PrComparacion::rechazado()
{
    QFETCH(QByteArray, tipo);
    QFETCH(QByteArray, contenido);
    QFETCH(QString, motivo);
    const QString ruta = Guardar(contenido, tipo);
    QString error;
    try {
        comparar::PreverImportacion(Base(), ruta);
    } catch (const qvx::ErrorEjecucion &otro) {
        error = otro.Descripcion();
    }
    QVERIFY2(!error.isEmpty() && error.contains(motivo), qPrintable(error));
    const QStringList antes = escenario->Tablas();
    ElegirTipo("0900");
    Importar(ruta);
    QVERIFY(!Dichos().isEmpty());
    QCOMPARE(escenario->Tablas(), antes);
}

void PrComparacion::diferencias_data()
{
    const QString deParte = "Tipo_Equipo_Parte SET %1 WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '0005'";
    const QString deServicio = "Plan_Mantenimiento SET %1 WHERE Te_Cve_Tipo_Equipo = '0900' AND Pm_ID = '000001'";
    const Tabla<QString, QString> fila("cambio", "dicho");
    fila("nada", "UPDATE " + deServicio.arg("Pm_Precio = 1000.0, Oper_Ult_Modif = 'otro'"), "");
    fila("una parte", "UPDATE " + deParte.arg("Tep_Descripcion = 'MOTOR', Tep_Padre = '0001', Es_Cve_Estado = 'BA'"),
         "Parte 0005 MOTOR: cambia|Parte superior: «0000 RAIZ» → «0001 CUERPO»|Estado: «Activo» → «Dado de baja»");
    fila("un servicio",
         "UPDATE " + deServicio.arg("Pm_Unidad_Lectura = 'HRS', Pm_Lectura = 0.25, Ts_Cve_Tipo_Servicio = '9009'"),
         "Parte 0002 IMPULSOR|Servicio 000001 OLVIDADO: cambia|Tipo de servicio: «9001 REVISIÓN» → «9009 "
         "OLVIDADO»|Cada (lectura): «0» → «0.25»|Unidad de la lectura: «» → «HRS HORAS DE PRUEBA»");
    fila("movido",
         "UPDATE " + deServicio.arg("Tep_ID = '0005'")
             + "; UPDATE Plan_Mantenimiento_Detalle SET Tep_ID = '0005' WHERE Pm_ID = '000001'",
         "Parte 0005 MOTOR|Servicio 000001 REVISIÓN: cambia|Parte: «0002 IMPULSOR» → «0005 MOTOR»");
    // As the editor saves: all lines new.
    fila(
        "renglones",
        "UPDATE Plan_Mantenimiento_Detalle SET Pmd_ID = '01' || substr(Pmd_ID, 3); "
        "DELETE FROM Plan_Mantenimiento_Detalle WHERE Pmd_ID = '010003'; "
        "INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, "
        "Pmd_Cantidad) VALUES ('0900', '0002', '000001', '7', '02', '9000000002', 9)",
        "Parte 0002 IMPULSOR|Servicio 000001 REVISIÓN|Refacción SELLO (9000000002): se agrega|Herramienta LLAVE "
        "(9000000003): se quita");
    fila("sin su parte",
         "DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0005'; "
         "DELETE FROM Plan_Mantenimiento WHERE Pm_ID = '000003'",
         "Parte 0003 SELLO|Servicio 000003 REVISIÓN: se quita|Servicio 000003 (no hay un servicio con este folio)|"
         "Mano de obra MECÁNICO (9000000001): se agrega|Parte 0005 MOTOR: se quita");
}

// Only what changed, by the forms' words; and the same once it is back.
void PrComparacion::diferencias()
{
    QFETCH(QString, cambio);
    QFETCH(QString, dicho);
    const FilasDelPlan antes = Filas();
    for (const QString &sentencia : cambio.split("; "))
        escenario->Correr(sentencia);
    const auto nombres = comparar::LeerNombres(Base());
    const auto comparacion = comparar::Comparar(antes, Filas(), nombres, true);
    QStringList renglones = comparar::Renglones(comparacion);
    for (QString &renglon : renglones)
        renglon = renglon.trimmed();
    if (QByteArray(QTest::currentDataTag()) == "sin su parte") // an orphan's lines are told as its own
        renglones.removeAll("Mano de obra MECÁNICO (9000000001): se quita");
    QCOMPARE(renglones.join('|'), dicho);
    QCOMPARE(comparacion.SonIguales(), dicho.isEmpty());
    QCOMPARE(comparar::EnHoja(comparacion).filas.isEmpty(), dicho.isEmpty());
    ModeloComparacion modelo;
    const QAbstractItemModelTester prueba(&modelo, QAbstractItemModelTester::FailureReportingMode::QtTest);
    modelo.Mostrar(comparacion, false);
    modelo.Mostrar(comparacion, true);
    QCOMPARE(modelo.Renglones() == 0, dicho.isEmpty());
}

void PrComparacion::restaurado_data()
{
    diferencias_data();
    const Tabla<QString, QString> fila("cambio", "dicho");
    fila("todo",
         "DELETE FROM Plan_Mantenimiento_Detalle; DELETE FROM Plan_Mantenimiento; DELETE FROM "
         "Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900'",
         "sí");
}

// Every value comes back as it was, absent ones and blanks too; what is the same keeps its version, what is written
// gets a new one; it is one operation of the history, which can be taken back.
void PrComparacion::restaurado()
{
    QFETCH(QString, cambio);
    QFETCH(QString, dicho);
    escenario->Correr("UPDATE Plan_Mantenimiento_Detalle SET Pmd_Cantidad = 0.1 + 0.2, Pmd_Unidad = 'O''Ñ ' WHERE "
                      "Pmd_ID = '000002'");
    const FilasDelPlan antes = Filas();
    const auto versiones = [&] {
        return escenario->Filas("SELECT Tep_ID, '', Version FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' "
                                "UNION ALL SELECT Tep_ID, Pm_ID, Version FROM Plan_Mantenimiento WHERE "
                                "Te_Cve_Tipo_Equipo = '0900' ORDER BY 1, 2");
    };
    for (const QString &sentencia : cambio.split("; "))
        escenario->Correr(sentencia);
    const FilasDelPlan cambiado = Filas();
    const QStringList deCambiado = versiones();
    const auto escritas = qvx::RestaurarPlan(Base(), qvx::Sesion::Actual().Firmante(), cambiado, antes, "De prueba");
    const FilasDelPlan ahora = Filas();
    for (const qvx::DelPlan clase : qvx::TodoElPlan) {
        QCOMPARE(ahora.De(clase).size(), antes.De(clase).size());
        for (qsizetype i = 0; i < antes.De(clase).size(); ++i)
            QVERIFY(qvx::SonIguales(qvx::TablaDe(clase), antes.De(clase).at(i), ahora.De(clase).at(i)));
    }
    QCOMPARE(escritas.Ninguna(), dicho.isEmpty());
    QCOMPARE(versiones() == deCambiado, dicho.isEmpty());
    QVERIFY(qvx::Distintas(ahora, antes).Ninguna());
    if (dicho.isEmpty()
        || cambio.startsWith("DELETE FROM Tipo_Equipo_Parte")) // its lines would hang from nothing again
        return;
    const auto operacion = qvx::LeerOperaciones(Base(), {}).value(0);
    QCOMPARE(operacion.clase + "|" + operacion.detalle + "|" + operacion.operador, "Plan restaurado|De prueba|mlopez");
    QVERIFY(
        qvx::Deshacer(Base(), qvx::Sesion::Actual().Firmante(), {operacion.numero}, qvx::AlDeshacer::SoloEsas, false)
            .numero
        > 0);
    QVERIFY(qvx::Distintas(Filas(), cambiado).Ninguna());
}

// Changed after it was shown, failing in the middle, of a type that is gone: nothing is written.
void PrComparacion::sinRestaurar()
{
    const FilasDelPlan antes = Filas();
    escenario->Correr("UPDATE Plan_Mantenimiento SET Pm_Precio = 1");
    const FilasDelPlan cambiado = Filas();
    const auto falla = [&](const FilasDelPlan &mostrado) {
        const QStringList tablas = escenario->Tablas();
        try {
            qvx::RestaurarPlan(Base(), qvx::Sesion::Actual().Firmante(), mostrado, antes, {});
        } catch (const qvx::ErrorEjecucion &error) {
            return escenario->Tablas() == tablas ? error.Descripcion() : "cambió: " + error.Descripcion();
        }
        return QString("escribió");
    };
    {
        const Averia averia(*escenario, "INSERT ON Registro_Cambio WHEN NEW.Rc_Clave LIKE '%000002%'");
        QVERIFY(falla(cambiado).contains("falla"));
    }
    escenario->Correr("UPDATE Plan_Mantenimiento SET Oper_Ult_Modif = 'otro' WHERE Pm_ID = '000003'");
    QVERIFY2(falla(cambiado).contains("cambió después de que se leyó"), qPrintable(falla(cambiado)));
    escenario->Correr("UPDATE Tipo_Equipo SET Es_Cve_Estado = 'BA' WHERE Te_Cve_Tipo_Equipo = '0900'");
    QVERIFY(falla(Filas()).contains("no existe o está dado de baja"));
}

// A plan with itself before an operation; a document under the same folios that stand for other services.
void PrComparacion::historia()
{
    ElegirTipo("0900");
    CambiarServicio("N0002", "000001", "1111");
    const QString numero = QString::number(qvx::LeerOperaciones(Base(), {}).value(0).numero);
    const auto comparados = comparar::CompararFuentes(Base(), comparar::Fuente::Leer(Base(), "900@" + numero),
                                                      comparar::Fuente::Leer(Base(), "900"));
    QVERIFY2(comparar::Renglones(comparados.comparacion).join('|').endsWith("Precio: «1,000» → «1,111»"),
             qPrintable(comparar::Renglones(comparados.comparacion).join('|')));
    for (const char *malo : {"900@", "900@ayer", "7777", "900@0"})
        QVERIFY_THROWS_EXCEPTION(qvx::ErrorEjecucion, comparar::LeerLado(Base(), comparar::Fuente::Leer(Base(), malo)));
}

// The preview, then the screen's own question.
void PrComparacion::ventana()
{
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.show();
    QVERIFY(QTest::qWaitForWindowActive(&principal));
    principal.MostrarEnPlan("0900", "0002");
    const QString ruta = Guardar(Parte("0002", Servicio(Lineas({"NADA*4"}))));
    const QStringList antes = escenario->Tablas();
    QString dicho;
    const auto importar = [&](bool aceptar) {
        for (int vez = 0; vez < (aceptar ? 2 : 1); ++vez) // the screen asks too: only the desk's person foresees it
            escenario->Personas().DarArchivo(ruta);
        EnElDialogo([&, aceptar](QWidget &previa) {
            dicho = En<QLabel>(previa, "lblResumen").text() + En<QLabel>(previa, "lblAvisos").text();
            QTest::keyClick(&previa, aceptar ? Qt::Key_Return : Qt::Key_Escape);
        });
        En<QAction>(principal, "mnuImportarConPrevia").trigger();
    };
    importar(false);
    QVERIFY2(dicho.contains("Partes: 5 quitadas, 1 cambiada.") && dicho.contains("No entran al plan 1 renglón"),
             qPrintable(dicho));
    QCOMPARE(escenario->Tablas(), antes);
    escenario->Personas().Responder(7500048, qvx::mensaje::Si);
    importar(true);
    QTRY_COMPARE(Filas().partes.size(), 1);
    Mensajes();

    DialogoComparar dialogo("0900", &principal);
    dialogo.show();
    En<QComboBox>(dialogo, "cboPlanDespues").setCurrentIndex(En<QComboBox>(dialogo, "cboPlanDespues").count() - 1);
    En<QPushButton>(dialogo, "cmdComparar").click();
    QVERIFY(Mensajes().join("").contains("Falta el archivo"));
    En<QLineEdit>(dialogo, "txtCualDespues").setText(ruta);
    En<QPushButton>(dialogo, "cmdComparar").click();
    QCOMPARE(En<QLabel>(dialogo, "lblResumen").text(), "No hay diferencias.");
    QCOMPARE(En<QTreeView>(dialogo, "lvComparacion").model()->rowCount(), 0);
}

void PrComparacion::linea()
{
    const QString ruta = Guardar(Parte("0002"));
    const QStringList antes = escenario->Tablas();
    for (const auto &[orden, dicho] : QList<QPair<QString, QString>>{
             {"--comparar 900 0900", "^0.*No hay diferencias"},
             {"--comparar 0900 0902", "^1.*Parte 0001 AJENA: cambia.*Partes: 5 quitadas, 1 cambiada"},
             {"--comparar 0900 " + ruta, "^1.*como lo dejaría el documento"},
             {"--comparar 0900 nada.xml", "^2.*No se pudo abrir"},
             {"--comparar 0900 0777", "^2El tipo de equipo 0777 no existe"},
             {"--comparar 0900", "^2--comparar necesita dos planes"},
             {"--comparar 0900 0902 --si", "^2"},
             {"--importar " + ruta, "^1.*Partes: 5 quitadas, 1 cambiada.*contesta que sí con --si"}}) {
        const QString respuesta = Quorvex(orden.split(' ') + escenario->Base().Argumentos());
        QVERIFY2(QRegularExpression(dicho, QRegularExpression::DotMatchesEverythingOption).match(respuesta).hasMatch(),
                 qPrintable(orden + ": " + respuesta));
    }
    QCOMPARE(escenario->Tablas(), antes);
}

PRUEBA(PrComparacion)
#include "pr_comparacion.moc"
