#include "support/PruebaPantalla.h"

void PruebaPantalla::init()
{
    propio = std::make_unique<Escenario>();
    escenario = propio.get();
    intento = {};
    SembrarPlan(*escenario);
    pantalla = &escenario->Pantalla("0900");
}

void PruebaPantalla::cleanup()
{
    const QStringList sinEsperar = Mensajes();
    propio.reset();
    QCOMPARE(sinEsperar.join("\n"), "");
}

QStringList PruebaPantalla::Dichos() const
{
    QStringList dichos = Mensajes();
    dichos.removeIf([](const QString &dicho) { return (dicho.section('|', 0, 0).toInt() & 0xF) != 0; });
    return dichos;
}

void PruebaPantalla::Preparar(const QString &sentencias) const
{
    for (const QString &sentencia : sentencias.split(';', Qt::SkipEmptyParts))
        escenario->Correr(sentencia);
    QTest::keyClick(&Arbol(), Qt::Key_F5);
}

QString PruebaPantalla::Partes(const QString &columnas, const QString &condicion) const
{
    return escenario
        ->Filas("SELECT " + columnas + " FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND (" + condicion
                + ") ORDER BY Tep_ID")
        .join(' ');
}
