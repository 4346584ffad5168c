#include "app/buscar/DialogoBuscar.h"
#include "support/Plan.h"
#include "support/Prueba.h"

#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>

using qvx::Hallazgo;

// What a search finds: that the engine's comparison loses nothing which a comparison row by row finds, on both engines.
class PrBusqueda : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void partes();
    void servicios();
    void dialogo();

private:
    qvx::Busqueda Buscar(const QString &texto, const QString &tipo = {}, int maximo = 5000) const
    {
        return {qvx::Sesion::Actual().Conexion(), qvx::PalabrasBuscadas(texto), tipo, maximo};
    }

    std::unique_ptr<Escenario> escenario;
};

namespace
{

QStringList Claves(const QList<Hallazgo> &hallazgos)
{
    QStringList claves;
    for (const Hallazgo &hallazgo : hallazgos)
        claves.append(hallazgo.tipoEquipo + "|" + hallazgo.parte + "|" + hallazgo.folio);
    return claves;
}

} // namespace

void PrBusqueda::init()
{
    escenario = nullptr;
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
}

// More parts than are read at a time, with letters that each engine takes for others, and signs that it takes for any.
void PrBusqueda::partes()
{
    const QStringList textos{"GRÚA GIRATORIA", "Grua fija", "CAÑÓN",  "CANON", "100% LLENA", "A_B",
                             "AÉREO",          "EL ÍNDICE", "Ölpumpe"};
    QStringList filas;
    for (int i = 0; i < 1100; ++i)
        filas.append(QString("('0902', '%1', '0000', '%2 %1', 'AC')").arg(1000 + i).arg(textos.at(i % textos.size())));
    escenario->Correr("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, "
                      "Es_Cve_Estado) VALUES "
                      + filas.join(", "));
    const QStringList todas =
        escenario->Filas("SELECT Te_Cve_Tipo_Equipo, Tep_ID, Tep_Descripcion FROM Tipo_Equipo_Parte "
                         "ORDER BY Te_Cve_Tipo_Equipo, Tep_ID");
    for (const QString texto : {"grua", "GIRATORIA grúa", "canon", "%", "_", "aeo", "aereo 10", "índice", "olpumpe",
                                "1005", "selló", "nada de esto"}) {
        const qvx::PalabrasBuscadas palabras(texto);
        QStringList esperadas;
        for (const QString &fila : todas) {
            const QStringList campos = fila.split('|');
            if (palabras.Estan(campos.at(1) + " " + campos.at(2)))
                esperadas.append(campos.at(0).trimmed() + "|" + campos.at(1).trimmed() + "|");
        }
        QCOMPARE(Claves(Buscar(texto).Partes()), esperadas);
    }
    QCOMPARE(Buscar("grua", "0900").Partes().size(), 0);
    QCOMPARE(Buscar("grua", "0902", 7).Partes().size(), 7);
    QCOMPARE(Buscar("  ").Partes().size(), 0);
    const QList<Hallazgo> resorte = Buscar("resorte").Partes();
    QCOMPARE(resorte.constFirst().ruta, "CUERPO / SELLO / RESORTE");
    QCOMPARE(resorte.constFirst().nombreTipo, "BOMBA DE PRUEBA");
}

void PrBusqueda::servicios()
{
    QCOMPARE(Claves(Buscar("000003").Servicios()), QStringList{"0900|0003|000003"});
    QCOMPARE(Buscar("nada").Servicios().size() + Buscar("nada").Productos().size(), 0);
    const QStringList suyos = escenario->Filas("SELECT Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID FROM Plan_Mantenimiento WHERE "
                                               "Ts_Cve_Tipo_Servicio = '9001' ORDER BY Te_Cve_Tipo_Equipo, Pm_ID");
    QVERIFY(suyos.size() > 2);
    QCOMPARE(Claves(Buscar("revision").Servicios()), suyos);
    QCOMPARE(Claves(Buscar("02 Revisión").Servicios()), QStringList{"0900|0002|000002"});
    QCOMPARE(Claves(Buscar("9000000002").Productos()),
             escenario->Filas("SELECT Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID FROM Plan_Mantenimiento_Detalle WHERE "
                              "Pr_Cve_Producto = '9000000002' ORDER BY Te_Cve_Tipo_Equipo, Pm_ID, Pmd_ID"));
}

void PrBusqueda::dialogo()
{
    DialogoBuscar dialogo("0900", nullptr);
    dialogo.show();
    auto &texto = En<QLineEdit>(dialogo, "txtBuscar");
    const auto &lista = En<QTreeWidget>(dialogo, "lvHallazgos");
    const auto &cuenta = En<QLabel>(dialogo, "lblCuenta");
    QTest::keyClicks(&texto, "impulsor");
    QTRY_COMPARE(cuenta.text(), "1 hallazgo.");
    QCOMPARE(lista.topLevelItem(0)->child(0)->text(0), "0002  CUERPO / IMPULSOR");
    texto.clear();
    QTest::keyClicks(&texto, "000001");
    QTest::keyClick(&texto, Qt::Key_Return); // what is shown is still of the word before
    QCOMPARE(dialogo.result(), 0);
    QTRY_VERIFY(!cuenta.text().startsWith("Buscando"));
    QTest::keyClick(&texto, Qt::Key_Down);
    QTest::keyClick(&texto, Qt::Key_Up);
    QTest::keyClick(&texto, Qt::Key_Return);
    QCOMPARE(dialogo.result(), QDialog::Accepted);
    QCOMPARE(dialogo.Elegido()->folio, "000001");
    QCOMPARE(dialogo.Elegido()->parte, "0002");
}

PRUEBA(PrBusqueda)
#include "pr_busqueda.moc"
