#include "support/Mandos.h"
#include "support/PruebaPantalla.h"

// Every command that changes a plan, with every kind of fault of the database.
class PrAverias : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void averias_data();
    void averias();
};

void PrAverias::averias_data()
{
    const Tabla<QString, QString, QString> tabla("mando", "falla", "mensaje");
    const auto fila = [&](const QString &mando, const QString &falla, const QString &mensaje) {
        tabla(mando + ": " + falla, mando, falla, mensaje);
    };
    const QString aviso = "48|Quorvex|KT580|ERR-ID:75000";
    const QString registro = "INSERT ON Registro_Cambio";
    const auto parte = [](const QString &clave) {
        return "UPDATE ON Tipo_Equipo_Parte WHEN NEW.Tep_ID = '" + clave + "'";
    };
    const auto renombrada = [](const QString &cual) { return "ALTER TABLE " + cual + " RENAME TO Guardada"; };

    const QString alAceptar = "16|cmdAceptar()|KT580|ERR-ID:7500097|";
    fila("parte nueva", "sin efecto INSERT ON Tipo_Equipo_Parte",
         aviso + "96|El registro ya no existe: otra persona lo eliminó o lo cambió de lugar.");
    fila("parte nueva", registro, aviso + "96|falla");
    fila("parte nueva", "ocupada", alAceptar + motor::Ocupada());
    fila("parte editada", "UPDATE ON Tipo_Equipo_Parte", alAceptar + "falla");
    if (motor::EsPostgres()) // the embedded engine takes five seconds to find out: once is enough
        fila("parte editada", "confirmación", alAceptar + motor::NoConfirma());

    // 0001 with 0002, 0003 and 0004 below it.
    const QString baja = aviso + "09|Error al dar de baja la parte del equipo";
    fila("baja", renombrada("Tipo_Equipo_Parte"),
         "16|Controles_Eliminar()|KT580|ERR-ID:7500011|" + motor::NoHayTabla("Tipo_Equipo_Parte"));
    fila("baja", parte("0002"), baja);
    fila("baja", "INSERT ON Bitacora WHEN NEW.Bi_Clave = '09000002'", baja);
    // What the last call of all answers is not passed on: the transaction that it doomed refuses the registration.
    fila("baja",
         "INSERT ON Bitacora WHEN NEW.Bi_Clave = '09000004' AND (SELECT count(*) FROM Bitacora WHERE Bi_Clave = "
         "NEW.Bi_Clave) = 1",
         aviso + "10|La transacción falló y debe deshacerse: falla");
    fila("baja", registro, aviso + "10|falla");
    fila("reactivación", renombrada("Tipo_Equipo_Parte"),
         "16|Controles_Reactivar()|KT580|ERR-ID:7500015|" + motor::NoHayTabla("Tipo_Equipo_Parte"));
    fila("reactivación", parte("0004"), aviso + "13|Error al reactivar la parte del equipo");
    fila("reactivación", registro, aviso + "14|falla");

    const QString alEliminar = "16|Controles_B1Click()|KT580|ERR-ID:7500016|";
    fila("parte eliminada", renombrada("Prioridad_Servicio"), alEliminar + motor::NoHayTabla("Prioridad_Servicio"));
    fila("parte eliminada", "DELETE ON Tipo_Equipo_Parte", alEliminar + "falla");
    fila("parte eliminada", parte("0003"), alEliminar + "falla"); // the parent's seal

    const auto servicio = [](const QString &identificador, const QString &motivo) {
        return "16|ERROR|KT580|ERR-ID:75000" + identificador + "|cmdAceptar() - \r\n" + motivo;
    };
    const QString lineas = "INSERT ON Plan_Mantenimiento_Detalle WHEN NEW.Pmd_Tipo = ";
    fila("servicio nuevo", "INSERT ON Plan_Mantenimiento", servicio("80", "falla"));
    fila("servicio nuevo", lineas + "'02'", servicio("82", "falla"));
    fila("servicio nuevo", lineas + "'03'", servicio("83", "falla"));
    fila("servicio cambiado", registro, "16|ERROR|KT580|ERR-ID:7500080|ERROR");
    fila("servicio cambiado", "DELETE ON Plan_Mantenimiento_Detalle", servicio("84", "falla"));
    fila("servicio cambiado", lineas + "'01'", servicio("81", "falla"));
    fila("servicio cambiado", "confirmación", servicio("84", motor::NoConfirma()));
    if (!motor::EsPostgres())
        fila("servicio cambiado", "disco", servicio("80", "disk I/O error"));
    fila("servicio eliminado", "DELETE ON Plan_Mantenimiento", "16|lvServicios_KeyDown()|KT580|ERR-ID:7500036|falla");

    const QString alMover = "16|Copiar_Servicio|KT580|ERR-ID:7500043|";
    fila("servicio arrastrado", "UPDATE ON Plan_Mantenimiento_Detalle", alMover + "falla");
    fila("servicio arrastrado", registro, aviso + "42|falla");

    const QString alCopiar = "16|Error al copiar|KT580|ERR-ID:7500034|";
    fila("plan copiado", "AFTER DELETE ON Tipo_Equipo_Parte", alCopiar + "falla");
    fila("plan copiado", "AFTER INSERT ON Plan_Mantenimiento_Detalle", alCopiar + "falla");
    // The embedded engine lets nobody begin or read meanwhile; at the server the first statement waits.
    if (!motor::EsPostgres())
        fila("servicio eliminado", "ocupada", "16|lvServicios_KeyDown|KT580|ERR-ID:7500037|" + motor::Ocupada());
    else
        for (const auto &[falla, motivo] :
             {qMakePair(QString("ocupada"), motor::Ocupada("0902")), {"confirmación", motor::NoConfirma()}})
            fila("plan copiado", falla, alCopiar + motivo);
    const QString alImportar = "16|Controles_B2Click()|KT580|ERR-ID:7500023|";
    fila("plan importado", "INSERT ON Plan_Mantenimiento_Detalle", alImportar + "falla");
    fila("plan importado", renombrada("Producto"), alImportar + motor::NoHayTabla("Producto"));
    fila("plan importado", "ALTER TABLE Plan_Mantenimiento RENAME COLUMN Pm_Numero TO Otro",
         alImportar + motor::NoHayColumna("Pm_Numero"));
}

// The tables are as before and nobody holds them, a form stays open with what was typed, and the same command then
// succeeds.
void PrAverias::averias()
{
    QFETCH(QString, mando);
    QFETCH(QString, falla);
    QFETCH(QString, mensaje);
    const QStringList antes = escenario->Tablas();
    std::unique_ptr<Averia> averia;
    QStringList dichos;
    QStringList despues;
    bool abandonada = false;
    const auto probar = [&] {
        if (averia)
            return;
        averia = std::make_unique<Averia>(*escenario, falla);
        escenario->Traza();
    };
    const auto otraVez = [&] {
        if (!dichos.isEmpty())
            return false;
        averia->Reparar();
        abandonada = escenario->Traza().contains("-\tABANDONADA");
        dichos = Dichos();
        despues = escenario->Tablas();
        return despues == antes;
    };
    Planificador planificador(*escenario, {probar, otraVez});
    MandoDe(mando).correr(planificador, *escenario);
    QCOMPARE(dichos, QStringList{mensaje});
    QCOMPARE(despues, antes);
    QVERIFY(!abandonada || mensaje.startsWith("16")); // a refusal takes its transaction back by itself
    QCOMPARE(Dichos(), QStringList());
    QVERIFY(escenario->Tablas() != antes);
}

PRUEBA_MAIN(PrAverias)
#include "pr_averias.moc"
