#include "support/Procesos.h"

#include <QFile>
#include <QProcess>
#include <QTest>

QString Quorvex(const QStringList &argumentos)
{
    QProcess programa;
    auto entorno = QProcessEnvironment::systemEnvironment();
    for (const char *variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        entorno.remove(variable);
    programa.setProcessEnvironment(entorno);
    programa.setProcessChannelMode(QProcess::MergedChannels);
    programa.start(PROGRAMA_QUORVEX, argumentos);
    if (!programa.waitForFinished(60000))
        qFatal("quorvex no termina");
    return QString::number(programa.exitCode()) + QString::fromUtf8(programa.readAll());
}

void Encontrarse(const QString &listo, const QString &seguir)
{
    if (!QFile(listo).open(QIODevice::WriteOnly))
        qFatal("No se pudo hacer %s", qPrintable(listo));
    while (!QFile::exists(seguir))
        QTest::qWait(10);
}

void AnotarResultado(const QStringList &campos)
{
    QFile archivo(qEnvironmentVariable("QVX_RESULTADOS"));
    if (archivo.fileName().isEmpty())
        return;
    if (!archivo.open(QIODevice::Append))
        qFatal("%s", qPrintable(archivo.errorString()));
    archivo.write((campos.join(QLatin1Char('\t')) + "\n").toUtf8());
}
