#include "data/ErrorEjecucion.h"
#include "plan/Cambios.h"
#include "plan/OperacionEnCurso.h"
#include "support/Archivos.h"
#include "support/Escenario.h"
#include "support/Tabla.h"

// Rows that were read before they are asked for are those that the engine would give, in its order, and no others: a
// connection that reads ahead beside one that does not.
class PrAdelanto : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void iguales();
    void momentos();
    void transaccion();
    void versiones();
    void enTrozos();
    void aplazadas_data();
    void aplazadas();

private:
    std::unique_ptr<qvx::Conexion> Abrir(const QString &traza) const;
    void Comparar(const QStringList &sentencias) const;

    QTemporaryDir carpeta;
    std::unique_ptr<BaseDePrueba> base;
    std::unique_ptr<qvx::Conexion> una;
    std::unique_ptr<qvx::Conexion> otra; // does not read ahead
};

namespace
{

QString Hijas(const QString &padre, const QString &orden = "Te_Cve_Tipo_Equipo, Tep_ID ASC")
{
    return "SELECT * FROM Tipo_Equipo_Parte WHERE Tep_Padre = '" + padre + "' and Te_Cve_Tipo_Equipo = '0001' ORDER BY "
           + orden;
}

QString Lineas(const QString &parte, const QString &folio)
{
    return "Select * FROM Plan_Mantenimiento_Detalle WHERE Tep_ID = '" + parte + "' AND Pm_ID = '" + folio
           + "' AND Te_Cve_Tipo_Equipo = '0001' ORDER BY Pm_ID ASC";
}

QString Filas(qvx::Conexion &conexion, const QString &sql)
{
    QString todas;
    for (auto filas = conexion.Execute(sql); !filas.Eof(); filas.MoveNext()) {
        for (int i = 0; i < filas.Columnas(); ++i)
            todas +=
                (filas.Valor(i).isNull() ? QString("NULL") : filas.Texto(i)) + '|' + filas.Valor(i).typeName() + ' ';
        todas += '\n';
    }
    return todas;
}

} // namespace

std::unique_ptr<qvx::Conexion> PrAdelanto::Abrir(const QString &traza) const
{
    qputenv("QVX_TRAZA", QFile::encodeName(carpeta.filePath(traza)));
    auto abierta = base->Abrir();
    qvx::FirmarOperaciones(*abierta, "mlopez");
    qunsetenv("QVX_TRAZA");
    return abierta;
}

void PrAdelanto::init()
{
    una.reset();
    otra.reset();
    base = std::make_unique<BaseDePrueba>(true);
    QFile::remove(carpeta.filePath("una"));
    QFile::remove(carpeta.filePath("otra"));
    una = Abrir("una");
    qputenv("QVX_SIN_ADELANTO", "1");
    otra = Abrir("otra");
    qunsetenv("QVX_SIN_ADELANTO");
}

void PrAdelanto::Comparar(const QStringList &sentencias) const
{
    una->EntrarEnEvento();
    otra->EntrarEnEvento();
    for (const QString &sql : sentencias)
        QCOMPARE(Filas(*una, sql), Filas(*otra, sql));
    una->SalirDeEvento();
    otra->SalirDeEvento();
    QCOMPARE(Contenido(carpeta.filePath("una")), Contenido(carpeta.filePath("otra")));
}

// Keys with blanks behind them, keys that are not there, equal descriptions, lines whose order nobody asks for, texts
// that are equal but for a blank, fields that are absent.
void PrAdelanto::iguales()
{
    const auto programa = base->Otro();
    programa->Correr("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'IGUAL' WHERE Te_Cve_Tipo_Equipo = '0001' AND "
                     "Tep_Padre IN ('0000', '0001')");
    programa->Correr("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) VALUES "
                     "('0001 ', '0099  ', '0001   ', 'IGUAL'), ('0001', '00 99', '0001', 'IGUAL'), "
                     "('0001', ' 0099', ' 0001', 'OTRA'), ('0001', 'Ñ''1', 'á', '')");
    programa->Correr("UPDATE Plan_Mantenimiento_Detalle SET Pmd_ID = 'A' || Pmd_ID WHERE Te_Cve_Tipo_Equipo = '0001' "
                     "AND Pmd_Tipo = '01'");
    const QStringList partes{"0000", "0001", "0001  ", " 0001", "0009", "NADA", "", "á", "Á", "0001\t", "0009"};
    QStringList todas;
    for (const QString &parte : partes)
        for (const QString &folio : QStringList{"000001", "000002 ", "000017", "000018", ""})
            todas << Hijas(parte) << Hijas(parte, "Tep_Descripcion ASC") << Lineas(parte, folio)
                  << "SELECT * FROM Plan_Mantenimiento WHERE Plan_Mantenimiento.Te_Cve_Tipo_Equipo = '0001' AND "
                     "Plan_Mantenimiento.Tep_ID = '"
                         + parte + "' AND Plan_Mantenimiento.Pm_ID = '" + folio + "' "
                  << "SELECT MAX(Pmd_Numero) AS Ultimo FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = "
                     "'0001' AND Pm_ID = '"
                         + folio + "'";
    for (const char *nombre : {"PLAN_MANTENIMIENTO", "PLAN", "PLAN_MANTENIMIENTO ", "plan_mantenimiento"})
        todas << QString("SELECT Co_Texto FROM Consulta WHERE Co_Nombre = '%1'").arg(nombre)
              << QString("SELECT Fc_Mascara FROM Formato_Clave WHERE Fc_Codigo = 'FTO_%1 '").arg(nombre);
    for (const char *clave : {"0000000001", "0000000001 ", "1", "0000001001"})
        todas
            << QString("SELECT Pr_Descripcion, Pr_Costo_Estandar FROM Producto WHERE Pr_Cve_Producto = '%1'").arg(clave)
            << QString("SELECT Es_Cve_Estado FROM Producto WHERE Pr_Cve_Producto = '%1' AND Pr_Clase = 'MO'")
                   .arg(clave);
    Comparar(todas);
}

