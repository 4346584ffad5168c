#include "app/VentanaPrincipal.h"
#include "app/catalogos/PaginaCatalogos.h"
#include "controls/InteraccionQt.h"
#include "controls/ModeloTabla.h"
#include "controls/VistaTabla.h"
#include "data/ErrorEjecucion.h"
#include "plan/Usos.h"
#include "session/Sistema.h"
#include "support/Averia.h"
#include "support/Plan.h"
#include "support/Prueba.h"
#include "support/Tabla.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <optional>

using qvx::CambioDeCatalogo;
using qvx::RegistroDeCatalogo;
using qvx::TablaDeCatalogo;

// The catalogues: the rules for their rows, all or nothing, two people at one row, the replacing of a key in all plans,
// and the page.
class PrCatalogos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void reglas();
    void claves();
    void escritura();
    void ajeno();
    void fallas_data();
    void fallas();
    void reemplazo();
    void pagina();

private:
    qvx::Conexion &Base() const { return qvx::Sesion::Actual().Conexion(); }
    QString Escribir(const TablaDeCatalogo &tabla, const QList<CambioDeCatalogo> &cambios) const;
    // The catalogues with their log.
    QStringList Catalogos() const;
    RegistroDeCatalogo Leer(const TablaDeCatalogo &tabla, const QString &clave) const;

    std::unique_ptr<Escenario> escenario;
};

namespace
{

const TablaDeCatalogo &Productos = *qvx::TablaDeCatalogoPorNombre("producto");
const TablaDeCatalogo &Tipos = *qvx::TablaDeCatalogoPorNombre("TIPO_EQUIPO");

// "key|values|state"
std::optional<RegistroDeCatalogo> De(const QString &texto)
{
    if (texto.isEmpty())
        return {};
    QStringList partes = texto.split(QLatin1Char('|'));
    const QString clave = partes.takeFirst();
    const QString estado = partes.takeLast();
    return RegistroDeCatalogo{clave, partes, estado};
}

} // namespace

void PrCatalogos::init()
{
    escenario = nullptr;
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    if (motor::EsPostgres())
        escenario->Correr("GRANT quorvex_catalogos TO mlopez");
}

QString PrCatalogos::Escribir(const TablaDeCatalogo &tabla, const QList<CambioDeCatalogo> &cambios) const
{
    try {
        qvx::EscribirCambios(Base(), qvx::Sesion::Actual().Firmante(), tabla, cambios);
        return {};
    } catch (const qvx::ErrorEjecucion &error) {
        return error.Descripcion();
    }
}

QStringList PrCatalogos::Catalogos() const
{
    QStringList filas;
    for (const TablaDeCatalogo &tabla : qvx::TablasDeCatalogo())
        filas += escenario->Filas("SELECT * FROM " + tabla.nombre + " ORDER BY 1");
    return filas + escenario->Filas("SELECT Rc_Tabla, Rc_Clave, Rc_Oper FROM Registro_Cambio ORDER BY Rc_ID")
           + escenario->Filas("SELECT Bi_Tabla, Bi_Clave, Bi_Accion FROM Bitacora ORDER BY Bi_ID");
}

RegistroDeCatalogo PrCatalogos::Leer(const TablaDeCatalogo &tabla, const QString &clave) const
{
    return qvx::LeerSituacion(Base(), tabla, {clave}).registros.value(clave);
}

