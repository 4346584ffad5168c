#include "support/Archivos.h"
#include "support/Cluster.h"
#include "support/PruebaPantalla.h"

#include <QMap>

// Every command that changes a plan, with the faults of the database, of the server and of the way there that may stop
// it half-way.
class PrAverias : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void averias_data();
    void averias();
};

namespace
{

// A command of the screen that changes the plan 0900 of SembrarPlan.
struct Mando {
    void (*correr)(Planificador &planificador, const Escenario &escenario) = nullptr;
    QString ultimo; // its last change before the commit, as the event of a trigger
};

const QByteArray Documento =
    "<PlanMantenimiento><TipoEquipo Id=\"0902\"><Parte Id=\"0001\" Descripción=\"EJE\"><TipoServicio Id=\"9001\" "
    "UnidadLectura=\"HRS\" FrecuenciaLectura=\"1250.5\" FrecuenciaDias=\"30\" RequiereParo=\"SI\" Duracion=\"2.5\" "
    "Precio=\"500\" Prioridad=\"9001\"><ManoObra><Servicio Id=\"9000000001\" Cantidad=\"2\"/></ManoObra>"
    "<Refacciones/><Herramientas/></TipoServicio></Parte></TipoEquipo></PlanMantenimiento>";

const QMap<QString, Mando> &Mandos()
{
    using P = Planificador;
    using E = Escenario;
    const QString registro = "INSERT ON Registro_Cambio";
    const QString detalle = "INSERT ON Plan_Mantenimiento_Detalle";
    static const QMap<QString, Mando> mandos{
        {"parte nueva", {[](P &p, const E &) { p.GuardarParte("N0005", "Nuevo", "BRIDA"); }, registro}},
        {"parte editada", {[](P &p, const E &) { p.GuardarParte("N0005", "Editar", "BRIDA"); }, registro}},
        {"etiqueta", {[](P &p, const E &) { p.Rotular("N0005", "0005 - BRIDA"); }, "UPDATE ON Tipo_Equipo_Parte"}},
        {"baja", {[](P &p, const E &) { p.Mandar("N0001", "Eliminar"); }, registro}},
        {"reactivación",
         {[](P &p, const E &) { p.Mandar("N0003", "Reactivar", 7500045, qvx::mensaje::Aceptar); }, registro}},
        {"parte eliminada", {[](P &p, const E &) { p.Mandar("N0004", "B1", 7500047); }, "UPDATE ON Tipo_Equipo_Parte"}},
        {"servicio nuevo", {[](P &p, const E &) { p.NuevoServicio("N0005", "70"); }, detalle}},
        {"servicio cambiado", {[](P &p, const E &) { p.CambiarServicio("N0002", "000001", "70"); }, detalle}},
        {"servicio eliminado",
         {[](P &p, const E &) { p.EliminarServicio("N0002", "000001"); }, "DELETE ON Plan_Mantenimiento"}},
        {"servicio arrastrado", {[](P &p, const E &) { p.Mover("N0002", "000001", "N0005"); }, registro}},
        {"plan copiado", {[](P &p, const E &) { p.Copiar("0902"); }, detalle}},
        {"plan importado", {[](P &p, const E &e) { p.Importar(Poner(e.Ruta("plan.xml"), Documento)); }, detalle}},
    };
    return mandos;
}

} // namespace

// On the server: a commit that asks for it waits for another server, which there is not.
void PrAverias::initTestCase()
{
    if (!motor::EsPostgres())
        return;
    cluster::Super("ALTER SYSTEM SET synchronous_commit = local");
    cluster::Super("ALTER SYSTEM SET synchronous_standby_names = 'nadie'");
    cluster::Super("SELECT pg_reload_conf()");
}

