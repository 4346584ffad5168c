#include "plan/Guion.h"

#include "data/ErrorEjecucion.h"

#include <QFile>
#include <QRegularExpression>

namespace qvx
{

namespace
{

QString Texto(const QString &nombre)
{
    QFile guion(":/schema/" + nombre);
    if (!guion.open(QIODevice::ReadOnly))
        throw ErrorEjecucion(errores::Datos, "Falta el guion " + nombre);
    return QString::fromUtf8(guion.readAll());
}

} // namespace

QString Guion(const QString &nombre, Motor motor)
{
    static const QRegularExpression otro("\\{guion:([^{}]+)\\}");
    static const QRegularExpression porMotor("\\{sqlite:([^|{}]*)\\|\\s*postgres:([^{}]*)\\}");
    QString texto = Texto(nombre);
    for (auto marca = otro.match(texto); marca.hasMatch(); marca = otro.match(texto)) {
        QString incluido = Texto(marca.captured(1));
        incluido.replace("{1}", "$1").replace("{2}", "$2");
        texto.replace(marca.capturedStart(), marca.capturedLength(), incluido.trimmed());
    }
    texto.replace(porMotor, motor == Motor::Incrustado ? "\\1" : "\\2");
    return texto.replace("{version}", QString::number(VersionEsquema));
}

QStringList GuionesDesde(int version, Motor motor)
{
    const QString carpeta = motor == Motor::Incrustado ? "sqlite/" : "postgres/";
    QStringList guiones;
    for (int paso = qMax(version + 1, VersionMasVieja); paso <= VersionEsquema; ++paso)
        guiones.append(carpeta + QString("version_%1.sql").arg(paso));
    guiones.append("consultas.sql");
    return guiones;
}

} // namespace qvx
