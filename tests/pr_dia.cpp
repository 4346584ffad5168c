// Two working days at the screen: every command of it, and what it refuses. The statements, with the host's own
// look-ups and the transactions' marks, stay what they are, letter for letter, and so do the messages, the documents,
// what forms and screen show, and what each command leaves in the plan's tables.

#include "support/Archivos.h"
#include "support/PruebaPantalla.h"

#include <QCheckBox>
#include <QRegularExpression>

using comunesQVX::Nodo;

namespace
{

// Each engine begins, says its errors, and has the stored query in words of its own.
QString SinMotor(QString renglon)
{
    static const QRegularExpression error(
        "(75000(?:23|97)\\||  <)(near|UNIQUE|duplicate|.*\\bsyntax\\b|unterminated).*?(>?)$");
    renglon.replace(error, "\\1…\\3").replace("BEGIN IMMEDIATE", "BEGIN");
    const auto inicio = renglon.indexOf("SELECT Plan_Mantenimiento.Pm_ID AS Folio");
    const auto filtro = renglon.indexOf(" Plan_Mantenimiento.Te_Cve_Tipo_Equipo = '");
    return inicio < 0 ? renglon : renglon.replace(inicio, filtro - inicio, "PLAN_MANTENIMIENTO");
}

// Each node with its depth in dots and its picture's number.
QString Dibujo(const Nodo *nodo, int hondo = 0)
{
    if (!nodo)
        return {};
    QString dibujo = QString(hondo, '.') + nodo->Text() + " " + QString::number(nodo->Image());
    for (int i = 0; i < nodo->childCount(); ++i)
        dibujo += " / " + Dibujo(static_cast<const Nodo *>(nodo->child(i)), hondo + 1);
    return dibujo;
}

} // namespace

class PruebaDia : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void primero();
    void segundo();

private:
    void Entrar();
    void Tomar(const QString &que);
    void Hacer(const QList<QPair<QString, std::function<void()>>> &comandos);
    void TomarForma(const QWidget &forma);
    QByteArray TomarDocumento();
    void Comparar(const QString &nombre);
    void Rotulos();
    void Estados();
    void Ediciones();
    void Bajas();

    QStringList cuaderno;
    QStringList filas;
    QString vista;
};

void PruebaDia::Entrar()
{
    filas = escenario->Plan();
    vista.clear();
    Tomar("entrada");
}

// What was said, run and written since the last time, and what the screen shows when it is another than before.
void PruebaDia::Tomar(const QString &que)
{
    cuaderno.append("== " + que);
    for (const QString &mensaje : Mensajes())
        cuaderno.append("? " + SinMotor(QString(mensaje).replace(escenario->Ruta(""), "").replace("\r\n", "\\n")));
    for (const QString &renglon : escenario->Traza(true))
        cuaderno.append(SinMotor(renglon));
    const QStringList antes = std::exchange(filas, escenario->Plan());
    for (const QString &fila : antes)
        if (!filas.contains(fila))
            cuaderno.append("< " + QString(fila).replace('\n', "\\n"));
    for (const QString &fila : std::as_const(filas))
        if (!antes.contains(fila))
            cuaderno.append("> " + QString(fila).replace('\n', "\\n"));
    if (escenario->HayPantalla()) {
        const Nodo *elegido = Arbol().SelectedItem();
        QStringList partes{"| " + Tipo().Text() + " " + escenario->De<txtQVX>("txtNTipoEquipo").Text(), Barras(),
                           Dibujo(Arbol().Primero()), elegido ? elegido->Key() : QString()};
        for (int fila = 0; fila < Lista().Count(); ++fila) {
            QStringList celdas;
            for (int i = 0; i < Lista().columnCount(); ++i)
                celdas.append(Lista().Texto(fila, i).replace('\n', "\\n"));
            partes.append(celdas.join('|'));
        }
        if (const QString ahora = partes.join("\n| "); std::exchange(vista, ahora) != ahora)
            cuaderno.append(ahora.split('\n'));
    }
    escenario->ahora = escenario->ahora.addSecs(61);
}

void PruebaDia::Hacer(const QList<QPair<QString, std::function<void()>>> &comandos)
{
    for (const auto &[que, comando] : comandos) {
        comando();
        Tomar(que);
    }
}

