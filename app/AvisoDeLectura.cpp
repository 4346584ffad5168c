#include "app/AvisoDeLectura.h"

#include "app/Textos.h"
#include "app/Trampas.h"

#include <QPointer>

AvisoDeLectura::AvisoDeLectura(const QString &nombre)
{
    setObjectName(nombre);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    hide();
}

void AvisoDeLectura::Intentar(int identificador, const std::function<void()> &leer)
{
    const QPointer<AvisoDeLectura> vivo(this);
    bool hecho = false;
    ConTrampa(*this, identificador, [&] {
        leer();
        hecho = true;
    });
    if (!vivo)
        return;
    if (hecho)
        leida = QTime::currentTime();
    setText(leida.isValid() ? NoEsActual(leida) : "No se pudo leer. Pulse F5 para intentarlo de nuevo.");
    setVisible(!hecho);
}
