#include "servidor/Controlador.h"

#include "servidor/Resultado.h"

namespace qvx
{

void ControladorPq::Disponer(const Servidor::Opciones &opciones, const Servidor::Opciones &ajustes_)
{
    enlace.PonerOpciones(opciones);
    ajustes = ajustes_;
}

bool ControladorPq::Entrar()
{
    QString deSesion;
    for (const auto &[nombre, valor] : ajustes)
        deSesion += "-c " + nombre + '=' + valor + ' ';
    return enlace.Abrir(deSesion) && enlace.RevisarMediador(deSesion);
}

bool ControladorPq::open(const QString & /*base*/, const QString & /*usuario*/, const QString & /*contrasena*/,
                         const QString & /*equipo*/, int /*puerto*/, const QString & /*otras*/)
{
    const bool estaba = enlace.EstaAbierto();
    if (estaba)
        PonerAjustes();
    const bool abierto = estaba || Entrar();
    if (!abierto) {
        setLastError(ErrorDe(enlace, QSqlError::ConnectionError));
        enlace.Cerrar();
    }
    setOpen(abierto);
    setOpenError(!abierto);
    return abierto;
}

// Of a connection that was signed in before they were known.
void ControladorPq::PonerAjustes()
{
    QStringList todos;
    for (const auto &[nombre, valor] : std::as_const(ajustes))
        todos.append(QString("set_config('%1', '%2', false)").arg(nombre, valor));
    if (!todos.isEmpty())
        enlace.Anteponer("SELECT " + todos.join(", ").toUtf8());
}

void ControladorPq::close()
{
    enlace.Cerrar();
    setOpen(false);
    setOpenError(false);
}

bool ControladorPq::hasFeature(DriverFeature rasgo) const
{
    return rasgo == Transactions || rasgo == QuerySize || rasgo == BLOB || rasgo == Unicode || rasgo == PreparedQueries
           || rasgo == PositionalPlaceholders;
}

QSqlResult *ControladorPq::createResult() const
{
    return new ResultadoPq(*this);
}

QSqlError ErrorDe(const Enlace &enlace, QSqlError::ErrorType tipo)
{
    const auto &fallo = enlace.UltimoFallo();
    return {{}, fallo.texto, tipo, fallo.codigo};
}

} // namespace qvx
