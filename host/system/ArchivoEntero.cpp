#include "system/ArchivoEntero.h"

#include "data/ErrorEjecucion.h"

#include <QUuid>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qvx
{

ArchivoEntero::ArchivoEntero(const QString &archivo_)
    : archivo(archivo_), provisional(archivo_ + '.' + QUuid::createUuid().toString(QUuid::Id128).left(12))
{
    const std::optional<mode_t> anterior = PermisosDelOcupante();
    // The system takes from the mode what the person's mask takes.
    const int descriptor =
        open(QFile::encodeName(provisional).constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
             S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH);
    if (descriptor < 0 || !nuevo.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle))
        Rechazar(qt_error_string(errno));
    if (anterior)
        fchmod(descriptor, *anterior);
}

ArchivoEntero::~ArchivoEntero()
{
    if (!terminado)
        QFile::remove(provisional);
}

// Of the file that is there already, if there is one.
std::optional<mode_t> ArchivoEntero::PermisosDelOcupante() const
{
    struct stat ocupante {
    };
    if (lstat(QFile::encodeName(archivo).constData(), &ocupante) != 0)
        return std::nullopt;
    if (!S_ISREG(ocupante.st_mode))
        Rechazar(
            "en ese lugar hay algo que no es un archivo (un enlace, una carpeta, un dispositivo), y no se reemplaza");
    return ocupante.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
}

void ArchivoEntero::Terminar()
{
    // A disk may tell only now that it could not take it all.
    if (nuevo.error() != QFileDevice::NoError || !nuevo.flush())
        Rechazar(Motivo());
    if (fsync(nuevo.handle()) != 0 && errno != EINVAL)
        Rechazar(qt_error_string(errno));
    nuevo.close();
    PermisosDelOcupante(); // somebody may have put something there meanwhile
    if (std::rename(QFile::encodeName(provisional).constData(), QFile::encodeName(archivo).constData()) != 0)
        Rechazar(qt_error_string(errno));
    terminado = true;
}

// Of a failure that was not the last thing done to the file the toolkit has forgotten the words: the disk is asked
// again.
QString ArchivoEntero::Motivo()
{
    constexpr int Veces = 16;
    const QByteArray nada(1 << 16, '\0');
    for (int vez = 0; vez < Veces; ++vez)
        if (write(nuevo.handle(), nada.constData(), nada.size()) < 0)
            return qt_error_string(errno);
    return nuevo.errorString();
}

void ArchivoEntero::Rechazar(const QString &motivo) const
{
    throw ErrorEjecucion(errores::Datos, "No se pudo guardar el archivo " + archivo + ": " + motivo);
}

} // namespace qvx
