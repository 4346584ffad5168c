#include "system/Registro.h"

#include "data/ErrorEjecucion.h"
#include "system/Carpetas.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <sys/stat.h>
#include <unistd.h>

namespace qvx::registro
{

namespace
{

void RevisarDuenio(const QString &archivo)
{
    const QFileInfo info(archivo);
    if (!info.exists())
        return;
    const bool ajeno = info.ownerId() != geteuid();
    if (ajeno || info.permissions().testAnyFlags(QFile::WriteGroup | QFile::WriteOther))
        throw ErrorEjecucion(errores::Datos,
                             "El registro de componentes «" + archivo + "» puede haberlo escrito otro usuario.");
}

bool EscribenOtros(const struct stat &hallado)
{
    return (hallado.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

// Of a path without links: the file, and every folder above it. Where everybody may make files but change only his own,
// the entry must be the user's: anybody may have put a second name of a file of root's there.
bool SoloDelUsuario(const QString &ruta)
{
    struct stat entrada {
    };
    if (lstat(QFile::encodeName(ruta).constData(), &entrada) != 0 || !S_ISREG(entrada.st_mode)
        || EscribenOtros(entrada))
        return false;
    for (QString carpeta = ruta; carpeta != "/";) {
        carpeta = QFileInfo(carpeta).path();
        struct stat hallada {
        };
        const bool ajena = entrada.st_uid != geteuid() && entrada.st_uid != 0;
        if (ajena || lstat(QFile::encodeName(carpeta).constData(), &hallada) != 0)
            return false;
        if (EscribenOtros(hallada) && !((hallada.st_mode & S_ISVTX) && entrada.st_uid == geteuid()))
            return false;
        entrada = hallada;
    }
    return entrada.st_uid == 0 || entrada.st_uid == geteuid();
}

void RevisarFormato(const QSettings &ajustes)
{
    if (ajustes.status() == QSettings::FormatError)
        throw ErrorEjecucion(errores::Datos, "El registro de componentes «" + ajustes.fileName() + "» está dañado.");
}

// Creates the file closed to others before anything is written to it.
void Preparar(const QString &archivo)
{
    QFile nuevo(archivo);
    QString fallo = HacerCarpeta(QFileInfo(archivo).absolutePath());
    if (fallo.isEmpty()
        && (!nuevo.open(QIODevice::ReadWrite) || !nuevo.setPermissions(QFile::ReadOwner | QFile::WriteOwner)))
        fallo = nuevo.errorString();
    if (!fallo.isEmpty())
        throw ErrorEjecucion(errores::Datos,
                             "No se puede escribir el registro de componentes «" + archivo + "»: " + fallo);
}

void Guardar(QSettings &ajustes)
{
    ajustes.sync();
    if (ajustes.status() != QSettings::NoError)
        throw ErrorEjecucion(errores::Datos,
                             "No se puede escribir el registro de componentes «" + ajustes.fileName() + "».");
}

} // namespace

QString Archivo()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/quorvex/componentes.ini";
}

std::optional<ClaseRegistrada> Buscar(const QString &clase)
{
    RevisarDuenio(Archivo());
    QSettings ajustes(Archivo(), QSettings::IniFormat);
    RevisarFormato(ajustes);
    ajustes.beginGroup(clase);
    const QString biblioteca = QFileInfo(ajustes.value("InprocServer32").toString()).canonicalFilePath();
    if (biblioteca.isEmpty() || !SoloDelUsuario(biblioteca))
        return std::nullopt;
    return ClaseRegistrada{biblioteca, ajustes.value("ProgID").toString(), ajustes.value("Version").toString(),
                           ajustes.value("Marca").toString()};
}

void Escribir(const QString &clase, const ClaseRegistrada &registrada)
{
    if (QSettings(Archivo(), QSettings::IniFormat).status() == QSettings::FormatError)
        QFile::remove(Archivo());
    Preparar(Archivo());
    QSettings ajustes(Archivo(), QSettings::IniFormat);
    ajustes.beginGroup(clase);
    ajustes.setValue("InprocServer32", registrada.biblioteca);
    ajustes.setValue("ProgID", registrada.programa);
    ajustes.setValue("Version", registrada.version);
    ajustes.setValue("Marca", registrada.marca);
    ajustes.setValue("ThreadingModel", "Apartment");
    Guardar(ajustes);
}

void Borrar(const QString &clase)
{
    if (!QFileInfo::exists(Archivo()))
        return;
    QSettings ajustes(Archivo(), QSettings::IniFormat);
    ajustes.remove(clase);
    Guardar(ajustes);
}

} // namespace qvx::registro