// The boxes of a form by their names, a dash behind those that nobody can type in, and the lines of its grids.
void PruebaDia::TomarForma(const QWidget &forma)
{
    QStringList textos;
    for (const txtQVX *caja : forma.findChildren<txtQVX *>())
        textos.append(caja->objectName() + (caja->isEnabled() && !caja->SoloLectura() ? "=" : "-=") + caja->Text());
    for (const QCheckBox *casilla : forma.findChildren<QCheckBox *>())
        textos.append(casilla->objectName() + (casilla->isChecked() ? "=x" : "="));
    textos.sort();
    cuaderno.append("# " + textos.join(' '));
    for (const char *nombre : {"ssManoObra", "ssRefacciones", "ssHerramientas"})
        if (const auto *grid = forma.findChild<SSOleDBGrid *>(nombre))
            for (int fila = 0; fila < grid->Rows(); ++fila)
                cuaderno.append(QString("# ") + nombre + ": " + Fila(*grid, fila));
}

QByteArray PruebaDia::TomarDocumento()
{
    const QByteArray texto = Contenido(escenario->Ruta("plan.xml"));
    cuaderno.append(QString::fromUtf8(texto).split('\n', Qt::SkipEmptyParts));
    return texto;
}

// With what is on record. QVX_PRUEBA_ANOTAR writes the record anew.
void PruebaDia::Comparar(const QString &nombre)
{
    escenario->CerrarPantalla();
    Tomar("salida");
    const QString meta = QString(CARPETA_DATOS) + "/" + nombre;
    const QStringList hoy = std::exchange(cuaderno, {}).join('\n').split('\n', Qt::SkipEmptyParts);
    if (qEnvironmentVariableIsSet("QVX_PRUEBA_ANOTAR"))
        Poner(meta, (hoy.join('\n') + '\n').toUtf8());
    const QStringList esperado = QString::fromUtf8(Contenido(meta)).split('\n', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < qMax(esperado.size(), hoy.size()); ++i)
        QCOMPARE(QString::number(i + 1) + ": " + hoy.value(i), QString::number(i + 1) + ": " + esperado.value(i));
}

void PruebaDia::primero()
{
    Entrar();
    Hacer({
        {"parte nueva", [&] { GuardarParte("N0005", "Nuevo", "FLECHA"); }},
        {"parte bajo la nueva", [&] { GuardarParte("N0007", "Nuevo", "CUÑA"); }},
        {"parte sin descripción", [&] { GuardarParte("N0000", "Nuevo", ""); }},
        {"parte con apóstrofo", [&] { GuardarParte("N0005", "Nuevo", "D'ARCY"); }},
        {"parte cambiada", [&] { GuardarParte("N0007", "Editar", "FLECHA MOTRIZ"); }},
        {"rótulo", [&] { Rotular("N0008", "0008 - cuña plana"); }},
        {"información", [&] { Mandar("N0001", "Info"); }},
        {"baja", [&] { Mandar("N0001", "Eliminar"); }},
        {"reactivación con la superior", [&] { Mandar("N0002", "Reactivar", 7500045, qvx::mensaje::Aceptar); }},
        {"reactivación", [&] { Mandar("N0003", "Reactivar"); }},
        {"eliminación rechazada", [&] { Mandar("N0008", "B1", 7500047, qvx::mensaje::No); }},
        {"eliminación con la inferior", [&] { Mandar("N0007", "B1", 7500046); }},
        {"eliminación de una parte con servicios", [&] { Mandar("N0002", "B1"); }},
        {"servicio nuevo", [&] { NuevoServicio("N0002", "1234.5678"); }},
        {"servicio cambiado", [&] { CambiarServicio("N0002", "000004", "99.95"); }},
        {"otro servicio cambiado", [&] { CambiarServicio("N0002", "000001", "750"); }},
        {"importación cancelada", [&] { Importar(""); }},
        {"arrastre", [&] { Mover("N0002", "000004", "N0005"); }},
        {"arrastre a la raíz", [&] { Mover("N0002", "000002", "N0000"); }},
        {"arrastre de nada", [&] { Mover("N0005", "999999", "N0001"); }},
        {"servicio eliminado", [&] { EliminarServicio("N0005", "000004"); }},
        {"exportación", [&] { Exportar(escenario->Ruta("plan.xml")); }},
    });
    const QByteArray plan = TomarDocumento();
    Hacer({
        {"copia", [&] { Copiar("0901"); }},
        {"importación",
         [&] {
             Importar(Poner(escenario->Ruta("cambiado.xml"),
                            QByteArray(plan).replace("9000000004", "9999999999").replace("\"0900\"", "\"0901\"")));
         }},
        {"copia a sí mismo", [&] { Copiar("0901"); }},
        {"otro tipo", [&] { ElegirTipo("0902"); }},
        {"tipo desconocido", [&] { ElegirTipo("7"); }},
    });
    Comparar("dia.txt");
}