// What others saved is in the next event, whatever was read in the one before.
void PrAdelanto::momentos()
{
    const QStringList todas{Hijas("0000"), Hijas("0001"), Hijas("0002"), Hijas("0009")};
    Comparar(todas);
    base->Otro()->Correr("UPDATE Tipo_Equipo_Parte SET Tep_Padre = '0002' WHERE Tep_ID = '0010'");
    Comparar(todas);
    Comparar({Hijas("0002")});
}

// A transaction sees its own changes, and after it what became of them.
void PrAdelanto::transaccion()
{
    const QString borrada = "DELETE FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = '0001' AND Tep_ID = "
                            "'0009' AND Pm_ID = '000018'";
    const QStringList todas{Lineas("0009", "000017"), Lineas("0009", "000018"), Lineas("0009", "000019")};
    for (const auto &conexion : {una.get(), otra.get()}) {
        conexion->BeginTrans();
        QString antes;
        for (const QString &sql : todas)
            antes += Filas(*conexion, sql);
        conexion->Execute(borrada);
        QVERIFY(Filas(*conexion, todas.at(1)).isEmpty() && Filas(*conexion, todas.at(1) + " ").isEmpty());
        QCOMPARE(Filas(*conexion, todas.at(2)).count('\n'), 4);
        conexion->RollbackTrans();
        conexion->BeginTrans();
        QString despues;
        for (const QString &sql : todas)
            despues += Filas(*conexion, sql);
        QCOMPARE(despues, antes);
        conexion->RollbackTrans();
    }
}

// What was read and not shown is no reason to let a save go over another's.
void PrAdelanto::versiones()
{
    const QString cambio = "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'OTRA',  Oper_Ult_Modif = 'ana',  "
                           "Fecha_Ult_Modif = '2026-01-01' WHERE Tep_ID = '0002' AND Te_Cve_Tipo_Equipo = '0001'";
    Comparar({Hijas("0001")});
    base->Otro()->Correr(cambio);
    Comparar({Hijas("0002"), Hijas("0003"), Hijas("0009")});
    una->BeginTrans();
    una->Execute(cambio);
    QVERIFY(qvx::RegistrarCambio(*una, {"mlopez", [] { return "2026-01-02"; }}, "Tipo_Equipo_Parte", {"0002", "0001"})
                .contains("ana"));
    una->RollbackTrans();
}

// More lines than are read at once, of parts in no order; some have more than that alone.
void PrAdelanto::enTrozos()
{
    const QString numeros = motor::Segun("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
                                         "%1) INSERT",
                                         "WITH n AS (SELECT generate_series(1, %1) AS i) INSERT")
                            + " INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, "
                              "Pr_Cve_Producto) SELECT '0001', %2, %3, 'T' || i, '01', '1' FROM n";
    base->Otro()->Correr(numeros.arg("60000", "'P' || (i / 10000)", "i / 5000"));
    base->Otro()->Correr(numeros.arg("51000", "'Q'", "i / 50000"));
    QStringList todas;
    for (const auto &[parte, folio] : {qMakePair("P5", "10"),
                                       {"P1", "3"},
                                       {"P6", "12"},
                                       {"0009", "000018"},
                                       {"Q", "1"},
                                       {"P0", "0"},
                                       {"R", "1"},
                                       {"Q", "2"},
                                       {"P5", "11"},
                                       {"P3", "6"}})
        todas << Lineas(parte, folio);
    Comparar(todas);
}

