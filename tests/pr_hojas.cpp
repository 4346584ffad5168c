#include "app/catalogos/DialogoImportarCatalogo.h"
#include "app/catalogos/ExportacionDeCatalogo.h"
#include "app/reportes/Csv.h"
#include "app/reportes/LibroXlsx.h"
#include "app/reportes/TextoDeArchivo.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "support/Cluster.h"
#include "support/Procesos.h"
#include "support/PruebaPantalla.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTreeView>
#include <sys/stat.h>
#include <thread>

using csv::Decimal;
using csv::LeerNumero;

namespace
{

// What was refused, "" for nothing.
template <class Pasos>
QString Rechazo(Pasos &&pasos)
{
    try {
        pasos();
    } catch (const qvx::ErrorEjecucion &error) {
        return error.Descripcion();
    }
    return {};
}

const qvx::TablaDeCatalogo &Producto()
{
    return *qvx::TablaDeCatalogoPorNombre("PRODUCTO");
}

// What becomes of each row, with the record that it makes or what is wrong.
QStringList Juzgadas(const QString &texto, const qvx::SituacionDeCatalogo &situacion, Decimal decimal = Decimal::Punto)
{
    const HojaLeida hoja = Corresponder(Producto(), csv::Partir(texto, QLatin1Char(';')));
    QStringList juzgadas;
    for (const FilaImportada &fila : JuzgarImportacion(Producto(), situacion, hoja, decimal).filas) {
        QStringList dicho{QString::number(fila.renglon), NombreDe(fila.clase)};
        if (fila.cambio.despues)
            dicho << fila.clave << fila.cambio.despues->valores << fila.cambio.despues->estado;
        for (const FallaDeImportacion &falla : fila.fallas)
            dicho << falla.columna << falla.valor << falla.motivo.section(' ', 0, 1);
        juzgadas.append(dicho.join('|'));
    }
    return juzgadas;
}

} // namespace

// Spreadsheets in and out: texts and numbers as strangers write them, and catalogues that are read from them.
class PrHojas : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void texto();
    void filas();
    void cifras();
    void archivos();
    void escritas();
    void juzgadas();
    void dialogo();
    void linea();

private:
    QString Poner(const QString &nombre, const QByteArray &contenido) const;
};

QString PrHojas::Poner(const QString &nombre, const QByteArray &contenido) const
{
    QFile archivo(escenario->Ruta(nombre));
    archivo.remove();
    if (!archivo.open(QIODevice::WriteOnly) || archivo.write(contenido) != contenido.size())
        qFatal("%s", qPrintable(archivo.errorString()));
    return archivo.fileName();
}

void PrHojas::texto()
{
    using csv::Codificacion;
    const auto leer = [](const QByteArray &octetos) {
        const Codificacion codificacion = csv::ProponerCodificacion(octetos);
        QString texto;
        const QString rechazo = Rechazo([&] { texto = csv::Texto(octetos, codificacion); });
        return rechazo.isEmpty() ? (codificacion == Codificacion::Utf8 ? "8 " : "1252 ") + texto : rechazo;
    };
    QCOMPARE(leer("\xEF\xBB\xBFGr\xC3\xBA"
                  "a"),
             "8 Grúa");
    QCOMPARE(leer("Gr\xFA"
                  "a \x80"),
             "1252 Grúa €");
    for (const QByteArray malo : {"\xC0\xAF", "\xED\xA0\x80", "\xC3"}) // overlong, half a pair, cut short
        QVERIFY(leer(malo).startsWith("1252 "));
    QVERIFY(leer("a\n\xC3\x81\xFF").contains("El renglón 2 no es texto en Windows-1252"));
    QVERIFY(leer("\x01\x02\xFF").contains("no es texto"));
    QVERIFY(leer(QByteArray("a\0b", 3)).startsWith("No es un archivo de texto"));
    QVERIFY(leer("PK\x03\x04").contains("libro"));
    QVERIFY(leer(QByteArray("\xFF\xFE"
                            "a\0",
                            4))
                .contains("UTF-16"));
    QVERIFY(Rechazo([] { csv::Texto("a\r\nb\xFA", Codificacion::Utf8); }).startsWith("El renglón 2 no está en UTF-8"));
}