void PruebaDia::Rotulos()
{
    EnLaParte("N0004", "Nuevo", [&](QWidget &forma) {
        TomarForma(forma);
        Escribir(Caja(forma, "txtTexto"), "NADA");
        QTest::keyClick(&forma, Qt::Key_Escape);
        QVERIFY(!forma.isVisible());
    });
    Tomar("parte abandonada");
    EnLaParte("N0000", "Nuevo", [&](QWidget &forma) {
        for (const auto &[clave, texto] : {qMakePair("", "BRIDA"), {"9", ""}, {"0", "BRIDA"}, {"2", "BRIDA"}}) {
            Escribir(Caja(forma, "txtClave"), clave);
            Escribir(Caja(forma, "txtTexto"), texto);
            Aceptar(forma);
            TomarForma(forma);
            Tomar("parte rechazada");
        }
        Escribir(Caja(forma, "txtClave"), "9");
        QTest::keyClick(&forma, Qt::Key_F4);
    });
    Tomar("parte corregida");
    EnLaParte("N0001", "Editar", [&](QWidget &forma) { // another type has one of this key too
        Escribir(Caja(forma, "txtClave"), "99");       // locked
        Escribir(Caja(forma, "txtTexto"), "Cuerpo - A");
        TomarForma(forma);
        Aceptar(forma);
    });
    Tomar("parte con la clave de otra");
    Rotular("N0002", "");
    Tomar("rótulo vacío");
    Rotular("N0002", "0002 - Motor-Eléctrico"); // the hyphens are lost
    Tomar("rótulo con guiones");
}

// Cancel spares the parent only; of the retired parents, only the next one comes back too. Right under the root, and
// under an active part, nothing is asked.
void PruebaDia::Estados()
{
    Hacer({
        {"baja de la rama", [&] { Mandar("N0001", "Eliminar"); }},
        {"reactivación sin la superior", [&] { Mandar("N0003", "Reactivar", 7500045, qvx::mensaje::Cancelar); }},
        {"baja de lo reactivado", [&] { Mandar("N0003", "Eliminar"); }},
        {"reactivación con una de las superiores",
         [&] { Mandar("N0004", "Reactivar", 7500045, qvx::mensaje::Aceptar); }},
        {"reactivación de la rama", [&] { Mandar("N0001", "Reactivar"); }},
    });
}

// A line is taken out, another put in its place: the lines are written anew.
void PruebaDia::Ediciones()
{
    EnElServicio("N0002", "000001", [&](QWidget &editor) {
        TomarForma(editor);
        for (const char *precio : {"400", "0", "750.25"}) {
            Escribir(Caja(editor, "txtPrecio"), precio);
            Fichas(editor).setTab(3);
            TomarForma(editor);
        }
        Escribir(Caja(editor, "txtDias"), "");
        Escribir(Caja(editor, "txtLectura"), "1250.5");
        Escribir(Caja(editor, "txtUnidad"), "HRS");
        Grid(editor, "ssRefacciones").RemoveAll();
        Fichas(editor).setTab(1);
        EscribirCelda(Grid(editor, "ssManoObra"), 0, "Cantidad", "1");
        Aceptar(editor);
    });
    Tomar("servicio con otras líneas");
    EnElServicio("N0002", {}, [&](QWidget &editor) {
        LlenarServicio(editor);
        EscribirCelda(Grid(editor, "ssHerramientas"), 1, "Cantidad", "7"); // no line: no description
        En<QCheckBox>(editor, "chkRequiereParo").setChecked(true);
        En<QCheckBox>(editor, "chkRequiereParo").setChecked(false); // and with it the downtime
        TomarForma(editor);
        QTest::keyClick(&editor, Qt::Key_F4);
    });
    Tomar("servicio sin paro");
}