// The rows of a document that takes a plan's place are sent without waiting for each. Numbers, errors, what they stand
// in the place of, and the trace are as if it had been waited for.
void PrAdelanto::aplazadas_data()
{
    const Tabla<int, QString, QString> fila("repetida", "fin", "error"); // which row fails, and what comes last
    const QString repetida = motor::Segun("UNIQUE constraint failed", "tipo_equipo_parte_pkey");
    fila("bien", -1, "confirmar", "");
    fila("al confirmar", 98, "confirmar", repetida);
    fila("por otra consulta", 40, "consultar", repetida);
    fila("antes que un error propio", 98, "fallar", repetida);
    fila("un error propio", -1, "fallar", "propio");
    fila("una sentencia que no es", 98, "no es", repetida);
    fila("se deshace", -1, "deshacer", "");
}

void PrAdelanto::aplazadas()
{
    QFETCH(int, repetida);
    QFETCH(QString, fin);
    QFETCH(QString, error);
    constexpr int Partes = 100;
    const QString relleno(60000, 'x'); // 6 MB, more than the sockets hold
    const auto contenido = [&] {
        return base->Otro()->Filas("SELECT Tep_ID, length(Tep_Descripcion) FROM Tipo_Equipo_Parte ORDER BY "
                                   "Te_Cve_Tipo_Equipo, Tep_ID");
    };
    const QStringList antes = contenido();
    QStringList dichos;
    QStringList despues;
    QString numeros;
    for (const auto &conexion : {otra.get(), una.get()}) {
        QString dicho;
        QString suyos;
        try {
            conexion->BeginTrans();
            for (const char *tabla : {"Plan_Mantenimiento_Detalle", "Plan_Mantenimiento", "Tipo_Equipo_Parte"})
                conexion->Execute(QString("DELETE FROM %1 WHERE Te_Cve_Tipo_Equipo = '0001' ").arg(tabla));
            for (int i = 0; i < Partes; ++i) {
                const QString parte = QString("%1").arg(i == repetida ? i - 1 : i + 10, 4, 10, QLatin1Char('0'));
                conexion->Execute("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Descripcion, "
                                  "Tep_Padre) VALUES ('0001', '"
                                  + (i == repetida ? QString("0010 ") : parte) + "', '" + relleno + "', '0000')");
                if (i % 8 != 0) // services of parts, some of them without lines, in two numberings
                    continue;
                for (const QString &donde : {QString(), QString(" AND Tep_ID = '%1'").arg(parte)})
                    suyos += Filas(*conexion, "SELECT MAX(Pm_Numero) AS Ultimo FROM Plan_Mantenimiento WHERE "
                                              "Te_Cve_Tipo_Equipo = '0001'"
                                                  + donde);
                conexion->Execute(QString("INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, "
                                          "Ts_Cve_Tipo_Servicio, Pm_Frecuencia) VALUES ('0001 ', '%1', '%2', '01', 1)")
                                      .arg(parte, i == 48 ? QString("X%1").arg(i) : QString::number(i + 1)));
            }
            if (fin == "fallar")
                throw qvx::ErrorEjecucion(qvx::errores::Desbordamiento, "propio");
            if (fin == "no es")
                conexion->Execute("DROP TABLE Producto");
            if (fin == "consultar")
                conexion->Execute("SELECT count(*) AS Cuantos FROM Producto");
            if (fin == "confirmar")
                conexion->CommitTrans();
        } catch (const qvx::ErrorEjecucion &fallo) {
            dicho = fallo.Descripcion() + '|' + fallo.Sentencia();
        }
        conexion->RollbackTrans();
        dichos.append(dicho);
        if (numeros.isEmpty())
            numeros = suyos;
        QVERIFY(suyos.startsWith(numeros)); // one that waits stops earlier
        despues.append(contenido().join('|'));
    }
    QCOMPARE(despues.constLast(), despues.constFirst());
    QCOMPARE(despues.constLast() == antes.join('|'), !(fin == "confirmar" && repetida < 0));
    QVERIFY2(error.isEmpty() ? dichos.constFirst().isEmpty() : dichos.constFirst().contains(error),
             qPrintable(dichos.constFirst().left(500)));
    QCOMPARE(dichos.constLast(), dichos.constFirst());
    const auto traza = [&](const QString &cual) { // what is there to be deleted depends on who came first
        return QString(Contenido(carpeta.filePath(cual))).section("DELETE FROM Tipo_Equipo_Parte", 1);
    };
    QCOMPARE(traza("una"), traza("otra"));
}

PRUEBA(PrAdelanto)
#include "pr_adelanto.moc"
