#include "support/Procesos.h"

#include "support/Escenario.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
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

QStringList CorrerJuntos(const Escenario &escenario, int cuantos, const QStringList &orden)
{
    constexpr int Paciencia = 600'000; // milliseconds
    const QTemporaryDir carpeta;
    const QString base = escenario.Base().Argumentos().constLast().section('/', -1);
    const QString seguir = carpeta.filePath("seguir");
    const auto listo = [&](int i) { return carpeta.filePath(QString::number(i)); };
    std::vector<QProcess> hijos(static_cast<std::size_t>(cuantos));
    for (int i = 0; i < cuantos; ++i)
        hijos[static_cast<std::size_t>(i)].start(QCoreApplication::applicationFilePath(),
                                                 orden + QStringList{base, QString::number(i), listo(i), seguir});
    for (int i = 0; i < cuantos; ++i)
        if (!QTest::qWaitFor([&] { return QFile::exists(listo(i)); }, Paciencia))
            qFatal("Un proceso no empezó");
    if (!QFile(seguir).open(QIODevice::WriteOnly))
        qFatal("No se pudo hacer %s", qPrintable(seguir));
    QStringList dichos;
    for (QProcess &hijo : hijos) {
        if (hijo.state() != QProcess::NotRunning && !hijo.waitForFinished(Paciencia))
            qFatal("Un proceso no terminó");
        if (hijo.exitStatus() != QProcess::NormalExit || hijo.exitCode() != 0)
            qFatal("Un proceso falló: %s", hijo.readAllStandardError().constData());
        dichos.append(QString::fromUtf8(hijo.readAllStandardOutput()));
    }
    return dichos;
}
