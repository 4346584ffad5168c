#pragma once

#include "component/Publico.h"
#include "controls/Formulario.h"

#include <QPointer>

// What the component's three forms have alike: the host's parent object, and the ways to speak to the person.
class FormularioConPadre : public qvx::Formulario
{
    Q_OBJECT
    Q_PROPERTY(QObject *Padre READ Padre WRITE setPadre)
    Q_PROPERTY(QString Transaccion READ Transaccion)

public:
    using qvx::Formulario::Formulario;

    // The host's parent object; any QObject. The host keeps it alive; a gone parent reads as none.
    QObject *Padre() const { return padre; }
    // The application's name and the parent's "Transaccion" as one text. For the host: nothing in the component reads
    // it. Raises ObjetoNoEstablecido without a parent.
    QString Transaccion() const;
    void setPadre(QObject *nuevo) { padre = nuevo; }

    // A property of the parent by name. Raises ObjetoNoEstablecido without a parent.
    QString TextoDelPadre(const char *propiedad) const;

    // Messages of this form; identificador is the number after "ERR-ID:". Advertir warns (style 48, title "Quorvex"),
    // Preguntar asks with the style given and gives the answer's number. They raise FormularioIdo when the form was
    // closed or destroyed before the answer.
    int Mensaje(const QString &texto, int estilo, const QString &titulo, int identificador);
    void Advertir(const QString &texto, int identificador);
    int Preguntar(const QString &texto, int estilo, int identificador);

private:
    QPointer<QObject> padre;
    Publico::Vivo vivo;
};
