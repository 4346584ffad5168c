// A working day at the screen: every command of it, and what it refuses. The statements, with the host's own look-ups
// and the transactions' marks, stay what they are, letter for letter, and so do the messages and the document.

#include "support/Planificador.h"

#include <QFile>
#include <QRegularExpression>

namespace
{

// Each engine begins, says its errors, and has the stored query in words of its own.
QString SinMotor(QString renglon)
{
    static const QRegularExpression error("(7500097\\||  <)(near|.*\\bsyntax\\b|unterminated).*?(>?)$");
    renglon.replace(error, "\\1…\\3").replace("BEGIN IMMEDIATE", "BEGIN");
    const auto inicio = renglon.indexOf("SELECT Plan_Mantenimiento.Pm_ID AS Folio");
    const auto filtro = renglon.indexOf(" Plan_Mantenimiento.Te_Cve_Tipo_Equipo = '");
    return inicio < 0 ? renglon : renglon.replace(inicio, filtro - inicio, "PLAN_MANTENIMIENTO");
}

} // namespace

class PruebaDia : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dia();

private:
    void Partes(Planificador &planificador);
    void Servicios(Planificador &planificador);
    void Planes(Planificador &planificador);
    void Tomar(const QString &que);

    std::unique_ptr<Escenario> escenario;
    QStringList cuaderno;
};

// What was said and run since the last time.
void PruebaDia::Tomar(const QString &que)
{
    cuaderno.append("== " + que);
    for (const QString &mensaje : escenario->Personas().Tomar())
        cuaderno.append("? " + SinMotor(QString(mensaje).replace(escenario->Ruta(""), "").replace("\r\n", "\\n")));
    for (const QString &renglon : escenario->Traza(true))
        cuaderno.append(SinMotor(renglon));
    escenario->ahora = escenario->ahora.addSecs(61);
}

void PruebaDia::Partes(Planificador &planificador)
{
    planificador.EnLaParte("N0005", "Nuevo", "FLECHA");
    Tomar("parte nueva");
    planificador.EnLaParte("N0007", "Nuevo", "CUÑA");
    Tomar("parte bajo la nueva");
    planificador.EnLaParte("N0000", "Nuevo", "");
    Tomar("parte sin descripción");
    planificador.EnLaParte("N0005", "Nuevo", "D'ARCY");
    Tomar("parte con apóstrofo");
    planificador.EnLaParte("N0007", "Editar", "FLECHA MOTRIZ");
    Tomar("parte cambiada");
    planificador.Rotular("N0008", "cuña plana");
    Tomar("rótulo");
    planificador.Mandar("N0001", "Info");
    Tomar("información");
    planificador.Mandar("N0001", "Eliminar");
    Tomar("baja");
    planificador.Mandar("N0002", "Reactivar", 7500045, qvx::mensaje::Aceptar);
    Tomar("reactivación con la superior");
    planificador.Mandar("N0003", "Reactivar");
    Tomar("reactivación");
    planificador.Mandar("N0008", "B1", 7500047, qvx::mensaje::No);
    Tomar("eliminación rechazada");
    planificador.Mandar("N0007", "B1", 7500046, qvx::mensaje::Si);
    Tomar("eliminación con la inferior");
    planificador.Mandar("N0002", "B1");
    Tomar("eliminación de una parte con servicios");
}

void PruebaDia::Servicios(Planificador &planificador)
{
    planificador.NuevoServicio("N0002", "1234.5678");
    Tomar("servicio nuevo");
    planificador.CambiarServicio("N0002", "000004", "99.95");
    Tomar("servicio cambiado");
    planificador.CambiarServicio("N0002", "000001", "750");
    Tomar("otro servicio cambiado");
    planificador.Importar("");
    Tomar("importación cancelada");
    planificador.Mover("N0002", "000004", "N0005");
    Tomar("arrastre");
    planificador.Mover("N0002", "000002", "N0000");
    Tomar("arrastre a la raíz");
    planificador.Mover("N0005", "999999", "N0001");
    Tomar("arrastre de nada");
    planificador.EliminarServicio("N0005", "000004");
    Tomar("servicio eliminado");
}

void PruebaDia::Planes(Planificador &planificador)
{
    const QString documento = escenario->Ruta("plan.xml");
    planificador.Exportar(documento);
    Tomar("exportación");
    QFile exportado(documento);
    QVERIFY(exportado.open(QIODevice::ReadOnly));
    const QByteArray texto = exportado.readAll();
    cuaderno.append(QString::fromUtf8(texto).split(QLatin1Char('\n'), Qt::SkipEmptyParts));
    planificador.Copiar("0901");
    Tomar("copia");
    QFile cambiado(escenario->Ruta("cambiado.xml"));
    QVERIFY(cambiado.open(QIODevice::WriteOnly));
    cambiado.write(QByteArray(texto).replace("9000000004", "9999999999").replace("\"0900\"", "\"0901\""));
    cambiado.close();
    planificador.Importar(cambiado.fileName());
    Tomar("importación");
    planificador.Copiar("0901");
    Tomar("copia a sí mismo");
    planificador.ElegirTipo("0902");
    Tomar("otro tipo");
    planificador.ElegirTipo("7");
    Tomar("tipo desconocido");
}

void PruebaDia::dia()
{
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    escenario->Motor("INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, "
                     "Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto) VALUES "
                     "('0900', '0002', '000002', '000005', '02', '9000000004', 3, 'PZA', 10, 30, '9009')");
    escenario->Pantalla("0900");
    Tomar("entrada");
    Planificador planificador(*escenario);
    Partes(planificador);
    Servicios(planificador);
    Planes(planificador);
    escenario->CerrarPantalla();
    Tomar("salida");

    QFile meta(QString(CARPETA_DATOS) + "/dia.txt");
    if (qEnvironmentVariableIsSet("QVX_PRUEBA_ANOTAR")) {
        QVERIFY(meta.open(QIODevice::WriteOnly));
        meta.write((cuaderno.join('\n') + '\n').toUtf8());
        return;
    }
    QVERIFY(meta.open(QIODevice::ReadOnly));
    const QStringList esperado = QString::fromUtf8(meta.readAll()).split('\n', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < qMax(esperado.size(), cuaderno.size()); ++i)
        QCOMPARE(QString::number(i + 1) + ": " + cuaderno.value(i), QString::number(i + 1) + ": " + esperado.value(i));
}

PRUEBA_MAIN(PruebaDia)
#include "pr_dia.moc"
