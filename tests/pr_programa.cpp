#include "data/Conexion.h"
#include "support/DatosDePrueba.h"
#include "support/PruebaPantalla.h"

using qvx::Sesion;

// The year of an equipment type as it is kept, shown and written.
class PrPrograma : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void guardados();
    void averias_data();
    void averias();
    void guardadosEntretanto();

private:
    static qvx::Conexion &Base() { return Sesion::Actual().Conexion(); }
};

// What is kept of a type, and what stays when it cannot be.
void PrPrograma::guardados()
{
    QVERIFY(!qvx::LeerDatosDePrograma(Base(), "0900"));
    qvx::DatosDePrograma datos = DatosDe("2026-12-31 HR=8.5/1200 KM=40 d=5.5 n=7 lectura sado 2027-01-01 2027-05-05");
    datos.incluidos = {{"000001", "000002"}};
    datos.capacidad = {{1, 160.5}, {12, 80}};
    const auto guardar = [&] { qvx::GuardarDatosDePrograma(Base(), Sesion::Actual().Firmante(), datos); };
    guardar();
    auto leidos = qvx::LeerDatosDePrograma(Base(), "0900");
    QVERIFY(leidos && !leidos->sello.isEmpty());
    datos.sello = leidos->sello;
    QVERIFY(*leidos == datos);
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave, Rc_Oper FROM Registro_Cambio"),
             QStringList{"Programa_Tipo|0900|mlopez"});
    datos.usos.remove("KM");
    datos.festivos.removeFirst();
    datos.descanso = qvx::DatosDePrograma::Descanso::Ninguno;
    guardar();
    leidos = qvx::LeerDatosDePrograma(Base(), "0900");
    QVERIFY(leidos->sello != datos.sello);
    const QStringList antes = escenario->Tablas();
    QVERIFY(Rechazo(guardar).contains("mlopez los cambió el")); // on what was read before
    datos = *leidos;
    datos.usos["HR"].porDia = 30;
    QVERIFY(Rechazo(guardar).contains("de 0 a 24"));
    datos.usos.clear();
    for (const char *tipo : {"0903", "0999"}) {
        datos.tipoEquipo = tipo;
        datos.sello.clear();
        QVERIFY(Rechazo(guardar).contains("no existe o está dado de baja"));
    }
    QCOMPARE(escenario->Tablas(), antes);
    escenario->Correr("DELETE FROM Tipo_Equipo WHERE Te_Cve_Tipo_Equipo = '0900'");
    QCOMPARE(escenario->Filas("SELECT * FROM Programa_Uso"), QStringList());
    QVERIFY(!qvx::LeerDatosDePrograma(Base(), "0900"));
}

void PrPrograma::averias_data()
{
    const Tabla<QString> fila("averia");
    for (const char *averia : {"INSERT ON Programa_Capacidad", "INSERT ON Registro_Cambio", "ocupada"})
        fila(averia, averia);
}

void PrPrograma::averias()
{
    QFETCH(const QString, averia);
    qvx::DatosDePrograma datos = DatosDe("2026-12-31 HR=8");
    datos.capacidad = {{1, 160}};
    const auto guardar = [&] { qvx::GuardarDatosDePrograma(Base(), Sesion::Actual().Firmante(), datos); };
    const QStringList antes = escenario->Tablas();
    Averia mala(*escenario, averia);
    QVERIFY(!Rechazo(guardar).isEmpty());
    mala.Reparar();
    QCOMPARE(escenario->Tablas(), antes);
    guardar();
    QCOMPARE(qvx::LeerDatosDePrograma(Base(), "0900")->capacidad, datos.capacidad);
}

// Two who begin with nothing kept: the second is told.
void PrPrograma::guardadosEntretanto()
{
    const qvx::DatosDePrograma datos = DatosDe("2026-12-31");
    escenario->Correr("INSERT INTO Programa_Tipo (Te_Cve_Tipo_Equipo, Pt_Dia_Cero, Oper_Ult_Modif, Fecha_Ult_Modif) "
                      "VALUES ('0900', '2025-12-31', 'otra', '2026-01-02 03:04:05')");
    QVERIFY(Rechazo([&] {
                qvx::GuardarDatosDePrograma(Base(), Sesion::Actual().Firmante(), datos);
            }).contains("otra los cambió el 2026-01-02 03:04:05"));
}

PRUEBA_MAIN(PrPrograma)
#include "pr_programa.moc"