// The same when one row is read and when all are.
void PrCatalogos::reglas()
{
    struct Caso {
        QString antes;
        QString despues;
        int columna;
        QString motivo; // "" when it may be
    };
    const QString bueno = "9000000050|PERNO|RE|PZA|1.5|AC";
    const QString usado = "9000000002|REFACCIÓN DE PRUEBA|RE|PZA|80.1|AC";
    const QList<Caso> casos{{"", bueno, 0, ""},
                            {"", " |PERNO|RE|PZA|1|AC", -1, "Falta la clave"},
                            {"", "9'0|PERNO|RE|PZA|1|AC", -1, "sin apóstrofo"},
                            {"", " 90|PERNO|RE|PZA|1|AC", -1, "espacios en los extremos"},
                            {"", "3|PERNO|RE|PZA|1|AC", -1, "se escribe 0000000003"},
                            {"", "R-1|PERNO|RE|PZA|1|AC", -1, "solo cifras"},
                            {"", "9000000009|PERNO|RE|PZA|1|AC", -1, "que está dado de baja"},
                            {"", QString(21, '9') + "|PERNO|RE|PZA|1|AC", -1, "hasta 20 caracteres"},
                            {"", "9000000050| |RE|PZA|1|AC", 0, "Falta la descripción"},
                            {"", "9000000050|A\nB|RE|PZA|1|AC", 0, "un renglón"},
                            {"", "9000000050|PERNO|XX|PZA|1|AC", 1, "MO (mano de obra)"},
                            {"", "9000000050|PERNO|RE|NADA|1|AC", 2, "no está en el catálogo de unidades"},
                            {"", "9000000050|PERNO|RE|PZA|1,5|AC", 3, "Use punto"},
                            {"", "9000000050|PERNO|RE|PZA|-1|AC", 3, "de 0 a"},
                            {"", "9000000050|PERNO|RE|PZA|1" + QString(400, '0') + "|AC", 3, "demasiado grande"},
                            {"", "9000000050|PERNO|RE|PZA|1|XX", -2, "AC (activo) o BA (baja)"},
                            {bueno, "9000000051|PERNO|RE|PZA|1.5|AC", -1, "Una clave no se cambia"},
                            {bueno, "9000000050|PERNO|HE|PZA|1.5|AC", 0, ""},
                            {usado, "9000000002|REFACCIÓN DE PRUEBA|HE|PZA|80.1|AC", 1, "ya no se cambia"},
                            {usado, "9000000002|REFACCIÓN DE PRUEBA|RE|JGO|80.1|AC", 2, "ya no se cambia"},
                            {usado, "9000000002|REFACCIÓN DE PRUEBA|RE|PZA|90|AC", 0, ""},
                            {usado, "9000000002|REFACCIÓN DE PRUEBA|RE|PZA|80.1|BA", 0, ""},
                            {usado, "", -1, "Puede darlo de baja"},
                            {bueno, "", 0, ""}};
    for (const Caso &caso : casos) {
        const CambioDeCatalogo cambio{De(caso.antes), De(caso.despues)};
        for (const QStringList &claves : {QStringList(), QStringList(cambio.Clave())}) {
            const auto objecion = qvx::Objetar(Productos, qvx::LeerSituacion(Base(), Productos, claves), cambio);
            const QString motivo = objecion ? objecion->motivo : QString();
            QVERIFY2(motivo.isEmpty() == caso.motivo.isEmpty() && motivo.contains(caso.motivo),
                     qPrintable(caso.antes + " " + caso.despues + ": " + motivo));
            QCOMPARE(objecion ? objecion->columna : caso.columna, caso.columna);
        }
    }
}

void PrCatalogos::claves()
{
    QCOMPARE(qvx::ClavePropuesta(qvx::LeerSituacion(Base(), Productos)), "9000000010");
    QCOMPARE(qvx::ClavePropuesta(qvx::LeerSituacion(Base(), *qvx::TablaDeCatalogoPorNombre("Unidad"))), "");
    QCOMPARE(qvx::ClavePropuesta({"0000", {}, {}, {}}), "0001");
}

// New, changed, retired, brought back, deleted: each with its line in the logs. Then all or nothing.
void PrCatalogos::escritura()
{
    const auto nuevo = De("9000000050|PERNO D'ORO|RE|PZA|1.5|AC");
    auto caro = nuevo;
    caro->valores[3] = "120.15";
    auto baja = caro;
    baja->estado = "BA";
    escenario->Correr("DELETE FROM Unidad WHERE Un_Cve_Unidad = 'PAR'");
    for (const CambioDeCatalogo &cambio :
         {CambioDeCatalogo{{}, nuevo}, {nuevo, caro}, {caro, baja}, {baja, caro}, {caro, {}}}) {
        QCOMPARE(Escribir(Productos, {cambio}), "");
        QCOMPARE(escenario
                     ->Filas("SELECT Pr_Descripcion, Pr_Clase, Pr_Unidad_Control_1, CAST(Pr_Costo_Estandar AS "
                             "text), Es_Cve_Estado FROM Producto WHERE Pr_Cve_Producto = '9000000050'")
                     .join('\n'),
                 cambio.despues ? cambio.despues->valores.join('|') + "|" + cambio.despues->estado : QString());
    }
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave, Rc_Oper FROM Registro_Cambio").join(' '),
             QStringList(5, "Producto|9000000050|mlopez").join(' '));
    QCOMPARE(escenario->Filas("SELECT Bi_Accion FROM Bitacora ORDER BY Bi_ID").join(' '),
             "Baja Reactivación Eliminación");
    const QStringList antes = Catalogos();
    const QString error = Escribir(Productos, {{{}, nuevo}, {{}, De("9000000051|X|RE|PAR|1|AC")}});
    QVERIFY2(error.startsWith("Producto 9000000051: La unidad «PAR» no está"), qPrintable(error));
    QCOMPARE(Catalogos(), antes);
}

