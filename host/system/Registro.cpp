#include "system/Registro.h"

#include "data/ErrorEjecucion.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
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

// Creates the file closed to others before anything is written to it.
void Preparar(const QString &archivo)
{
    QFile nuevo(archivo);
    if (!QDir().mkpath(QFileInfo(archivo).absolutePath()) || !nuevo.open(QIODevice::ReadWrite)
        || !nuevo.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        throw ErrorEjecucion(errores::Datos, "No se puede escribir el registro de componentes «" + archivo
                                                 + "»: " + nuevo.errorString());
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
    ajustes.beginGroup(clase);
    if (!ajustes.contains("InprocServer32"))
        return std::nullopt;
    return ClaseRegistrada{ajustes.value("InprocServer32").toString(), ajustes.value("ProgID").toString(),
                           ajustes.value("Version").toString()};
}

void Escribir(const QString &clase, const ClaseRegistrada &registrada)
{
    Preparar(Archivo());
    QSettings ajustes(Archivo(), QSettings::IniFormat);
    ajustes.beginGroup(clase);
    ajustes.setValue("InprocServer32", registrada.biblioteca);
    ajustes.setValue("ProgID", registrada.programa);
    ajustes.setValue("Version", registrada.version);
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
