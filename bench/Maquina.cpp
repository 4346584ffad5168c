#include "bench/Maquina.h"

#include <QDate>
#include <QFile>
#include <QSysInfo>
#include <QThread>
#include <unistd.h>

namespace
{

QByteArray Contenido(const char *archivo)
{
    QFile leido(archivo);
    return leido.open(QIODevice::ReadOnly) ? leido.readAll() : QByteArray();
}

// Its name, where the system tells it.
QString Procesador()
{
    for (const QByteArray &renglon : Contenido("/proc/cpuinfo").split('\n'))
        if (renglon.startsWith("model name"))
            return QString::fromUtf8(renglon.mid(renglon.indexOf(':') + 1).trimmed());
    return QSysInfo::currentCpuArchitecture();
}

} // namespace

QString Maquina()
{
    const double gb =
        static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 0x1p30;
#ifdef NDEBUG
    const char *construccion = "release";
#else
    const char *construccion = "debug";
#endif
    return QString("%1, %2, %3 cores, %4 GB, Debian %5, Qt %6, %7 build")
        .arg(QDate::currentDate().toString(Qt::ISODate), Procesador(), QString::number(QThread::idealThreadCount()),
             QString::number(gb, 'f', 0), QString::fromUtf8(Contenido("/etc/debian_version").trimmed()), qVersion(),
             construccion);
}