void PrAverias::averias_data()
{
    const Tabla<QString, QString, QString> fila("mando", "falla", "mensaje");
    const QString aviso = "48|Quorvex|KT580|ERR-ID:75000";
    const QString registro = "INSERT ON Registro_Cambio";
    fila("plan ocupado", "parte nueva", "ocupada",
         "16|cmdAceptar()|KT580|ERR-ID:7500097|"
             + motor::Segun("database is locked",
                            "postgres está cambiando el plan del tipo de equipo 0900 y no terminó "
                            "en 10 segundos. Inténtelo de nuevo más tarde."));
    if (!motor::EsPostgres()) { // told by the procedure that begins the transaction, not by those inside
        fila("baja ocupada", "baja", "ocupada", "16|Controles_Eliminar()|KT580|ERR-ID:7500011|database is locked");
        fila("reactivación ocupada", "reactivación", "ocupada",
             "16|Controles_Reactivar()|KT580|ERR-ID:7500015|database is locked");
        fila("parte ocupada", "parte eliminada", "ocupada",
             "16|Controles_B1Click()|KT580|ERR-ID:7500016|database is locked");
        fila("servicio ocupado", "servicio cambiado", "ocupada",
             "16|ERROR|KT580|ERR-ID:7500084|cmdAceptar() - \r\ndatabase is locked");
    }
    fila("parte editada", "parte editada", registro, aviso + "96|falla");

    // 0001 with 0002, 0003 and 0004 below it.
    fila("baja a medias", "baja", "UPDATE ON Tipo_Equipo_Parte WHEN NEW.Tep_ID = '0002'",
         aviso + "09|Error al dar de baja la parte del equipo");
    // What the last call of all answers is not passed on: the transaction that it doomed refuses the registration.
    fila("última baja", "baja",
         "INSERT ON Bitacora WHEN NEW.Bi_Clave = '09000004' AND (SELECT count(*) FROM Bitacora WHERE Bi_Clave = "
         "NEW.Bi_Clave) = 1",
         aviso + "10|La transacción falló y debe deshacerse: falla");
    fila("baja sin registro", "baja", registro, aviso + "10|falla");
    if (!motor::EsPostgres()) // whose commit fails by a service only
        fila("baja sin confirmación", "baja", "confirmación",
             "16|Controles_Eliminar()|KT580|ERR-ID:7500011|database is locked");
    fila("reactivación a medias", "reactivación", "UPDATE ON Tipo_Equipo_Parte WHEN NEW.Tep_ID = '0004'",
         aviso + "13|Error al reactivar la parte del equipo");
    fila("reactivación sin registro", "reactivación", registro, aviso + "14|falla");
    fila("sello del padre", "parte eliminada", "UPDATE ON Tipo_Equipo_Parte WHEN NEW.Tep_ID = '0003'",
         "16|Controles_B1Click()|KT580|ERR-ID:7500016|falla");

    const QString lineas = "INSERT ON Plan_Mantenimiento_Detalle WHEN NEW.Pmd_Tipo = ";
    const QString servicio = "16|ERROR|KT580|ERR-ID:75000";
    const QString donde = "|cmdAceptar() - \r\n";
    fila("servicio nuevo", "servicio nuevo", lineas + "'03'", servicio + "83" + donde + "falla");
    fila("servicio sin registro", "servicio cambiado", registro, servicio + "80|ERROR");
    fila("servicio sin líneas", "servicio cambiado", lineas + "'01'", servicio + "81" + donde + "falla");
    fila("sin confirmación", "servicio cambiado", "confirmación",
         servicio + "84" + donde + motor::Segun("database is locked", "falla"));
    if (!motor::EsPostgres())
        fila("disco lleno", "servicio cambiado", "disco", servicio + "80" + donde + "disk I/O error");
    fila("servicio eliminado", "servicio eliminado", "DELETE ON Plan_Mantenimiento",
         "16|lvServicios_KeyDown()|KT580|ERR-ID:7500036|falla");
    fila("arrastre a medias", "servicio arrastrado", "UPDATE ON Plan_Mantenimiento_Detalle",
         "16|Copiar_Servicio|KT580|ERR-ID:7500043|falla");
    fila("arrastre sin registro", "servicio arrastrado", registro, aviso + "42|falla");
    fila("plan copiado", "plan copiado", "INSERT ON Plan_Mantenimiento_Detalle",
         "16|Error al copiar|KT580|ERR-ID:7500034|falla");
    fila("plan importado", "plan importado", "INSERT ON Plan_Mantenimiento_Detalle",
         "16|Controles_B2Click()|KT580|ERR-ID:7500023|falla");

    if (!motor::EsPostgres())
        return;
    const QString nadaGuardado = "Se perdió la conexión con el servidor: no se guardó nada.";
    for (const QString &mando : Mandos().keys()) {
        for (const auto &[falla, dicho] : {qMakePair(QString("reinicio en medio"), nadaGuardado),
                                           {"corte en medio", nadaGuardado},
                                           {"antes de confirmar", nadaGuardado},
                                           {"al confirmar", ""},
                                           {"reinicio en reposo", ""},
                                           {"ausente", "No hay conexión con la base de datos"}})
            fila(mando + ": " + falla, mando, falla, dicho);
    }
}

