// A pooler between the program and the server.

#include "servidor/Enlace.h"

#include <QRegularExpression>

namespace qvx
{

namespace
{

// Seconds for a second session, which a full pooler does not give.
const QString PocaEspera = "3";

Servidor::Opciones ConPocaEspera(Servidor::Opciones opciones)
{
    opciones.removeIf([](const auto &opcion) { return opcion.first == "connect_timeout"; });
    return opciones + Servidor::Opciones{{"connect_timeout", PocaEspera}, {Servidor::Espera, PocaEspera}};
}

QString Entrecomillado(QString texto)
{
    return '\'' + texto.replace("'", "''") + '\'';
}

} // namespace

// As "-c NAME=VALUE", where a backslash keeps the character after it.
void Enlace::PonerEnSesion(const QString &ajustes)
{
    static const QRegularExpression ajuste(R"(-c\s*([\w.]+)=((?:\\.|[^\s\\])*))");
    static const QRegularExpression guardado(R"(\\(.))");
    QStringList todos;
    for (auto hallado = ajuste.globalMatch(Opcion("options") + ' ' + ajustes); hallado.hasNext();) {
        const auto uno = hallado.next();
        todos.append("set_config(" + Entrecomillado(uno.captured(1)) + ", "
                     + Entrecomillado(uno.captured(2).replace(guardado, "\\1")) + ", false)");
    }
    Anteponer("SELECT " + todos.join(", ").toUtf8());
}

// 0 where it cannot be asked.
int Enlace::Proceso()
{
    const Respuesta respuesta = Correr("SELECT pg_backend_pid()");
    return respuesta ? QByteArray(PQgetvalue(respuesta.get(), 0, 0)).toInt() : 0;
}

// A pooler says a number of its own when it signs somebody in. One that gives a session to others between two
// transactions gives it to a second session, or another one to this.
bool Enlace::RevisarMediador(const QString &deSesion)
{
    const int proceso = Proceso();
    if (proceso == 0 || proceso == PQbackendPID(pq))
        return proceso != 0;
    if (!std::exchange(sinOpciones, true)) // they may have been left out in silence
        PonerEnSesion(deSesion);
    Enlace otro(ConPocaEspera(opciones));
    otro.sinOpciones = true;
    if (!otro.Abrir(deSesion) || !otro.Correr("BEGIN"))
        return true;
    const int suyo = otro.Proceso();
    const int ahora = Proceso();
    if (ahora != 0 && (suyo == proceso || ahora != proceso)) {
        Cerrar();
        fallo = {"Entre el programa y el servidor hay un repartidor de conexiones que cambia de sesión con cada "
                 "transacción. Quorvex necesita la suya de principio a fin: pida a quien lo administra que reparta por "
                 "sesión (pool_mode = session), o la dirección del servidor mismo.",
                 {}};
    }
    return EstaAbierto();
}

bool Enlace::SoloLee() const
{
    const auto dice = [&](const char *ajuste) { return qstrcmp(PQparameterStatus(pq, ajuste), "on") == 0; };
    return Opcion("options").contains("default_transaction_read_only=on") || dice("in_hot_standby")
           || dice("default_transaction_read_only");
}

} // namespace qvx
