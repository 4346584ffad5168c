#include "plan/Respaldo.h"

#include "plan/ArchivoDeBase.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QtEndian>
#include <algorithm>
#include <unistd.h>

namespace qvx
{

namespace
{

const QString Dia = "yyyy-MM-dd";

// The program's own copies of a database, by their names: "plan_2026-11-22_1f0c93ab.db", and with a time behind the day
// for one that was made before something. Databases of one name, from several folders, may have their copies in one.
class Nombres
{
public:
    explicit Nombres(const LugarDeCopias &lugar)
        : comienzo(QFileInfo(lugar.base).completeBaseName() + "_"), fin("_" + Sena(lugar.base) + ".db")
    {
    }
    QString De(const QString &momento) const { return comienzo + momento + fin; }
    bool EsPropia(const QString &nombre) const
    {
        static const QRegularExpression momento(
            QRegularExpression::anchoredPattern("\\d{4}-\\d\\d-\\d\\d(_\\d{6}(_\\d+)?)?"));
        const auto cuantas = nombre.size() - comienzo.size() - fin.size();
        return cuantas > 0 && nombre.startsWith(comienzo) && nombre.endsWith(fin)
               && momento.match(nombre.mid(comienzo.size(), cuantas)).hasMatch();
    }

private:
    static QString Sena(const QString &base)
    {
        const QByteArray ruta = QFile::encodeName(QFileInfo(base).canonicalFilePath());
        return QString::fromLatin1(QCryptographicHash::hash(ruta, QCryptographicHash::Sha256).toHex().left(8));
    }

    QString comienzo;
    QString fin;
};

// Reads what stands at fixed places of the header; nothing for what is no database of this system.
std::optional<int> VersionEnCabecera(const QString &archivo)
{
    constexpr int Version = 60;
    constexpr int Aplicacion = 68;
    QFile entrada(archivo);
    if (!entrada.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray cabecera = entrada.read(100);
    if (cabecera.size() < 100 || !cabecera.startsWith("SQLite format 3")
        || qFromBigEndian<qint32>(cabecera.constData() + Aplicacion) != archivo::Firma)
        return std::nullopt;
    return qFromBigEndian<qint32>(cabecera.constData() + Version);
}

QFileInfoList PorFecha(const QDir &carpeta, const QStringList &nombres)
{
    QFileInfoList archivos = carpeta.entryInfoList(nombres, QDir::Files | QDir::NoSymLinks);
    std::sort(archivos.begin(), archivos.end(), [](const QFileInfo &una, const QFileInfo &otra) {
        return std::pair(una.lastModified(), una.fileName()) > std::pair(otra.lastModified(), otra.fileName());
    });
    return archivos;
}

// What cannot be deleted stays, and is tried again with the next copy.
void Podar(const LugarDeCopias &lugar, const QStringList &salvo)
{
    const Nombres nombres(lugar);
    int quedan = qMax(lugar.cuantas, 1);
    for (const QFileInfo &archivo : PorFecha(QDir(lugar.carpeta), {"*.db"})) {
        if (!nombres.EsPropia(archivo.fileName()) || archivo.ownerId() != geteuid())
            continue;
        if (--quedan < 0 && !salvo.contains(archivo.canonicalFilePath())
            && !archivo::EsElMismo(archivo.filePath(), lugar.base))
            QFile::remove(archivo.filePath());
    }
}

} // namespace

void Respaldar(const QString &base, const QString &destino)
{
    const QString sujeto = archivo::LaCopia(destino);
    const auto ocupado = [&] {
        archivo::Rechazar(sujeto, "no se hizo: ya hay un archivo con ese nombre, y no se reemplaza");
    };
    if (QFileInfo::exists(destino))
        ocupado();
    archivo::Provisional copia(destino, sujeto);
    BaseAbierta abierta = archivo::Abrir(base, archivo::BaseDeDatos(base));
    archivo::Copiar(abierta, copia, sujeto);
    if (!copia.Publicar(destino))
        ocupado();
}

// Two programs may both make it: the name is the first one's.
bool RespaldarDelDia(const LugarDeCopias &lugar, const QDate &hoy)
{
    const QString destino = QDir(lugar.carpeta).filePath(Nombres(lugar).De(hoy.toString(Dia)));
    if (QFileInfo::exists(destino))
        return false;
    const QString sujeto = archivo::LaCopia(destino);
    archivo::Provisional copia(destino, sujeto);
    BaseAbierta abierta = archivo::Abrir(lugar.base, archivo::BaseDeDatos(lugar.base));
    archivo::Copiar(abierta, copia, sujeto);
    const bool primera = copia.Publicar(destino);
    if (primera)
        Podar(lugar, {});
    return primera;
}

QString RespaldarAntes(BaseAbierta &base, const LugarDeCopias &lugar, const QDateTime &ahora, const QString &salvo)
{
    const QString momento = ahora.toString(Dia + "_HHmmss");
    const Nombres nombres(lugar);
    const auto ruta = [&](const QString &cual) { return QDir(lugar.carpeta).filePath(nombres.De(cual)); };
    QString destino = ruta(momento);
    const QString sujeto = archivo::LaCopia(destino);
    archivo::Provisional copia(destino, sujeto);
    archivo::Copiar(base, copia, sujeto);
    for (int n = 2; !copia.Publicar(destino); ++n)
        destino = ruta(momento + QString("_%1").arg(n));
    Podar(lugar, {QFileInfo(salvo).canonicalFilePath(), QFileInfo(destino).canonicalFilePath()});
    return destino;
}

QList<Copia> Copias(const LugarDeCopias &lugar)
{
    const Nombres nombres(lugar);
    const QFileInfo base(lugar.base);
    QFileInfoList archivos = PorFecha(QDir(lugar.carpeta), {"*.db"});
    for (const QFileInfo &archivo : PorFecha(base.absoluteDir(), {"*.v*-*"}))
        if (archivo.fileName().startsWith(base.fileName() + ".v"))
            archivos.append(archivo);
    QList<Copia> copias;
    for (const QFileInfo &archivo : archivos) {
        if (archivo::EsElMismo(archivo.filePath(), lugar.base)) // closing it would end the engine's locks
            continue;
        if (const auto version = VersionEnCabecera(archivo.filePath()))
            copias.append({archivo.absoluteFilePath(), archivo.lastModified(), archivo.size(), *version,
                           nombres.EsPropia(archivo.fileName())});
    }
    std::sort(copias.begin(), copias.end(), [](const Copia &una, const Copia &otra) { return una.fecha > otra.fecha; });
    return copias;
}

} // namespace qvx
