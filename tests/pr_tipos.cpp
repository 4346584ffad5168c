#include "data/ErrorEjecucion.h"
#include "support/Escenario.h"
#include "support/Tabla.h"

// What values become on their way to an engine and back.
class PrTipos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { base = std::make_unique<BaseDePrueba>(false); }
    void cleanupTestCase() { base.reset(); }
    void valores_data();
    void valores();

private:
    std::unique_ptr<BaseDePrueba> base;
};

void PrTipos::valores_data()
{
    struct Caso {
        const char *tipo;
        QVariant valor;
        const char *incrustado; // type|value, or type|NULL
        const char *servidor;
    };
    const QString vacio("");
    const QList<Caso> casos{
        {"text", QString("Ñandú ' ? \\ 1  "), "QString|Ñandú ' ? \\ 1  ", "QString|Ñandú ' ? \\ 1  "},
        {"text", vacio, "QString|", "QString|"},
        {"text", QString(), "QString|NULL", "QString|NULL"},
        {"text", QVariant(), "QString|NULL", "QString|NULL"},
        {"text", 1e20, "QString|1.0e+20", "QString|100000000000000000000"},
        {"text", -2.5, "QString|-2.5", "QString|-2.5"},
        {"varchar(3)", QString("abcdef"), "QString|abcdef", "QString|abc"},
        {"char(6)", QString("abc"), "QString|abc", "QString|abc   "},
        {"integer", 2.5, "qlonglong|2", "int|3"},
        {"integer", -3, "qlonglong|-3", "int|-3"},
        {"integer", QVariant(), "QString|NULL", "int|NULL"},
        {"smallint", 3, "qlonglong|3", "int|3"},
        {"bigint", 9007199254740993LL, "qlonglong|9007199254740993", "qulonglong|9007199254740993"},
        {"bigint", -9007199254740993LL, "qlonglong|-9007199254740993", "qlonglong|-9007199254740993"},
        {"numeric", 68.425, "double|68.425", "double|68.425"},
        {"numeric(12, 4)", QString("-0.00005"), "double|-5e-05", "double|-1e-04"},
        {"numeric", 123456789012345.67, "double|123456789012345.67", "double|123456789012345.67"},
        {"numeric", QVariant(), "QString|NULL", "double|NULL"},
        {"numeric", QString("NaN"), "qlonglong|0", "double|nan"},
        {"real", 0.1, "double|0.1", "double|0.1"},
        {"double precision", 1e-7, "double|1e-07", "double|1e-07"},
        {"boolean", QString("t"), "qlonglong|0", "bool|true"},
        {"date", QString("2024-02-29"), "qlonglong|2024", "QDate|2024-02-29"},
        {"time", QString("13:14:15"), "qlonglong|13", "QTime|13:14:15.000"},
        {"timestamp", QString("2024-02-29 13:14:15.678"), "qlonglong|2024", "QDateTime|2024-02-29T13:14:15.678"},
        {"timestamptz", QString("2024-02-29 13:14:15-06"), "qlonglong|2024", "QDateTime|2024-02-29T19:14:15.000"},
        {"oid", 5, "qlonglong|5", "QString|5"},
        {"name", QString("x"), "qlonglong|0", "QString|x"},
        {"bytea", QString("\\x004f"), "qlonglong|0", "QByteArray|0O"},
        {"integer", QString("x"), "qlonglong|0", "22P02 invalid input syntax for type integer: \"x\""},
    };
    const Tabla<QString, QVariant, QString> fila("tipo", "valor", "debido");
    int cual = 0;
    for (const Caso &caso : casos)
        fila(QString("%1 %2").arg(++cual).arg(caso.tipo), caso.tipo, caso.valor,
             motor::Segun(caso.incrustado, caso.servidor));
}

void PrTipos::valores()
{
    QFETCH(QString, tipo);
    QFETCH(QVariant, valor);
    const auto conexion = base->Abrir();
    QString leido;
    try {
        const auto fila = conexion->Execute("SELECT CAST(? AS " + tipo + ") AS Valor", {valor});
        const QVariant &suyo = fila.Valor(0);
        const QString texto = suyo.typeId() == QMetaType::QByteArray
                                  ? QString::fromLatin1(suyo.toByteArray().replace('\0', '0'))
                                  : suyo.toString();
        leido = QLatin1String(suyo.typeName()) + QLatin1Char('|') + (suyo.isNull() ? "NULL" : texto);
    } catch (const qvx::ErrorEjecucion &error) {
        leido = error.CodigoMotor() + ' ' + error.Descripcion();
    }
    QFETCH(QString, debido);
    QCOMPARE(leido, debido);
}

PRUEBA(PrTipos)
#include "pr_tipos.moc"