// What is told is true, the tables are as before and nobody holds them, a form stays open with what was typed, and the
// same command then succeeds, or another one where it was carried out.
void PrAverias::averias()
{
    QFETCH(QString, mando);
    QFETCH(QString, falla);
    QFETCH(QString, mensaje);
    const bool caida = QString(QTest::currentDataTag()).contains(": ");
    const bool hecho = falla == "al confirmar" || falla == "reinicio en reposo";
    const QStringList antes = escenario->Tablas();
    std::unique_ptr<Averia> averia;
    QString detalles;
    QStringList dichos;
    QStringList despues;
    int intentos = 0;
    QString aviso;
    qvx::Sesion::Actual().Conexion().AlAvisar([&](const QString &dicho) { aviso += dicho; });
    const auto probar = [&] {
        if (intentos > 0)
            return;
        averia = std::make_unique<Averia>(*escenario, falla, caida ? Mandos()[mando].ultimo : QString());
        escenario->Traza();
    };
    const auto otraVez = [&] {
        if (++intentos > 1)
            return false;
        averia->Reparar();
        detalles = escenario->Personas().detalles.join('\n');
        dichos = Dichos();
        despues = escenario->Tablas();
        return !hecho;
    };
    intento = {probar, otraVez};
    Mandos()[mando].correr(*this, *escenario);
    QVERIFY2(mensaje.isEmpty() ? dichos.isEmpty() : dichos.size() == 1 && dichos.constFirst().contains(mensaje),
             qPrintable(dichos.join('\n')));
    // Carried out, and the answer lost: looked for, and told.
    QCOMPARE(aviso.count("el cambio quedó guardado"), falla == "al confirmar" ? 1 : 0);
    QCOMPARE(detalles.contains("Otra persona está guardando"), mensaje.contains("database is locked"));
    QCOMPARE(detalles.contains("revise el disco"), mensaje.contains("disk I/O error"));
    QCOMPARE(despues == antes, !hecho);
    // All but these take their transaction back before they report.
    const bool deja = mensaje.contains("7500043|") || mensaje.contains("7500084|");
    QVERIFY(deja || caida || !escenario->Traza().contains("-\tABANDONADA"));
    QVERIFY(escenario->Tablas() != antes);
    ElegirTipo("0900");
    Rotular("N0001", "0001 - OTRO CUERPO");
    QCOMPARE(Dichos(), QStringList());
    QCOMPARE(Partes("Tep_Descripcion", "Tep_ID = '0001'"), "OTRO CUERPO");
    if (motor::EsPostgres())
        QTRY_COMPARE(
            escenario->Filas("SELECT query FROM pg_stat_activity WHERE usename = 'mlopez' AND state <> 'idle'"),
            QStringList());
}

PRUEBA(PrAverias)
#include "pr_averias.moc"
