#include "app/Acceso.h"
#include "app/Escritorio.h"
#include "app/VentanaPrincipal.h"
#include "controls/Controles.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"
#include "controls/txtQVX.h"
#include "support/Archivos.h"
#include "support/Escenario.h"
#include "support/Intermediario.h"

#include <QSettings>
#include <QTimer>

using comunesQVX::ListView;
using comunesQVX::TreeView;

// How often a command goes to the server and back. From a plant far away each time is 20 ms that a person waits, so
// that the numbers are exact: one more is a defect.
class PrCruces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void comandos();

private:
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void Contar(const QString &que, int esperados, const std::function<void()> &comando);
    void Comparar(const QString &que, int esperados, int antes);

    Intermediario intermediario;
    QStringList otros; // what is not as expected
};

void PrCruces::initTestCase()
{
    qputenv("QVX_PRUEBA_MOTOR", "postgres");
    qApp->installEventFilter(this);
}

// What the window looks up by itself after half a second of calm is no command's.
bool PrCruces::eventFilter(QObject *objeto, QEvent *evento)
{
    constexpr int Calma = 500;
    const auto *reloj = evento->type() == QEvent::Timer ? qobject_cast<QTimer *>(objeto) : nullptr;
    return reloj && reloj->isSingleShot() && reloj->interval() == Calma;
}

void PrCruces::Contar(const QString &que, int esperados, const std::function<void()> &comando)
{
    const int antes = intermediario.Cruces();
    comando();
    QCoreApplication::processEvents();
    Comparar(que, esperados, antes);
}

void PrCruces::Comparar(const QString &que, int esperados, int antes)
{
    if (const int hechos = intermediario.Cruces() - antes; hechos != esperados)
        otros.append(QString("%1: %2, y no %3").arg(que).arg(hechos).arg(esperados));
}

// On an example plan of 30 parts, as the program does them: its clock is the server's.
void PrCruces::comandos()
{
    const QTemporaryDir carpeta;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, carpeta.path());
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(carpeta.path()));
    const BaseDePrueba base(true);
    const QString documento = carpeta.filePath("plan.xml");
    const Argumentos argumentos =
        Argumentos::Leer({"quorvex", "--servidor",
                          intermediario.Direccion("mlopez", base.Archivo(), "sslmode=disable&gssencmode=disable"),
                          "--tipo-equipo", "0001"});
    QCOMPARE(argumentos.error, "");
    auto *personas = new PersonasDePrueba;
    Escritorio escritorio;
    Contar("inicio", 8, [&] {
        escritorio.Empezar(argumentos, AbrirBaseConVentana(argumentos), std::unique_ptr<qvx::Interaccion>(personas));
        QVERIFY(QTest::qWaitForWindowActive(escritorio.Ventana()));
        QTRY_VERIFY(En<TreeView>(*escritorio.Ventana(), "tvPartes").Count() > 1);
    });
    VentanaPrincipal &ventana = *escritorio.Ventana();
    ventana.resize(1280, 760); // all buttons fit
    auto &arbol = En<TreeView>(ventana, "tvPartes");
    auto &lista = En<ListView>(ventana, "lvServicios");
    auto &barra = En<toolbarQVX::Controles>(ventana, "Controles");
    Contar("F5", 2, [&] { QTest::keyClick(&arbol, Qt::Key_F5); });
    ElegirNodo(arbol, "N0000");
    personas->DarArchivo(documento);
    Contar("exportar", 6, [&] { Pulsar(barra, "B1"); });
    QVERIFY(QFile::exists(documento));

    const QStringList elegido =
        base.Otro()
            ->Filas("SELECT Tep_ID, Pm_ID FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = '0001' GROUP BY "
                    "1, 2 HAVING count(*) = 3 AND count(DISTINCT Pmd_Tipo) > 1 ORDER BY 1, 2")
            .constFirst()
            .split('|');
    Contar("elegir una parte", 2, [&] { ElegirNodo(arbol, "N" + elegido.at(0)); });
    const auto filas = lista.findItems(elegido.at(1), Qt::MatchExactly);
    QCOMPARE(filas.size(), 1);
    lista.setFocus();
    lista.setCurrentItem(filas.constFirst());
    const int antes = intermediario.Cruces();
    EnElDialogo([&](QWidget &editor) {
        Comparar("abrir un servicio con 3 líneas", 8, antes);
        Escribir(En<textoQVX::txtQVX>(editor, "txtPrecio"), "99999");
        Contar("guardarlo", 17, [&] { Pulsar(En<QWidget>(editor, "Controles1"), "Aceptar"); });
        QVERIFY(!editor.isVisible());
    });
    QTest::keyClick(&lista, Qt::Key_Return);
    ventana.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&ventana));
    ElegirNodo(arbol, "N0000");
    personas->DarArchivo(documento);
    personas->Responder(7500048, qvx::mensaje::Si);
    Contar("importar", 25, [&] { Pulsar(barra, "B2"); });
    QCOMPARE(personas->Tomar().join('\n').count("ERR-ID"), 2); // the document that was written, the question
    Contar("salir", 0, [&] { escritorio.Ventana()->close(); });
    QCOMPARE(otros.join('\n'), "");
}

PRUEBA(PrCruces)
#include "pr_cruces.moc"
