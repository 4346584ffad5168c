#include "support/PruebaPantalla.h"

#include <QClipboard>
#include <QLabel>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

// Hostile texts in the fields of every form: whatever is typed, nothing changes but the row that the form is for.
class PrAtaques : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void formas_data();
    void formas();

private:
    // Everything is as it was, but for rows that begin so, and the log of their change.
    void Revisar(const QString &texto, const QStringList &editadas = {});
    static void Pegar(QWidget *linea, const QString &texto, Qt::Key fin = Qt::Key_Tab);

    QStringList foto; // of the tables
};

namespace
{

// One text between bars or line's ends, "\u" before a character's number. Those who wrote them know the statements.
const char *const Renglones = R"(
'¦a''b¦'a¦a'''b'¦' ' ' ¦'; DROP TABLE Producto; --¦x'); DELETE FROM Producto; --¦x'; COMMIT; DROP TABLE Unidad; BEGIN; --
x' -- ¦x' /*¦*/ x' /* ¦x' # ¦-- ¦x' --\u000a, 'y¦x'/**/, 'y¦; DELETE FROM Tipo_Gasto
x', 'y¦x', 'o', 'f', 'o', 'f') --¦x', 'o', 'f', 'o', 'f'), ('0000', '9998', '0902', 'OTRA', 'o', 'f', 'o', 'f
x', 1, 'PZA', 1, 1), ('0902', '0001', '000009', '000009', '01', 'x¦x', 7, 'KG', 7, 'y'¦, '9001
x', Es_Cve_Estado = 'BA¦x', Te_Cve_Tipo_Equipo = '0902¦x', Tep_ID = '9998¦x', Tep_Descripcion = 'y
x' WHERE 'a' = 'a¦x' WHERE Tep_ID = '0001¦x' OR 'a' = 'a¦x' OR '1'='1¦000001' OR Pm_ID = '000002
000001' OR 'a'='a¦x' OR Pm_ID LIKE '%¦000001' AND Tep_ID <> '¦x' AND EXISTS (SELECT 1 FROM Unidad) AND 'a'='a
x'+(SELECT Te_Descripcion FROM Tipo_Equipo)+'¦x' UNION SELECT rolname, rolpassword FROM pg_authid WHERE 'a' = 'a
x' UNION SELECT name, sql FROM sqlite_master WHERE 'a' = 'a¦x' UNION SELECT 1, 2 INTO Copia FROM Producto WHERE 'a' = 'a
$$x$$¦$a$x$a$; DROP TABLE Unidad¦E'\'' OR 1=1¦x', E'\'¦x', U&'\0027', '¦\¦\'¦x\' OR 1=1¦a\¦%27¦&#39;¦<x y="'"/>
x’ OR ’1’=’1¦x＇ OR ＇1＇=＇1¦xʼ; DROP TABLE Unidad¦x" OR "1"="1¦\u000d\u000a'x¦a\u0009b¦x' {PARAMETROS} '¦{1}¦%¦_
?¦x ? y¦$1¦:a¦x', ?, '¦x' = ? OR '¦1e999¦NaN¦-1¦99999999999999999999¦1;2¦x', pg_sleep(9), '
x' AND pg_sleep(9) IS NULL AND 'a' = 'a¦x' AND lo_create(0) > 0 AND 'a' = 'a¦x' AND load_extension('x') = '
x' AND query_to_xml('DELETE FROM dbo.producto', true, true, '') IS NULL AND 'a' = 'a
x' AND pg_advisory_lock(580) IS NULL AND 'a' = 'a¦x' AND set_config('lock_timeout', '0', false) <> '
a\u0000b¦x\u0000' OR 'a'='a¦\u0001\u001b\u007f¦x\ud800¦\u202ex\u200f¦x\u2028'y¦x' || (SELECT 'y') || '¦x' || ? || '
)";

// Or one of each so many of them, others each time: the many fields whose texts go the same way share them.
QStringList Textos(int cada)
{
    static const QRegularExpression numero("\\\\u([0-9a-f]{4})");
    QStringList textos{QString(1 << 17, QLatin1Char('x')), QString(1 << 17, QLatin1Char('\''))};
    for (QString texto : QString(Renglones).split(QRegularExpression("[¦\n]"), Qt::SkipEmptyParts)) {
        for (auto hallado = numero.match(texto); hallado.hasMatch(); hallado = numero.match(texto))
            texto.replace(hallado.capturedStart(), 6, QChar(hallado.captured(1).toUShort(nullptr, 16)));
        textos.append(texto);
    }
    static int vez = 0;
    textos.removeIf([cada, i = vez++](const QString &) mutable { return i++ % cada != 0; });
    return textos;
}

} // namespace

void PrAtaques::Revisar(const QString &texto, const QStringList &editadas)
{
    QVERIFY2(!qvx::Sesion::Actual().Conexion().EnTransaccion(), qPrintable(texto.left(80)));
    const QSet<QString> antes(foto.begin(), foto.end());
    foto = escenario->Tablas();
    const QSet<QString> ahora(foto.begin(), foto.end());
    static const QRegularExpression registro("^(registro_cambio|operacion\\w*|historia_\\w+)\\|");
    for (const QString &fila : (antes - ahora) + (ahora - antes)) {
        const bool suya = std::any_of(editadas.begin(), editadas.end(), [&](const QString &comienzo) {
            return fila.startsWith(comienzo, Qt::CaseInsensitive);
        });
        QVERIFY2(suya || (!editadas.isEmpty() && registro.match(fila).hasMatch()),
                 qPrintable(texto.left(80) + " cambió " + fila.left(200)));
    }
}

// A real paste, which the box's own rules may refuse, and the box is left.
void PrAtaques::Pegar(QWidget *linea, const QString &texto, Qt::Key fin)
{
    auto &caja = dynamic_cast<QLineEdit &>(*linea);
    caja.setFocus();
    caja.selectAll();
    QTest::keyClick(&caja, Qt::Key_Delete);
    QGuiApplication::clipboard()->setText(texto);
    caja.paste();
    QTest::keyClick(&caja, fin);
    QCoreApplication::processEvents(); // a label's editor closes
}

void PrAtaques::formas_data()
{
    const Tabla<QString, QString, QString> fila("donde", "campo", "guardado"); // where: a button, a grid, or a box
    const QString parte = "Tep_Descripcion FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = ";
    const QString linea = " FROM Plan_Mantenimiento_Detalle WHERE Pm_ID = '000001' AND Pmd_Tipo = ";
    fila("parte nueva", "Nuevo", "txtTexto", parte + "'0007'");
    fila("clave nueva", "Nuevo", "txtClave", "");
    fila("parte editada", "Editar", "txtTexto", parte + "'0005'");
    for (const char *caja : {"txtTipoServicio", "txtUnidad", "txtDias", "txtTiempoParo", "txtPrecio"})
        fila(caja, "", caja, "");
    fila("mano de obra", "ssManoObra", "Producto", "Pr_Cve_Producto" + linea + "'01'");
    fila("cantidad", "ssRefacciones", "Cantidad", "");
    fila("gasto", "ssRefacciones", "Gasto", "Pmd_Tipo_Gasto" + linea + "'02'");
    fila("etiqueta", "tvPartes", "", "");
    fila("tipo de equipo", "txtTipoEquipo", "", "");
}

// Refused with a word, or stored as it was typed in the one row that it was typed for. A doubled quote is one. After
// all of it, the screen still saves.
void PrAtaques::formas()
{
    QFETCH(QString, donde);
    QFETCH(QString, campo);
    QFETCH(QString, guardado);
    const bool deParte = donde == "Nuevo" || donde == "Editar";
    for (const QString &texto : Textos(guardado.endsWith("'0007'") ? 1 : 3)) {
        foto = escenario->Tablas();
        QStringList editadas{"Plan_Mantenimiento|0900|0002|000001|", "Plan_Mantenimiento_Detalle|0900|0002|000001|"};
        QString escrito;
        bool guardada = false;
        bool avisada = false; // beside the field
        const auto llenar = [&](QWidget &forma) {
            if (donde.startsWith("ss")) {
                SSOleDBGrid &tabla = Grid(forma, donde);
                Fichas(forma).setTab(donde == "ssManoObra" ? 1 : 2);
                tabla.setFocus();
                tabla.setCurrentCell(0, tabla.IndiceColumna(campo));
                QTest::keyClick(&tabla, Qt::Key_F2);
                Pegar(QApplication::focusWidget(), texto);
                escrito = tabla.Celda(0, campo);
            } else {
                if (donde == "Nuevo")
                    Escribir(Caja(forma, "txtTexto"), "BRIDA");
                Pegar(Caja(forma, campo).findChild<QLineEdit *>(), texto);
                escrito = Caja(forma, campo).Text();
            }
            if (deParte)
                editadas = QStringList{"Tipo_Equipo_Parte|0900|" + Caja(forma, "txtClave").Text() + "|"};
            Aceptar(forma);
            guardada = !forma.isVisible();
            avisada = forma.findChild<QLabel *>("avisoCampo");
        };
        if (donde == "tvPartes") {
            ElegirNodo(Arbol(), "N0005");
            QTest::keyClick(&Arbol(), Qt::Key_F2);
            Pegar(QApplication::focusWidget(), texto, Qt::Key_Return);
            editadas = QStringList{"Tipo_Equipo_Parte|0900|0005|"};
            guardada = true;
        } else if (donde == "txtTipoEquipo") {
            Pegar(Tipo().findChild<QLineEdit *>(), texto);
            QCOMPARE(Arbol().Count(), 0);
            avisada = true;
        } else if (deParte) {
            EnLaParte("N0005", donde, llenar);
        } else {
            EnElServicio("N0002", "000001", llenar);
        }
        QVERIFY2(guardada || avisada || !Mensajes().isEmpty(), qPrintable(texto.left(80)));
        Mensajes();
        Revisar(texto, guardada ? editadas : QStringList());
        if (guardada && !guardado.isEmpty())
            QCOMPARE(escenario->Correr("SELECT " + guardado).toString(), escrito.replace("''", "'"));
        if (QTest::currentTestFailed())
            return;
        escenario->Correr("DELETE FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND (Tep_ID < '0001' OR "
                          "Tep_ID > '0006')");
    }
    ElegirTipo("900");
    QCOMPARE(GuardarParte("N0005", "Editar", "MOTOR NUEVO"), "0005");
    QCOMPARE(Partes("Tep_Descripcion", "Tep_ID = '0005'"), "MOTOR NUEVO");
}

PRUEBA(PrAtaques)
#include "pr_ataques.moc"