// A row that somebody else changed, or deleted, since it was read.
void PrCatalogos::ajeno()
{
    const auto leido = Leer(Productos, "9000000004");
    auto suyo = leido;
    suyo.valores[3] = "11";
    auto mio = leido;
    mio.valores[3] = "12";
    QCOMPARE(Escribir(Productos, {{leido, suyo}}), "");
    const QStringList antes = Catalogos();
    const QString error = Escribir(Productos, {{leido, mio}});
    QVERIFY2(error.startsWith("Producto 9000000004: mlopez lo cambió el 2"), qPrintable(error));
    QVERIFY(Escribir(Productos, {{De("9000000077|NADIE|RE|PZA|1|AC"), {}}}).contains("lo eliminó"));
    QCOMPARE(Catalogos(), antes);
    // What is used by then is not deleted, whatever was shown.
    escenario->Correr("UPDATE Plan_Mantenimiento SET Ts_Cve_Tipo_Servicio = '0011' WHERE Pm_ID = '000003'");
    const TablaDeCatalogo &servicios = *qvx::TablaDeCatalogoPorNombre("Tipo_Servicio");
    QVERIFY(Escribir(servicios, {{Leer(servicios, "0011"), {}}}).contains("No se elimina"));
}

void PrCatalogos::fallas_data()
{
    const Tabla<QString> fila("averia");
    for (const char *averia : {"UPDATE ON Catalogo_Cambio", "INSERT ON Producto", "UPDATE ON Producto",
                               "DELETE ON Producto", "INSERT ON Registro_Cambio", "INSERT ON Bitacora"})
        fila(averia, averia);
}

// Whatever statement fails, the catalogue is as it was; repaired, the same goes through.
void PrCatalogos::fallas()
{
    QFETCH(const QString, averia);
    const auto vieja = Leer(Productos, "9000000004");
    auto cara = vieja;
    cara.valores[3] = "99";
    QCOMPARE(Escribir(Productos, {{{}, De("9000000060|SOBRA|RE|PZA|1|AC")}}), "");
    const QList<CambioDeCatalogo> cambios{
        {vieja, cara}, {{}, De("9000000050|PERNO|RE|PZA|1|AC")}, {Leer(Productos, "9000000060"), {}}};
    const QStringList antes = Catalogos();
    Averia falla(*escenario, averia);
    QVERIFY(!Escribir(Productos, cambios).isEmpty());
    falla.Reparar();
    QCOMPARE(Catalogos(), antes);
    QCOMPARE(Escribir(Productos, cambios), "");
}

// One product for another in all lines: services are signed, so that a form that is open elsewhere is refused; what was
// not shown, and what would stand twice in a service, is not replaced.
void PrCatalogos::reemplazo()
{
    const auto viejo = Leer(Productos, "9000000002");
    const auto nuevo = Leer(Productos, "9000000004");
    const auto usos = qvx::UsosDe(Base(), Productos, viejo.clave);
    QVERIFY(!usos.isEmpty());
    QCOMPARE(usos.constFirst().ruta, "CUERPO / IMPULSOR");
    const auto reemplazar = [&](const RegistroDeCatalogo &por, const QList<qvx::Uso> &vistos) {
        try {
            qvx::Reemplazar(Base(), qvx::Sesion::Actual().Firmante(), Productos, viejo, por, vistos);
            return QString();
        } catch (const qvx::ErrorEjecucion &error) {
            return error.Descripcion();
        }
    };
    QVERIFY(reemplazar(Leer(Productos, "9000000001"), usos).contains("de la misma clase"));
    const QStringList antes = escenario->Tablas();
    {
        Averia falla(*escenario, "UPDATE ON Plan_Mantenimiento_Detalle");
        QVERIFY(!reemplazar(nuevo, usos).isEmpty());
        falla.Reparar();
    }
    QCOMPARE(escenario->Tablas(), antes);
    const QString renglon = "UPDATE Plan_Mantenimiento_Detalle SET Pr_Cve_Producto = '%1' WHERE Pmd_ID = '000002'";
    escenario->Correr(renglon.arg("9000000003"));
    QVERIFY(reemplazar(nuevo, usos).contains("cambió mientras se reemplazaba"));
    escenario->Correr(renglon.arg("9000000002"));
    const QString gemelo = "UPDATE Plan_Mantenimiento_Detalle SET Pm_ID = '%1' WHERE Pmd_ID = '000005'";
    escenario->Correr(gemelo.arg("000001"));
    QVERIFY(reemplazar(nuevo, usos).contains("quedaría dos veces"));
    escenario->Correr(gemelo.arg("000002"));
    escenario->Correr("UPDATE Plan_Mantenimiento SET Oper_Ult_Modif = 'psoto' WHERE Pm_ID = '000001'");
    QVERIFY(reemplazar(nuevo, usos).contains("psoto lo cambió"));
    escenario->Correr("UPDATE Plan_Mantenimiento SET Oper_Ult_Modif = 'jcruz'");
    QCOMPARE(escenario->Tablas().filter("Registro_Cambio"), antes.filter("Registro_Cambio"));
    QCOMPARE(reemplazar(nuevo, qvx::UsosDe(Base(), Productos, viejo.clave)), "");
    QCOMPARE(escenario
                 ->Filas("SELECT d.Pr_Cve_Producto, d.Pmd_Importe, s.Oper_Ult_Modif FROM "
                         "Plan_Mantenimiento_Detalle d JOIN Plan_Mantenimiento s USING (Te_Cve_Tipo_Equipo, Pm_ID) "
                         "WHERE Pmd_Tipo = '02' ORDER BY Pmd_ID")
                 .join(' '),
             "9000000004|120.15|mlopez 9000000004|30|jcruz");
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave FROM Registro_Cambio").join(' '),
             "Plan_Mantenimiento|0900|000001|0002");
}