void PrHojas::filas()
{
    const auto leer = [](const QString &texto) {
        QStringList filas;
        const auto delimitador = csv::ProponerDelimitador(texto);
        const QString rechazo = Rechazo([&] {
            for (const csv::Fila &fila : csv::Partir(texto, delimitador.value_or(QLatin1Char('?'))))
                filas.append(QString::number(fila.renglon) + ":" + fila.celdas.join('|'));
        });
        return delimitador ? rechazo + filas.join('/') : "?";
    };
    QCOMPARE(leer("a;b\r\n\"1;\"\"\n2\";3,5\r\r;;\n4;\n"), "1:a|b/2:1;\"\n2|3,5/6:4|");
    QCOMPARE(leer("a\tb;c\n1\t2\n"), "1:a|b;c/2:1|2");
    QCOMPARE(leer("a,b;c,d\n1,2;3,4\n"), "1:a|b;c|d/2:1|2;3|4");
    QCOMPARE(leer("a,b;c\n1,2;3"), "?");
    QCOMPARE(leer("a\n1"), "1:a/2:1");
    QCOMPARE(leer("a;b\n1;TUBO 3\"\n"), "1:a|b/2:1|TUBO 3\"");
    QCOMPARE(leer("a;b\n1;\"x\n2;3"), "En el renglón 2 se abre una comilla que no se cierra.");
    QVERIFY(leer("a;b\n\"\n\"x;\"3").startsWith("En el renglón 3 sigue texto a la comilla que cierra"));
}

// The same digits are another number in another style: nothing is guessed.
void PrHojas::cifras()
{
    const auto leer = [](const QStringList &numeros, std::optional<Decimal> dicho = {}) {
        const csv::Cifras cifras = csv::MirarCifras(numeros);
        if (!cifras.decimal && !dicho)
            return QString("?");
        QStringList leidos;
        for (const QString &numero : numeros) {
            const auto leido = LeerNumero(numero, dicho ? *dicho : *cifras.decimal, cifras);
            leidos.append(leido.numero ? qvx::NumeroATexto(*leido.numero) : "!");
        }
        return leidos.join(' ');
    };
    QCOMPARE(leer({"$ 1,234.50", "1,234", "12"}), "1234.5 1234 12");
    QCOMPARE(leer({"1.234,50", "1.234"}), "1234.5 1234");
    QCOMPARE(leer({"1234,5", "-0,125"}), "1234.5 -0.125");
    QCOMPARE(leer({"1.234.567"}), "1234567");
    QCOMPARE(leer({"0.125"}), "0.125");
    QCOMPARE(leer({"1200", "7"}), "1200 7");
    for (const QString dudoso : {"1,234", "12.345"})
        QCOMPARE(leer({dudoso, "1200"}), "?");
    QCOMPARE(leer({"1,234", "5"}, Decimal::Coma), "1.234 5");
    QCOMPARE(leer({"1,234", "5"}, Decimal::Punto), "1234 5");
    QCOMPARE(leer({"1,234", "1200.5"}), "! 1200.5"); // thousands here and not there
    QCOMPARE(leer({"1.5", "2.5", "3,5"}), "1.5 2.5 !");
    QCOMPARE(leer({"1e3", "1,23", "12,34.5", "1234567890123456"}), "! 1.23 ! !");
}

