#include "component/Publico.h"

#include <mutex>

namespace Publico
{

std::unique_ptr<qvx::Sistema> Sistema;
std::unique_ptr<qvx::Utilerias> Utilerias;
QString strSQL;
std::atomic<int> Vivo::cuantos = 0;

void Main()
{
    static std::once_flag hecho;
    std::call_once(hecho, [] {
        Sistema = std::make_unique<qvx::Sistema>();
        Utilerias = std::make_unique<qvx::Utilerias>();
    });
}

QString Mascara(const QString &codigo, const QString &predeterminada)
{
    return Sistema->FormatoClave(codigo, "", "T", predeterminada);
}

QString Identificador(int numero)
{
    return "ERR-ID:" + QString::number(numero);
}

} // namespace Publico