// By keyboard: a product from nothing, refused once and mended; and from the search of F3, at once chosen. Who may not
// write is told who may.
void PrCatalogos::pagina()
{
    escenario->Personas().real = std::make_unique<qvx::InteraccionQt>();
    PaginaCatalogos pagina;
    pagina.show();
    En<QListWidget>(pagina, "lstCatalogos").setCurrentRow(1);
    auto &lista = En<qvx::VistaTabla>(pagina, "lvRegistros");
    const int antes = lista.model()->rowCount();
    EnElDialogo([](QWidget &forma) {
        En<QLineEdit>(forma, "txtClave").setText("77");
        En<QLineEdit>(forma, "txtDescripcion").setText("Válvula de tres vías");
        En<QComboBox>(forma, "cboClase").setCurrentIndex(1);
        QTest::keyClicks(&En<QLineEdit>(forma, "txtCosto"), "2,5");
        QTest::keyClick(&forma, Qt::Key_Return);
        QCOMPARE(En<QLabel>(forma, "lblObjecion").text().left(9), "La unidad");
        En<QComboBox>(forma, "cboUnidad").setCurrentIndex(0);
        QTest::keyClick(&forma, Qt::Key_Return);
        QVERIFY(En<QLabel>(forma, "lblObjecion").text().contains("Use punto"));
        QCOMPARE(En<QLineEdit>(forma, "txtCosto").text(), "2,5");
        QTest::keyClicks(&En<QLineEdit>(forma, "txtCosto"), "2.50");
        QTest::keyClick(&forma, Qt::Key_Return);
    });
    En<QAction>(pagina, "accNuevo").trigger();
    QCOMPARE(lista.model()->rowCount(), antes + 1);
    QCOMPARE(lista.currentIndex().siblingAtColumn(0).data().toString(), "0000000077");
    QCOMPARE(Leer(Productos, "0000000077").valores.constLast(), "2.5");
    QTest::keyClicks(&En<QLineEdit>(pagina, "txtBuscar"), "vias TRES");
    QCOMPARE(lista.model()->rowCount(), 1);

    EnElDialogo([](QWidget &busqueda) {
        QTest::keyClicks(&En<QLineEdit>(busqueda, "txtBuscar"), "Sello");
        EnElDialogo(
            [](QWidget &forma) {
                QCOMPARE(En<QLineEdit>(forma, "txtDescripcion").text(), "Sello");
                En<QComboBox>(forma, "cboUnidad").setCurrentIndex(0);
                QTest::keyClick(&forma, Qt::Key_Return);
            },
            &busqueda);
        En<QPushButton>(busqueda, "cmdNuevo").click();
    });
    qvx::InteraccionQt personas;
    personas.OfrecerAlta(&PaginaCatalogos::CrearDesdeBusqueda);
    const QString creada = personas.BuscarEnCatalogo("PRODUCTO_REFACCION", 0, {}, {}, &pagina);
    QCOMPARE(Leer(Productos, creada).valores.mid(0, 2), QStringList({"Sello", "RE"}));

    if (!motor::EsPostgres())
        return;
    escenario->Correr("REVOKE quorvex_catalogos FROM mlopez");
    En<QListWidget>(pagina, "lstCatalogos").setCurrentRow(2);
    QVERIFY(!En<QAction>(pagina, "accNuevo").isEnabled() && !En<QAction>(pagina, "accEliminar").isEnabled());
    QVERIFY(En<QLabel>(pagina, "lblDerecho").text().contains("quorvex_catalogos"));
    QVERIFY(Escribir(Productos, {{{}, De("9000000099|X|RE|PZA|1|AC")}}).contains("permission denied"));
    escenario->Correr("GRANT quorvex_catalogos TO mlopez");
}

PRUEBA(PrCatalogos)
#include "pr_catalogos.moc"
