#include "data/Traza.h"

#include "data/ErrorEjecucion.h"

#include <QTextStream>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace qvx
{

namespace
{

QString EnUnRenglon(QString texto)
{
    return texto.replace(QLatin1Char('\\'), "\\\\").replace(QLatin1Char('\n'), "\\n").replace(QLatin1Char('\r'), "\\r");
}

[[noreturn]] void RechazarTraza(const QString &motivo)
{
    throw ErrorEjecucion(errores::Datos, "No se puede escribir la traza: " + motivo);
}

} // namespace

Traza::Traza(const QString &archivo_)
{
    // A pipe without a reader would be waited for.
    const int descriptor =
        open(QFile::encodeName(archivo_).constData(),
             O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0)
        RechazarTraza(errno == ELOOP ? QString("«%1» es un enlace").arg(archivo_) : qt_error_string(errno));
    archivo.open(descriptor, QIODevice::Append | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
    struct stat hallado {
    };
    if (fstat(descriptor, &hallado) != 0 || !S_ISREG(hallado.st_mode))
        RechazarTraza("«" + archivo_ + "» no es un archivo");
    if (fchmod(descriptor, S_IRUSR | S_IWUSR) != 0)
        RechazarTraza(qt_error_string(errno));
}

void Traza::Anotar(const QString &marca, const QString &texto)
{
    QByteArray renglon = (marca + "\t" + EnUnRenglon(texto) + "\n").toUtf8();
    if (std::exchange(cortado, false))
        renglon.prepend('\n');
    if (archivo.write(renglon) == renglon.size())
        return;
    cortado = true;
    if (!std::exchange(avisado, true))
        QTextStream(stderr) << "La traza quedó incompleta: " << archivo.errorString() << Qt::endl;
}

} // namespace qvx
