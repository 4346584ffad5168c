#include "app/reportes/Csv.h"
#include "app/reportes/LibroXlsx.h"
#include "app/reportes/TextoDeArchivo.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "support/PruebaPantalla.h"

#include <QDir>
#include <QFile>
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
        QFile creciente(ruta);
        if (creciente.open(QIODevice::Append | QIODevice::Unbuffered))
            while (seguir)
                creciente.write("a");
    });
    const QString cambiado = rechazo(ruta);
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
    {
        const DiscoLleno disco;
        QVERIFY(!Rechazo([&] { csv::Escribir(ruta, Hoja{"x", {{QString(5000, 'x')}}, {}}, {}); }).isEmpty());
        QVERIFY(!Rechazo([&] { EscribirXlsx(libro, hoja); }).isEmpty());
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

PRUEBA_MAIN(PrHojas)
#include "pr_hojas.moc"
