#include "bench/Taller.h"

#include "app/Componente.h"
#include "app/VentanaPrincipal.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "session/Sesion.h"

#include <QAction>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>

int Respuestas::Mensaje(const qvx::Aviso &aviso)
{
    if ((aviso.estilo & 0xF0) != qvx::mensaje::Informacion && (aviso.estilo & 0xF) == 0)
        qFatal("%s %s", qPrintable(aviso.identificador), qPrintable(aviso.texto));
    return qvx::mensaje::Si;
}

QString Respuestas::BuscarEnCatalogo(const QString & /*catalogo*/, int /*maximo*/, const QString & /*filtro*/,
                                     const QFont & /*fuente*/, QWidget * /*duena*/)
{
    return clave;
}

QString Respuestas::ElegirArchivo(const qvx::PeticionArchivo & /*peticion*/, QWidget * /*duena*/)
{
    return archivo;
}

void Respuestas::InformacionRegistro(const QList<QPair<QString, QString>> & /*datos*/, QWidget * /*duena*/) {}

Taller::Taller(const Base &base, bool conTraza) : respuestas(new Respuestas), enServidor(base.EnServidor())
{
    qputenv("QVX_TRAZA", conTraza ? QFile::encodeName(carpeta.filePath("traza")) : QByteArray());
    sesion = std::make_unique<qvx::Sesion>(base.Abrir(), "banco", std::unique_ptr<qvx::Interaccion>(respuestas));
    ventana = std::make_unique<VentanaPrincipal>(CrearPantalla(), QString(), sesion->Operador(), "banco");
    ventana->show();
    Asentar();
}

Taller::~Taller()
{
    ventana->close();
    ventana.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Taller::Elegir(const QString &tipoEquipo) const
{
    De<textoQVX::txtQVX>("txtTipoEquipo").Elegir(tipoEquipo);
    Asentar();
}

void Taller::ElegirNodo(const QString &clave) const
{
    auto &arbol = De<comunesQVX::TreeView>("tvPartes");
    comunesQVX::Nodo *nodo = arbol.Item(clave);
    arbol.EnsureVisible(nodo);
    arbol.setSelectedItem(nodo);
    Q_EMIT arbol.NodeClick(nodo);
}

void Taller::Pulsar(const QString &boton) const
{
    auto &accion = De<QAction>(boton);
    if (!accion.isEnabled())
        qFatal("No se ofrece %s", qPrintable(boton));
    EnUnEvento([&] { accion.trigger(); });
}

void Taller::EnUnEvento(const std::function<void()> &pasos)
{
    QMetaObject::invokeMethod(qApp, pasos, Qt::QueuedConnection);
    QCoreApplication::sendPostedEvents(qApp, QEvent::MetaCall);
}

void Taller::Pintar(QWidget &ventana)
{
    QCoreApplication::processEvents();
    ventana.repaint();
}

void Taller::Asentar()
{
    constexpr int Calma = 30; // milliseconds
    for (const QDeadlineTimer hasta(Calma); !hasta.hasExpired();)
        QCoreApplication::processEvents(QEventLoop::AllEvents, Calma);
}

std::vector<QByteArray> Taller::Textos()
{
    QFile traza(carpeta.filePath("traza"));
    if (!traza.open(QIODevice::ReadOnly) || !traza.seek(leido))
        qFatal("Sin traza");
    const auto dialecto = enServidor ? qvx::DialectoPostgres() : qvx::DialectoSqlite();
    std::vector<QByteArray> textos;
    while (!traza.atEnd()) {
        QString texto = QString::fromUtf8(traza.readLine()).section(QLatin1Char('\t'), 1);
        texto.chop(1);
        textos.push_back(dialecto->Reescribir(texto.replace("\\n", "\n").replace("\\r", "\r")).toUtf8());
    }
    leido = traza.pos();
    return textos;
}
