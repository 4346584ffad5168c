#include "support/Procesos.h"

#include <QFile>
#include <QTest>

void Encontrarse(const QString &listo, const QString &seguir)
{
    if (!QFile(listo).open(QIODevice::WriteOnly))
        qFatal("No se pudo hacer %s", qPrintable(listo));
    while (!QFile::exists(seguir))
        QTest::qWait(10);
}

bool Termino(QProcess &proceso, int milisegundos)
{
    return proceso.state() == QProcess::NotRunning || proceso.waitForFinished(milisegundos);
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
