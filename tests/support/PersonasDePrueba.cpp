#include "support/PersonasDePrueba.h"

#include "data/Conexion.h"
#include "session/Sesion.h"

#include <QTest>

int PersonasDePrueba::Mensaje(const qvx::Aviso &aviso)
{
    avisos.append(
        QString("%1|%2|%3|%4|%5")
            .arg(QString::number(aviso.estilo), aviso.titulo, aviso.modulo, aviso.identificador, aviso.texto));
    detalles.append(aviso.detalles);
    if (real)
        return real->Mensaje(aviso);
    // A failed import is taken back before anybody reads of it.
    if (aviso.identificador == "ERR-ID:7500023" && qvx::Sesion::Actual().Conexion().EnTransaccion())
        QTest::qFail(qPrintable("La transacción sigue abierta: " + avisos.constLast()), __FILE__, __LINE__);
    if ((aviso.estilo & 0xF) == 0)
        return qvx::mensaje::Aceptar;
    if (respuestas.isEmpty() || respuestas.constFirst().identificador != aviso.identificador) {
        QTest::qFail(qPrintable("Pregunta imprevista: " + avisos.constLast()), __FILE__, __LINE__);
        return qvx::mensaje::Cancelar;
    }
    const Respuesta respuesta = respuestas.takeFirst();
    if (respuesta.antes)
        respuesta.antes();
    return respuesta.boton;
}

QString PersonasDePrueba::BuscarEnCatalogo(const QString &catalogo, int maximo, const QString &filtro,
                                           const QFont &fuente, QWidget *duena)
{
    if (real)
        return real->BuscarEnCatalogo(catalogo, maximo, filtro, fuente, duena);
    if (elecciones.isEmpty() || elecciones.constFirst().first != catalogo) {
        QTest::qFail(qPrintable(QString("Búsqueda imprevista: %1 %2").arg(catalogo).arg(maximo)), __FILE__, __LINE__);
        return {};
    }
    return elecciones.takeFirst().second;
}

QString PersonasDePrueba::ElegirArchivo(const qvx::PeticionArchivo &peticion, QWidget *duena)
{
    if (real)
        return real->ElegirArchivo(peticion, duena);
    if (archivos.isEmpty()) {
        QTest::qFail(qPrintable("Diálogo imprevisto: " + peticion.titulo), __FILE__, __LINE__);
        return {};
    }
    return archivos.takeFirst();
}

void PersonasDePrueba::InformacionRegistro(const QList<QPair<QString, QString>> &datos, QWidget *duena)
{
    if (real)
        real->InformacionRegistro(datos, duena);
}

void PersonasDePrueba::Responder(int identificador, int respuesta, const std::function<void()> &antes)
{
    respuestas.append({"ERR-ID:" + QString::number(identificador), respuesta, antes});
}

void PersonasDePrueba::Elegir(const QString &catalogo, const QString &clave)
{
    elecciones.append({catalogo, clave});
}

QStringList PersonasDePrueba::Tomar()
{
    detalles.clear();
    return std::exchange(avisos, {});
}

void PersonasDePrueba::Descartar()
{
    respuestas.clear();
    elecciones.clear();
    archivos.clear();
}

void PersonasDePrueba::Revisar() const
{
    QVERIFY2(respuestas.isEmpty(), "Una respuesta quedó sin pregunta");
    QVERIFY2(elecciones.isEmpty(), "Una elección quedó sin búsqueda");
    QVERIFY2(archivos.isEmpty(), "Un archivo quedó sin diálogo");
}