// What is no file of a sensible size, or another one at the end than at the beginning, is not read.
void PrHojas::archivos()
{
    const auto rechazo = [](const QString &ruta) { return Rechazo([&] { csv::LeerArchivo(ruta); }); };
    const QString ruta = Poner("a.csv", QByteArray(40 << 20, 'a'));
    QVERIFY(QFile::link(ruta, escenario->Ruta("enlace")) && QFile::link("/dev/zero", escenario->Ruta("cero")));
    QCOMPARE(csv::LeerArchivo(escenario->Ruta("enlace")).size(), 40 << 20);
    QCOMPARE(mkfifo(QFile::encodeName(escenario->Ruta("tubo")).constData(), S_IRWXU), 0);
    for (const QString nombre : {"tubo", "cero", ""})
        QVERIFY(rechazo(escenario->Ruta(nombre)).contains("no hay un archivo"));
    QVERIFY(rechazo(escenario->Ruta("nada")).startsWith("No se pudo leer"));

    std::atomic<bool> seguir = true;
    std::thread otro([&] {
        QFile cambiante(ruta);
        if (cambiante.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
            while (seguir && cambiante.seek(0))
                cambiante.write("b");
    });
    QString cambiado;
    for (int vez = 0; vez < 50 && cambiado.isEmpty(); ++vez) // the other one must have its turn meanwhile
        cambiado = rechazo(ruta);
    seguir = false;
    otro.join();
    QVERIFY2(cambiado.startsWith("Otro programa cambió el archivo"), qPrintable(cambiado));
    QVERIFY(QFile::resize(ruta, 300LL << 20));
    QVERIFY(rechazo(ruta).contains("pasa de 64 MB"));
}

// What is written comes back as it was, is no formula to a spreadsheet, and leaves the old file when it cannot be.
void PrHojas::escritas()
{
    const QStringList textos{"=1+1",           "'=1",       "+x", "-5", "@a", "\tb", "'nada", "a;b",
                             "dos\nrenglones", "3\" \"x\"", "Ñ"};
    Hoja hoja{"Hoja", {{"Clave"}, {"Costo", ColumnaDeHoja::Clase::Dinero}}, {}};
    for (const QString &texto : textos)
        hoja.filas.append({texto, -1.234});
    const QString ruta = Poner("a.csv", "anterior");
    const QString libro = Poner("a.xlsx", "anterior");
    Hoja larga{"Hoja", {{"Clave"}}, {}};
    larga.filas.resize(5000, {QString(10, 'x')});
    {
        const DiscoLleno disco(60000); // the workbook itself would fit
        QVERIFY(!Rechazo([&] { csv::Escribir(ruta, larga, {}); }).isEmpty());
        QVERIFY(!Rechazo([&] { EscribirXlsx(libro, larga); }).isEmpty());
    }
    for (const QString &anterior : {ruta, libro})
        QCOMPARE(csv::LeerArchivo(anterior), "anterior");
    QCOMPARE(QDir(escenario->Ruta("")).entryList({"a.*"}), (QStringList{"a.csv", "a.xlsx"}));
    for (const Decimal decimal : {Decimal::Punto, Decimal::Coma})
        for (const QChar delimitador : {QLatin1Char(';'), QLatin1Char(','), QLatin1Char('\t')}) {
            csv::Escribir(ruta, hoja, {delimitador, decimal});
            const QByteArray octetos = csv::LeerArchivo(ruta);
            const QString texto = csv::Texto(octetos, csv::ProponerCodificacion(octetos));
            QCOMPARE(csv::ProponerDelimitador(texto), delimitador);
            const auto filas = csv::Partir(texto, delimitador);
            QStringList leidos;
            QStringList numeros;
            for (const csv::Fila &fila : filas.mid(1)) {
                leidos.append(csv::SinResguardo(fila.celdas.at(0)));
                numeros.append(fila.celdas.at(1));
                QVERIFY(!QString("=+@-\t").contains(fila.celdas.at(0).at(0)) && fila.celdas.at(1).startsWith('-'));
            }
            QCOMPARE(leidos, textos);
            const csv::Cifras cifras = csv::MirarCifras(numeros);
            QCOMPARE(cifras.decimal, decimal);
            QCOMPARE(LeerNumero(numeros.at(0), decimal, cifras).numero, -1.234);
        }
    EscribirXlsx(libro, hoja);
    QVERIFY(csv::LeerArchivo(libro).startsWith("PK"));
}

void PrHojas::juzgadas()
{
    qvx::SituacionDeCatalogo situacion{"0000", {}, {"0001"}, {"PZA", "HR"}};
    for (const qvx::RegistroDeCatalogo &registro :
         QList<qvx::RegistroDeCatalogo>{{"0001", {"BOMBA ", "RE", "PZA", "1.5"}, "AC"},
                                        {"0002", {"FLECHA", "HE", "PZA", "2"}, "BA"},
                                        {"7", {"SIN MÁSCARA", "RE", "PZA", "0"}, "CA"}})
        situacion.registros.insert(registro.clave, registro);
    const auto probar = [&](const QString &texto, const QStringList &esperadas) {
        QCOMPARE(Juzgadas(texto, situacion).join('\n'), esperadas.join('\n'));
    };
    // What is not said stays; words are codes; keys are filled up.
    probar("CODIGO;U. "
           "M.;Otra;Nombre;pr_costo_estandar;Status\n1;;x;BOMBA;;\n2;;;;3;activo\n3;pza;;NUEVO;;\n7;;;;;Cancelado",
           {"2|igual|0001|BOMBA |RE|PZA|1.5|AC", "3|cambiada|0002|FLECHA|HE|PZA|3|AC", "4|con error|Clase||Falta la",
            "5|igual|7|SIN MÁSCARA|RE|PZA|0|CA"});
    probar("Clave;Nombre;Clase;Unidad\n3;NUEVO;herramienta;pza\n03;NUEVO;HE;PZA\n4;'=A;RE;PZA\n5;X;RE;PZA\n5;Y;RE;PZA",
           {"2|nueva|0003|NUEVO|HE|PZA|0|AC", "3|repetida|0003|NUEVO|HE|PZA|0|AC", "4|nueva|0004|=A|RE|PZA|0|AC",
            "5|con error|0005|X|RE|PZA|0|AC|Clave|5|La clave", "6|con error|0005|Y|RE|PZA|0|AC|Clave|5|La clave"});
    probar("Clave;Clase;Costo;Estado\n1E+09;;;\n;;1;\n1;HE;x;Z\n2;;1,5;;sobra\n'2;;1;",
           {"2|con error|Clave|1E+09|La hoja", "3|con error|Clave||Falta la",
            "4|con error|Costo|x|Se esperaba|Estado|Z|Se esperaba|Clase|HE|La clase",
            "5|con error||sobra|La fila|Costo|1,5|Se esperaba",
            "6|con error|Descripción||Falta la|Clase||Falta la|Unidad||Falta la|Clave|'2|La clave"});
    // Without headings the columns are in their order.
    probar("1;BOMBA\n2;EJE", {"1|igual|0001|BOMBA |RE|PZA|1.5|AC", "2|cambiada|0002|EJE|HE|PZA|2|BA"});
}

// Looked at, told how it is to be read, and written whole or not at all; the columns are remembered.
void PrHojas::dialogo()
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, escenario->Ruta("ajustes"));
    if (motor::EsPostgres())
        escenario->Correr("GRANT SELECT, INSERT, UPDATE ON ALL TABLES IN SCHEMA dbo TO mlopez");
    const auto productos = [&] { return escenario->Filas("SELECT * FROM Producto ORDER BY Pr_Cve_Producto"); };
    const QStringList antes = productos();
    const QByteArray datos = "Clave;Costo;Importe\n9000000001;151.25;1\n9000000002;1,234;2\n9000000003;x;3\n";
    const auto abrir = [&](const QByteArray &que) {
        return std::make_unique<DialogoImportarCatalogo>(pantalla->window(), Producto(), que, "hoja.csv");
    };
    const auto importar = [](const QDialog &dialogo) {
        QTest::mouseClick(&En<QPushButton>(dialogo, "cmdImportar"), Qt::LeftButton);
    };
    const auto elegir = [](const QDialog &dialogo, const QString &nombre, const QString &texto) {
        auto &lista = En<QComboBox>(dialogo, nombre);
        lista.setCurrentIndex(lista.findText(texto, Qt::MatchStartsWith));
        Q_EMIT lista.activated(lista.currentIndex());
    };
    {
        const auto dialogo = abrir(datos);
        const auto &lista = En<QTreeView>(*dialogo, "lvFilas");
        const auto celda = [&](int fila, int columna) { return lista.model()->index(fila, columna).data().toString(); };
        QCOMPARE(celda(0, 7), "150.25 → 151.25");
        QCOMPARE(celda(1, 7), "80.1 → 1234");
        QCOMPARE(celda(2, 2), "Costo: Se esperaba un número con punto decimal, como 1234.50.");
        elegir(*dialogo, "cboMostrar", "Solo errores");
        QCOMPARE(lista.model()->rowCount(), 1);
        escenario->Personas().DarArchivo(escenario->Ruta("errores.csv"));
        QTest::mouseClick(&En<QPushButton>(*dialogo, "cmdGuardarErrores"), Qt::LeftButton);
        QVERIFY(csv::LeerArchivo(escenario->Ruta("errores.csv")).contains("\r\n4;Costo;x;Se esperaba"));
        importar(*dialogo);
        QVERIFY(!En<QPushButton>(*dialogo, "cmdImportar").isEnabled());
        QCOMPARE(productos(), antes);

        elegir(*dialogo, "cboColumna_Pr_Costo_Estandar", "Importe");
        QVERIFY(En<QLabel>(*dialogo, "lblAviso").text().endsWith("aquí no se guarda: Costo."));
        Averia averia(*escenario, "UPDATE ON Producto WHEN OLD.Pr_Cve_Producto = '9000000003'");
        importar(*dialogo);
        QCOMPARE(Mensajes(), QStringList{"16|Quorvex|QVX|ERR-ID:1000032|falla"});
        QCOMPARE(productos(), antes);
        averia.Reparar();
        escenario->Correr("UPDATE Producto SET Pr_Descripcion = 'AJENO' WHERE Pr_Cve_Producto = '9000000001'");
        importar(*dialogo);
        QVERIFY(Mensajes().join("").contains("ERR-ID:1000032|Producto 9000000001: Otro programa lo cambió"));
        importar(*dialogo); // as it is now
        QCOMPARE(dialogo->result(), QDialog::Accepted);
        QCOMPARE(escenario
                     ->Filas("SELECT Pr_Descripcion, Pr_Costo_Estandar + 0 FROM Producto WHERE Pr_Cve_Producto LIKE "
                             "'900000000_' ORDER BY Pr_Cve_Producto")
                     .mid(0, 3),
                 (QStringList{"AJENO|1", "SELLO|2", "LLAVE|3"}));
    }
    const auto otro = abrir("Clave;Importe\n9000000004;1,234\n");
    QCOMPARE(En<QComboBox>(*otro, "cboColumna_Pr_Costo_Estandar").currentText(), "Importe");
    QVERIFY(!En<QPushButton>(*otro, "cmdImportar").isEnabled());
    QVERIFY(En<QLabel>(*otro, "lblAviso").text().startsWith("No se sabe si 1,234"));
    elegir(*otro, "cboDecimal", "Coma");
    QVERIFY(En<QPushButton>(*otro, "cmdImportar").isEnabled());
    QVERIFY(!DialogoImportarCatalogo::Importar(pantalla->window(), Producto(), QByteArray("a\0b", 3), "x"));
    QVERIFY(Mensajes().join("").contains("ERR-ID:1000030|No es un archivo de texto"));
}

