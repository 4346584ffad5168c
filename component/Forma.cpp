#include "component/Forma.h"

#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"

QString Forma::TextoDelPadre(const char *propiedad) const
{
    if (!padre)
        throw qvx::ErrorEjecucion(qvx::errores::ObjetoNoEstablecido, "La pantalla no tiene un objeto padre");
    return padre->property(propiedad).toString();
}

QString Forma::Transaccion() const
{
    return Publico::Utilerias->TextoTransaccion("Quorvex", TextoDelPadre("Transaccion"));
}

int Forma::Mensaje(const QString &texto, int estilo, const QString &titulo, int identificador)
{
    return Publico::Sistema->Mensaje(texto, estilo, titulo, hWnd(), "KT580", Publico::Identificador(identificador));
}

void Forma::Advertir(const QString &texto, int identificador)
{
    Mensaje(texto, qvx::mensaje::Exclamacion, "Quorvex", identificador);
}

int Forma::Preguntar(const QString &texto, int estilo, int identificador)
{
    return Mensaje(texto, estilo, "Quorvex", identificador);
}
