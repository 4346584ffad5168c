#include "data/ErrorEjecucion.h"
#include "data/Instalador.h"
#include "support/Averia.h"
#include "support/Tabla.h"

#include <QDir>

// The database file: made on first use, refused when it is not ours or damaged.
class PrInstalador : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void creada();
    void rechazada_data();
    void rechazada();
    void sinEspacio();
};

namespace
{

QByteArray Contenido(const QString &archivo)
{
    QFile entrada(archivo);
    return entrada.open(QIODevice::ReadOnly) ? entrada.readAll() : QByteArray();
}

QString ErrorAlAbrir(const QString &archivo)
{
    try {
        qvx::AbrirBaseDeDatos(archivo, false);
        return "abrió";
    } catch (const qvx::ErrorEjecucion &error) {
        return error.Descripcion();
    }
}

} // namespace

// For its owner alone; opened again, it is as it was left.
void PrInstalador::creada()
{
    const QTemporaryDir carpeta;
    const QString archivo = carpeta.filePath("una/nueva.db");
    qvx::AbrirBaseDeDatos(archivo, false);
    QCOMPARE(QFile::permissions(archivo) & 0x0077, QFile::Permissions());
    const QByteArray antes = Contenido(archivo);
    qvx::AbrirBaseDeDatos(archivo, true); // no examples come into it
    QCOMPARE(Contenido(archivo), antes);
}

void PrInstalador::rechazada_data()
{
    const Tabla<QString, QString> fila("orden", "motivo");
    fila("ajena", "PRAGMA application_id = 7", "no es de Quorvex");
    fila("más nueva", "PRAGMA user_version = 99", "versión más reciente");
    fila("más vieja", "PRAGMA user_version = 0", "ya no lee");
    fila("otro archivo", "", "no es de Quorvex.");
    fila("cortada", "", "(database disk image is malformed)");
    fila("ocupada", "", "está ocupada por otro programa (database is locked)");
}

void PrInstalador::rechazada()
{
    QFETCH(QString, orden);
    QFETCH(QString, motivo);
    const QString clase = QTest::currentDataTag();
    const Escenario escenario;
    if (!orden.isEmpty())
        escenario.Motor(orden);
    QFile archivo(escenario.Archivo());
    if (clase == "cortada")
        QVERIFY(archivo.resize(archivo.size() / 2));
    if (clase == "otro archivo")
        QVERIFY(archivo.open(QIODevice::WriteOnly) && archivo.write(QByteArray(200, 'x')) == 200);
    archivo.close();
    const QByteArray antes = Contenido(archivo.fileName());
    std::unique_ptr<Averia> averia;
    if (clase == "ocupada")
        averia = std::make_unique<Averia>(escenario, clase);
    const QString error = ErrorAlAbrir(archivo.fileName());
    QVERIFY2(error.startsWith("La base de datos «") && error.contains(motivo), qPrintable(error));
    QCOMPARE(Contenido(archivo.fileName()), antes);
}

// Nothing is left half-made.
void PrInstalador::sinEspacio()
{
    const QTemporaryDir carpeta;
    const QString archivo = carpeta.filePath("nueva.db");
    auto disco = std::make_unique<DiscoLleno>();
    const QString error = ErrorAlAbrir(archivo);
    disco.reset();
    QVERIFY2(error.contains("nueva.db»"), qPrintable(error));
    QCOMPARE(QDir(carpeta.path()).entryList(QDir::Files), QStringList());
    QCOMPARE(ErrorAlAbrir(archivo), "abrió");
}

PRUEBA_MAIN(PrInstalador)
#include "pr_instalador.moc"