// Until 0001 has no child left; another type has a part of this key too, with a service.
void PruebaDia::Bajas()
{
    Mandar("N0004", "B1", 7500047);
    Tomar("eliminación de la hoja");
    EliminarServicio("N0003", "000003", qvx::mensaje::No);
    Tomar("servicio que se queda");
    for (const auto &[nodo, folio] :
         {qMakePair("N0003", "000003"), {"N0002", "000001"}, {"N0002", "000002"}, {"N0002", "000004"}})
        EliminarServicio(nodo, folio);
    Tomar("servicios eliminados");
    Mandar("N0003", "B1", 7500047);
    Mandar("N0002", "B1", 7500047);
    Tomar("eliminación de la última inferior");
    Mandar("N0001", "B1", 7500047);
    Tomar("eliminación de la parte con la clave de otra");
}

void PruebaDia::segundo()
{
    Entrar();
    Rotulos();
    Estados();
    Ediciones();
    escenario->Correr("UPDATE Plan_Mantenimiento SET Pm_Unidad_Lectura = ' \"<&>' || " + motor::Segun("char", "chr")
                      + "(10) || 'ñ€' WHERE Pm_ID = "
                        "'000003'");
    Exportar(escenario->Ruta("plan.xml"));
    Tomar("exportación con signos");
    TomarDocumento();
    Hacer({
        {"copia rechazada", [&] { Copiar("0902", qvx::mensaje::No); }},
        {"copia cancelada", [&] { Copiar(""); }},
        {"copia sobre un plan", [&] { Copiar("0902"); }},
    });
    ElegirTipo("0901"); // its root alone offers nothing
    escenario->Personas().Elegir("TIPO_EQUIPO", "0902");
    escenario->Personas().Responder(7500049, qvx::mensaje::Si);
    Pulsar(Barra(), "B3");
    Tomar("copia de nada");
    ElegirTipo("0900");
    Tomar("de vuelta");
    const QByteArray servicio = R"(<TipoServicio Id="9001" UnidadLectura="HRS" FrecuenciaLectura="1250.50"
        FrecuenciaDias="030" RequiereParo="{}" Duracion="2.5" Precio="500" Prioridad="9001">)";
    const QByteArray lineas =
        R"(<ManoObra><Servicio Id="9000000001" Cantidad="2"/><Servicio Id="P1" Cantidad="2"/></ManoObra>
        <Refacciones><Refaccion Id="9000000002" Cantidad="3" TipoGasto="9001"/></Refacciones>
        <Herramientas><Herramienta Id="9000000003" Cantidad="1"/><Herramienta Id="P2" Cantidad="1"/></Herramientas>)";
    const QByteArray documento = "<?xml version='1.0'?><PlanMantenimiento><TipoEquipo Id=\"0902\">"
                                 + QByteArray(servicio).replace("{}", "NO")
                                 + "<ManoObra/><Refacciones/><Herramientas/></TipoServicio><!-- a note --><Parte "
                                   "Id=\"0001\" Descripción=\"EJE\">"
                                 + QByteArray(servicio).replace("{}", "SI") + lineas
                                 + "</TipoServicio><Parte Id=\"X\" Descripción=\"\"/></Parte></TipoEquipo>"
                                   "</PlanMantenimiento>";
    const QString ruta = Poner(escenario->Ruta("cambiado.xml"), documento);
    Hacer({
        {"importación rechazada", [&] { Importar(ruta, qvx::mensaje::No); }},
        {"importación con productos desconocidos", [&] { Importar(ruta); }},
        {"importación que falla", [&] { Importar(Poner(ruta, QByteArray(documento).replace("\"X\"", "\"0001\""))); }},
    });
    ElegirTipo("0900");
    Bajas();
    Comparar("segundo_dia.txt");
}

PRUEBA(PruebaDia)
#include "pr_dia.moc"