// What the command line does not say and a person would be asked is an error. A catalogue that goes out and comes back
// is as it was.
void PrHojas::linea()
{
    QStringList base = escenario->Base().Argumentos();
    if (motor::EsPostgres()) {
        escenario->Correr("DO $$ BEGIN CREATE ROLE catalogador LOGIN IN ROLE quorvex_catalogos; "
                          "EXCEPTION WHEN duplicate_object THEN NULL; END $$");
        base.last() = cluster::Direccion("catalogador", base.constLast().section('/', -1));
    }
    escenario->Correr("UPDATE Producto SET Pr_Descripcion = '=\"Ñ\";' || Pr_Cve_Producto, Pr_Costo_Estandar = 1.234");
    const auto correr = [&](const QString &orden, const QString &archivo, const QStringList &opciones = {}) {
        return Quorvex(QStringList{"--" + orden + "-catalogo", "Producto", archivo} + opciones + base);
    };
    const auto productos = [&] { return escenario->Filas("SELECT * FROM Producto ORDER BY Pr_Cve_Producto"); };
    const QStringList antes = productos();
    const QString ruta = escenario->Ruta("p.csv");
    for (const QStringList &formato : {QStringList(), QStringList{"--delimitador", ",", "--decimal", "coma"}}) {
        QCOMPARE(correr("exportar", ruta, formato), "0");
        const QString dicho = correr("importar", ruta, {"--si"});
        QVERIFY2(dicho.startsWith("0") && dicho.contains("Nuevas: 0. Cambiadas: 0. Iguales: 119.")
                     && dicho.endsWith("No hay nada que cambiar.\n"),
                 qPrintable(dicho));
    }
    QVERIFY(correr("exportar", escenario->Ruta("p.ods")).startsWith("1No se escribió"));
    const auto importar = [&](const QByteArray &texto, const QStringList &opciones, const QString &esperado) {
        const QString dicho = correr("importar", Poner("i.csv", texto), opciones);
        QVERIFY2(dicho.contains(QRegularExpression(esperado)), qPrintable(dicho));
    };
    importar("Clave;Costo\n9000000001;1,234\n", {}, "^1No se sabe si los números del archivo, como 1,234,.*--decimal");
    importar("Clave;Costo,x\n9000000001;2,x\n", {}, "^1No se sabe qué separa.*--delimitador");
    importar("Clave;Nombre\n9000000001;GR\xDA"
             "A\n",
             {}, "^1.*\n  9000000001;GRÚA\n.*--codificacion windows-1252");
    importar("x;y\n9000000001;2\n", {}, "^1La primera fila .*Clave, Descripción");
    importar("Clave;Costo\n9000000001;x\n", {"--si"}, "^1.*\nRenglón 2, Costo «x»: Se esperaba");
    importar("Clave;Nombre\n9000000001;A\n", {}, "^0.*\nNuevas: 0. Cambiadas: 1.*\n.*--si");
    importar("Clave;Nombre\n", {"--tipo-equipo"}, "^2");
    importar("Clave;Nombre\n", {"--decimal", "x"}, "^2--decimal es punto o coma");
    QCOMPARE(productos(), antes);
    importar("Clave;Nombre;Precio\n9000000001;GR\xDA"
             "A;1,234\n",
             {"--si", "--codificacion", "windows-1252", "--decimal", "coma", "--delimitador", ";"}, "^0.*\n.*\nQuedó");
    QCOMPARE(escenario->Filas("SELECT Pr_Descripcion FROM Producto WHERE Pr_Cve_Producto = '9000000001'"),
             QStringList{"GRÚA"});
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave FROM Registro_Cambio"), QStringList{"Producto|9000000001"});
    escenario->Correr("ALTER TABLE Registro_Cambio RENAME TO Registro_Perdido"); // the engine says so in English
    importar("Clave;Nombre\n9000000001;B\n", {"--si"},
             "(?i)\n.*registro_cambio.*\nA la base de datos le falta una tabla");
}

PRUEBA(PrHojas)
#include "pr_hojas.moc"
