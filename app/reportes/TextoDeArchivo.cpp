#include "app/reportes/TextoDeArchivo.h"

#include "data/ErrorEjecucion.h"

#include <QFile>
#include <QStringDecoder>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace csv
{

namespace
{

// Windows-1252 from 0x80 to 0x9F, 0 where it has no letter; the others are those of Latin-1.
constexpr std::array<char16_t, 32> Altas = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                            0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

std::optional<QString> DeUtf8(const QByteArray &octetos)
{
    QStringDecoder lector(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString texto = lector(octetos);
    if (lector.hasError())
        return std::nullopt;
    return texto;
}

// Controls that no text has tell that the bytes are something else.
std::optional<QString> DeWindows1252(const QByteArray &octetos)
{
    QString texto(octetos.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < octetos.size(); ++i) {
        const auto octeto = static_cast<uchar>(octetos.at(i));
        const char16_t letra = octeto >= 0x80 && octeto < 0xA0 ? Altas.at(octeto - 0x80) : octeto;
        if (letra < 0x09 || (letra > 0x0D && letra < 0x20) || letra == 0x7F)
            return std::nullopt;
        texto[i] = QChar(letra);
    }
    return texto;
}

std::optional<QString> Decodificar(const QByteArray &octetos, Codificacion codificacion)
{
    return codificacion == Codificacion::Utf8 ? DeUtf8(octetos) : DeWindows1252(octetos);
}

void RevisarQueSeaTexto(const QByteArray &octetos)
{
    if (octetos.startsWith("PK\x03\x04"))
        qvx::Rechazar("No es texto, sino un libro de hoja de cálculo: guárdelo como CSV UTF-8, o copie sus celdas y "
                      "péguelas.");
    if (octetos.startsWith("\xFF\xFE") || octetos.startsWith("\xFE\xFF"))
        qvx::Rechazar("El texto está en UTF-16: guárdelo como CSV UTF-8.");
    if (octetos.contains('\0'))
        qvx::Rechazar("No es un archivo de texto: guarde la hoja de cálculo como CSV UTF-8.");
}

int RenglonQueNoEs(const QByteArray &octetos, Codificacion codificacion)
{
    int renglon = 0;
    for (const QByteArray &linea : octetos.split('\n')) {
        ++renglon;
        if (!Decodificar(linea, codificacion))
            break;
    }
    return renglon;
}

// What tells one state of a file from another.
bool Igual(const struct stat &antes, const struct stat &ahora)
{
    return antes.st_dev == ahora.st_dev && antes.st_ino == ahora.st_ino && antes.st_size == ahora.st_size
           && antes.st_mtim.tv_sec == ahora.st_mtim.tv_sec && antes.st_mtim.tv_nsec == ahora.st_mtim.tv_nsec;
}

struct stat Mirar(const QString &ruta)
{
    struct stat hallado {
    };
    if (stat(QFile::encodeName(ruta).constData(), &hallado) != 0)
        qvx::Rechazar("No se pudo leer el archivo " + ruta + ": " + qt_error_string(errno));
    if (!S_ISREG(hallado.st_mode))
        qvx::Rechazar("En " + ruta + " no hay un archivo, sino una carpeta, un tubo o un dispositivo: no se lee.");
    if (hallado.st_size > TamanoMaximo)
        qvx::Rechazar(
            QString("El archivo %1 pasa de %2 MB: divídalo en varios.").arg(ruta).arg(TamanoMaximo / 1024 / 1024));
    return hallado;
}

} // namespace

// Looked at before it is opened, since opening alone may change a device; a pipe in its place does not hold us up.
QByteArray LeerArchivo(const QString &ruta)
{
    const struct stat antes = Mirar(ruta);
    QFile archivo;
    const int descriptor = open(QFile::encodeName(ruta).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0 || !archivo.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        qvx::Rechazar("No se pudo leer el archivo " + ruta + ": " + qt_error_string(errno));
    const QByteArray octetos = archivo.read(antes.st_size + 1);
    if (archivo.error() != QFileDevice::NoError)
        qvx::Rechazar("No se pudo leer el archivo " + ruta + ": " + archivo.errorString());
    struct stat despues {
    };
    if (fstat(descriptor, &despues) != 0 || !Igual(antes, despues) || !Igual(antes, Mirar(ruta)))
        qvx::Rechazar("Otro programa cambió el archivo " + ruta + " mientras se leía: espere a que termine y repita.");
    return octetos;
}

Codificacion ProponerCodificacion(const QByteArray &octetos)
{
    return DeUtf8(octetos) ? Codificacion::Utf8 : Codificacion::Windows1252;
}

QString Texto(const QByteArray &octetos, Codificacion codificacion)
{
    RevisarQueSeaTexto(octetos);
    if (auto texto = Decodificar(octetos, codificacion))
        return *texto;
    if (codificacion == Codificacion::Windows1252)
        qvx::Rechazar(QString("El renglón %1 no es texto en Windows-1252: guarde la hoja de cálculo como CSV UTF-8.")
                          .arg(RenglonQueNoEs(octetos, codificacion)));
    qvx::Rechazar(
        QString("El renglón %1 no está en UTF-8: elija Windows-1252, o guarde la hoja de cálculo como CSV UTF-8.")
            .arg(RenglonQueNoEs(octetos, codificacion)));
}

} // namespace csv
