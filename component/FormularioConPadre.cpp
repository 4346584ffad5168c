#include "component/FormularioConPadre.h"

#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"

QString FormularioConPadre::TextoDelPadre(const char *propiedad) const
{
    if (!padre)
        throw qvx::ErrorEjecucion(qvx::errores::ObjetoNoEstablecido, "La pantalla no tiene un objeto padre");
    return padre->property(propiedad).toString();
}

QString FormularioConPadre::Transaccion() const
{
    return Publico::Utilerias->TextoTransaccion("Quorvex", TextoDelPadre("Transaccion"));
}

int FormularioConPadre::Mensaje(const QString &texto, int estilo, const QString &titulo, int identificador)
{
    const qvx::Vigia vigia(*this);
    const int respuesta =
        Publico::Sistema->Mensaje(texto, estilo, titulo, hWnd(), "KT580", Publico::Identificador(identificador));
    vigia.Revisar();
    return respuesta;
}

void FormularioConPadre::Advertir(const QString &texto, int identificador)
{
    Mensaje(texto, qvx::mensaje::Exclamacion, "Quorvex", identificador);
}

int FormularioConPadre::Preguntar(const QString &texto, int estilo, int identificador)
{
    return Mensaje(texto, estilo, "Quorvex", identificador);
}
