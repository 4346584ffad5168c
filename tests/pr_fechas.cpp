#include "app/programa/Medidas.h"
#include "support/DatosDePrueba.h"
#include "support/Prueba.h"
#include "support/Tabla.h"

#include <QRandomGenerator>

using namespace programa;

// The year of an equipment type as values: dates, load, costs, spare parts.
class PrFechas : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fechas_data();
    void fechas();
    void motivos_data();
    void motivos();
    void apartes();
    void incluidos();
    void medidas();
    void azar();
    void numeros();
};

// "90 500 HR": days, and a reading in a unit.
static Entrada EntradaDe(const QString &texto, const QString &folio = "000001", const QString &exclusion = {})
{
    const QStringList palabras = texto.split(' ');
    return {folio,
            folio + " SERVICIO",
            "grupo",
            {palabras.at(0).toDouble(), palabras.value(1).toDouble(), palabras.value(2)},
            exclusion};
}

// A date as month-day, "(…)" the theoretical one where it is another, "x" how many times.
static QString Dia(const Programa &programa, const Fila &fila)
{
    QString texto = programa.Fecha(fila.programado).toString("MM-dd");
    if (fila.teorico != fila.programado)
        texto += programa.Fecha(fila.teorico).toString("(MM-dd)");
    return fila.veces == 1 ? texto : texto + "x" + QString::number(fila.veces);
}

// Worked out by hand, with a calendar.
void PrFechas::fechas_data()
{
    const Tabla<QString, QString, int, QString> fila("datos", "servicio", "cuantas", "esperadas");
    const QString s = "2026-12-31 ";
    fila("la lectura antes", s + "HR=8", "90 500 HR", 5, "03-03 05-05 07-06 09-07 11-08");
    fila("los días antes", s + "HR=8", "30 250 HR", 12, "01-30 03-01 … 12-26");
    fila("lunes a viernes", s + "HR=8 sado", "30 250 HR", 12, "01-29(01-30) 03-01 … 12-24(12-26)");
    fila("uso 0", s + "HR=0", "90 500 HR", 4, "03-31 06-29 09-27 12-26");
    fila("uso no dado", s + "KM=8", "90 500 HR", 4, "03-31 06-29 09-27 12-26");
    fila("un año", s + "HR=8", "365", 1, "12-31");
    fila("un año, el siguiente", "2027-12-31", "365", 1, "12-30");
    fila("cae en domingo", s, "122", 2, "05-02 09-01");
    fila("del domingo al viernes, otro mes", s + "sado", "122", 2, "04-30(05-02) 09-01");
    fila("solo domingos", s + "do", "122", 2, "05-01(05-02) 09-01");
    fila("con doubles, un día antes", s + "HR=12", "0 250 HR", 17, "01-20 02-10 03-03 03-24 04-14 05-05 … 12-20");
    fila("cinco días por semana", s + "HR=8 d=5", "0 500 HR", 4, "03-28 06-24 09-19 12-16");
    fila("decimales", s + "KM=0.3", "0 0.9 KM", 121, "01-03 01-06 … 12-29");
    fila("al arrancar", s + "arranque", "90", 5, "12-31 03-31 06-29 09-27 12-26");
    fila("al arrancar, hasta el día antes", s + "arranque", "365", 1, "12-31");
    fila("lectura acumulada", s + "HR=8/1200 lectura", "90 500 HR", 6, "02-06 04-10 06-11 08-13 10-14 12-16");
    fila("lectura acumulada, los días antes", s + "HR=8/1200 lectura", "30 500 HR", 12, "01-30 03-01 … 12-26");
    fila("lectura acumulada, sin uso", s + "HR=0/1200 lectura", "90 500 HR", 4, "03-31 06-29 09-27 12-26");
    fila("lectura recién cumplida", s + "HR=8/1500 lectura", "0 500 HR", 5, "03-03 05-05 07-06 09-07 11-08");
    fila("lectura que toca ya", s + "HR=8/1499 lectura", "0 500 HR", 6, "12-31 03-03 05-05 07-06 09-07 11-08");
    fila("dos al día", s + "HR=8", "0 4 HR", 365, "01-01x2 01-02x2 … 12-31x2");
    fila("cada 18 horas", s + "HR=8", "0 6 HR", 365, "01-01 01-02 01-03x2 01-04 … 12-31");
    fila("24 al día", s + "HR=24", "0 1 HR", 365, "01-01x24 … 12-31x24");
    fila("de un 29 de febrero", "2028-02-29", "365", 1, "02-28");
    fila("a un 29 de febrero", "2028-01-31", "29", 12, "02-29 03-29 … 01-13");
    fila("festivo", s + "2027-03-31 2027-03-30", "90", 4, "03-29(03-31) 06-29 09-27 12-26");
    fila("nunca antes del día 1", "2027-01-01 sado", "2", 182, "01-04(01-03) 01-05 01-07 01-08(01-09) … 12-31");
    fila("al arrancar en festivo", "2027-01-01 2027-01-01 arranque", "200", 2, "01-02(01-01) 07-20");
}

void PrFechas::fechas()
{
    QFETCH(const QString, datos);
    QFETCH(const QString, servicio);
    QFETCH(const QString, esperadas);
    const Programa programa = Programar({EntradaDe(servicio)}, DatosDe(datos));
    QStringList dias;
    for (const auto &fila : programa.filas)
        dias.append(Dia(programa, fila));
    QTEST(int(dias.size()), "cuantas");
    const QStringList tramos = esperadas.split(" … ");
    const QString todas = dias.join(' ');
    QVERIFY2(tramos.size() == 2 ? todas.startsWith(tramos.at(0)) && todas.endsWith(tramos.at(1)) : todas == esperadas,
             qPrintable(todas));
    QVERIFY(programa.conciliacion.Cuadra());
    QCOMPARE(programa.conciliacion.programados, 1);
}

void PrFechas::motivos_data()
{
    const Tabla<QString, QString, QString, QString> fila("datos", "servicio", "motivo", "umbral");
    const QString s = "2026-12-31 ";
    fila("la lectura", s + "HR=8", "90 500 HR", "cada 500 HR a 8 HR/día = 62.5 días; antes que 90 días", "5.56");
    fila("los días", s + "HR=8", "30 250 HR", "cada 30 días; antes que 250 HR a 8 HR/día = 31.25 días", "8.34");
    fila("igual", s + "HR=8", "30 240 HR", "cada 240 HR a 8 HR/día = 30 días, igual que 30 días", "8");
    fila("semana", s + "KM=10 d=5", "0 500 KM", "cada 500 KM a 10 KM/día, 5 días por semana, = 70 días", "");
    fila("dos decimales", s + "HR=7", "0 100 HR", "cada 100 HR a 7 HR/día = 14.29 días", "");
    fila("solo días", s, "1", "cada 1 día", "");
    fila("sin uso", s, "90 500 HR", "cada 90 días; sin uso por día en HR, 500 HR no cuenta", "5.56");
    fila("sin fecha", s, "0 500 HR", "sin uso por día en HR, 500 HR no cuenta", "");
    fila("nada", s, "0", "sin frecuencia: ni días ni lectura", "");
}

void PrFechas::motivos()
{
    QFETCH(const QString, datos);
    QFETCH(const QString, servicio);
    const Periodo periodo = CalcularPeriodo(EntradaDe(servicio).frecuencia, DatosDe(datos));
    QTEST(periodo.motivo, "motivo");
    QTEST(periodo.umbral ? periodo.umbral->Texto(2, true) : QString(), "umbral");
}

// Each service is in one place, and says why; what cannot be is refused by name, and consecutive years tile.
void PrFechas::apartes()
{
    const QList<Entrada> entradas{EntradaDe("90"), EntradaDe("400", "000002"), EntradaDe("0 5 HR", "000003"),
                                  EntradaDe("9000000", "000004"), EntradaDe("30", "000005", "de baja")};
    const Programa programa = Programar(entradas, DatosDe("2026-12-15"));
    QStringList aparte;
    for (const Aparte &uno : programa.aparte)
        aparte.append(entradas.at(uno.servicio).folio + " " + Nombre(uno.clase) + " " + uno.motivo + " "
                      + Escrita(uno.primera));
    QCOMPARE(aparte, (QStringList{"000002 Más adelante cada 400 días 2028-01-19",
                                  "000003 Sin fecha sin uso por día en HR, 5 HR no cuenta ",
                                  "000004 Más adelante cada 9000000 días ", "000005 Excluido de baja "}));
    QCOMPARE(Texto(programa.conciliacion), "Programados 1 + más adelante 2 + sin fecha 1 + excluidos 1 = 5 servicios");
    QCOMPARE(programa.meses.Cuantos(), 13);
    QCOMPARE(Programar(entradas, DatosDe("2026-12-31")).meses.Cuantos(), 12);
    for (const auto &[datos, servicio, parte] : QList<std::tuple<QString, QString, QString>>{
             {"2026-12-31 KM=241", "0 10 KM", "000001 SERVICIO"},
             {"2026-12-31 HR=-1", "90", "-1"},
             {"2026-12-31 HR=25", "90", "24"},
             {"2027-02-30", "90", "día cero"},
             {"2026-12-31 n=0", "90", "equipos"},
             {"2026-12-31 d=8", "90", "semana"},
             {"2026-12-31 KM=1e9", "90", "1000000"},
             {"2026-12-31 KM=1", "0 123456789012345e30 KM", "Desbordamiento"}}) {
        const QString dicho =
            Rechazo([servicio = servicio, datos = datos] { Programar({EntradaDe(servicio)}, DatosDe(datos)); });
        QVERIFY2(dicho.contains(parte), qPrintable(datos + ": " + dicho));
    }
    const QList<Entrada> una{EntradaDe("0 4.7 HR")};
    qsizetype veces = 0;
    const auto contar = [&](const QString &datos) {
        const Programa anual = Programar(una, DatosDe(datos));
        for (const auto &fila : anual.filas)
            veces += fila.veces;
        return anual.horizonte.Hasta().toString(Qt::ISODate);
    };
    QCOMPARE(contar("2028-02-29 HR=3.1"), "2029-02-28");
}

void PrFechas::incluidos()
{
    const QList<Entrada> entradas{EntradaDe("30"), EntradaDe("90", "000002"), EntradaDe("45", "000003"),
                                  EntradaDe("180", "000004")};
    qvx::DatosDePrograma datos = DatosDe("2026-12-31 n=2");
    const auto pares = ParesPosibles(entradas, Programar(entradas, datos));
    QCOMPARE(pares, (QList<QPair<int, int>>{{0, 1}, {0, 3}, {1, 3}, {2, 1}, {2, 3}}));
    datos.incluidos = {{"000001", "000002"}, {"000002", "000004"}, {"000004", "000003"}, {"000003", "000099"}};
    const Programa programa = Programar(entradas, datos);
    QStringList incluidas;
    QList<int> cuentan(4, 0);
    for (const auto &fila : programa.filas) {
        cuentan[fila.servicio] += fila.Cuentan();
        if (fila.en >= 0)
            incluidas.append(Dia(programa, fila) + " " + entradas.at(fila.servicio).folio + " "
                             + programa.Motivo(fila, entradas));
    }
    QCOMPARE(cuentan, (QList<int>{8, 2, 8, 2}));
    QCOMPARE(incluidas.mid(0, 3), (QStringList{"03-31 000001 incluido en 000002", "06-29 000001 incluido en 000002",
                                               "06-29 000002 incluido en 000004"}));
    // Twice a day, of which every other day one is done within another service.
    QList<Entrada> diarios{EntradaDe("0 4 HR"), EntradaDe("2", "000002")};
    datos = DatosDe("2026-12-31 HR=8");
    datos.incluidos = {{"000001", "000002"}};
    const Programa diario = Programar(diarios, datos);
    QCOMPARE(diario.Motivo(diario.filas.at(1), diarios), "1 de 2 incluido en 000002; cada 4 HR a 8 HR/día = 0.5 días");
}

// Two services on a day: a part of 2.5 hours of labour and three seals; a stop of 4 hours beside one of 1.5.
void PrFechas::medidas()
{
    lectura::Plan plan;
    plan.servicios.resize(2);
    const auto dar = [](lectura::Servicio &servicio, double dias, double paro, double precio) {
        servicio.dias = dias;
        servicio.conParo = true;
        servicio.horasParo = paro;
        servicio.horas = 99; // its duration, no labour
        servicio.precio = precio;
    };
    dar(plan.servicios[0], 100, 4, 1000.005);
    dar(plan.servicios[1], 150, 1.5, 0);
    lectura::Lineas lineas;
    lineas.productos = {{"0001", "MECÁNICO", 120, true, true}, {"1001", "SELLO", 80.335, true, false}};
    using Clase = lectura::Linea::Clase;
    lineas.lineas = {{0, Clase::ManoDeObra, 0, 2.5, "HR", 118.5, 296.25, ""},
                     {0, Clase::ManoDeObra, 0, 2, "SERV", 10, 20, ""},
                     {0, Clase::Refaccion, 1, 3, "PZA", 80.1, 240.3, "01"},
                     {0, Clase::Herramienta, 1, 1, "PZA", 5, 5, ""},
                     {1, Clase::Refaccion, 1, 0.1, "JGO", 1, 0.1, "01"}};
    qvx::DatosDePrograma datos = DatosDe("2026-12-15 n=3");
    datos.capacidad = {{12, 31}, {3, 10}};
    const Programa programa = Programar({EntradaDe("100"), EntradaDe("150", "000002")}, datos);
    const QList<Medida> medidas = Medir(plan, lineas);
    const Medida total = Total(programa, medidas);
    // Three times and twice, three machines: 9 and 6.
    QCOMPARE(total.manoObra.Texto(), "22.5");
    QCOMPARE(total.paro.Texto(), "45");
    QCOMPARE(total.costo.Texto(), "5009.55");     // 9 · 556.55 + 6 · 0.1
    QCOMPARE(total.costoHoy.Texto(), "7077.246"); // 9 · (300 + 240 + 241.005) + 6 · 8.0335
    QCOMPARE(total.precio.Texto(), "9000.045");
    QCOMPARE(total.precio.Texto(2), "9,000.05");                         // half up, where a binary fraction lies below
    QCOMPARE(ALargoPlazo(programa, medidas).costo.Texto(2), "6,094.95"); // 3 · 365 · (556.55/100 + 0.1/150)
    QCOMPARE(programa.Fecha(programa.filas.at(0).teorico), QDate(2027, 3, 25));
    const Carga carga = CalcularCarga(programa, lineas);
    QCOMPARE(carga.oficios.size(), 1);
    QCOMPARE(carga.oficios.at(0).porMes.at(3).Texto(), "7.5");
    QCOMPARE(carga.otras.at(0).total.Texto(), "18");
    QCOMPARE(carga.capacidad.at(0).Texto(), "16"); // from the 16th on
    QCOMPARE(carga.capacidad.at(3).Texto(), "10");
    QCOMPARE(carga.capacidad.at(12).Texto(), "15");
    const QList<Serie> refacciones = CalcularRefacciones(programa, lineas);
    QCOMPARE(refacciones.size(), 2); // one product, two units
    QCOMPARE(refacciones.at(0).unidad + refacciones.at(0).total.Texto(), "JGO0.6");
    QCOMPARE(refacciones.at(1).unidad + refacciones.at(1).total.Texto(), "PZA27");
    // Day 300 has both: 4 + 1.5 hours, or 4; day 150 is 50 days behind day 100.
    const auto paros = CalcularParos(programa, medidas);
    QCOMPARE(paros.size(), 4);
    QCOMPARE(paros.at(3).sumado.Texto() + " " + paros.at(3).compartido.Texto(), "16.5 12");
    const auto juntos = Juntar(paros, 50);
    QCOMPARE(juntos.size(), 1);
    QCOMPARE(juntos.at(0).Ahorro().Texto(), "4.5");
    QVERIFY(Juntar(paros, 49).isEmpty());
    qvx::DatosDePrograma otros = datos;
    otros.diaCero = datos.diaCero.addDays(-1);
    const Diferencia movidas = Comparar(programa, Programar({EntradaDe("100"), EntradaDe("190", "000002")}, datos));
    QCOMPARE((QList<int>{movidas.movidas, movidas.nuevas, movidas.perdidas}), (QList<int>{1, 0, 1}));
}

// Random plans beside a second, naive calculation in whole numbers, day by day.
void PrFechas::azar()
{
    QRandomGenerator azar(20261122);
    const auto entre = [&](int desde, int hasta) { return azar.bounded(desde, hasta + 1); };
    for (int vuelta = 0; vuelta < 40; ++vuelta) {
        const int uso = entre(0, 20);
        const int semana = entre(1, 7);
        const int equipos = entre(1, 5);
        const bool alArrancar = entre(0, 1) == 1;
        const bool conDescanso = entre(0, 1) == 1;
        const QDate s = QDate(2026, 1, 1).addDays(entre(0, 1500));
        QString texto = QString("%1 HR=%2 d=%3 n=%4").arg(Escrita(s)).arg(uso).arg(semana).arg(equipos);
        qvx::DatosDePrograma datos = DatosDe(texto + (alArrancar ? " arranque" : "") + (conDescanso ? " sado" : ""));
        QList<Entrada> entradas;
        QList<Medida> medidas;
        QList<int> centavos;
        for (int i = 0; i < 150; ++i) {
            entradas.append(
                EntradaDe(QString("%1 %2 HR").arg(entre(0, 2) * entre(1, 250)).arg(entre(0, 1) * entre(20, 3000)),
                          QString::number(i), entre(0, 9) == 0 ? "no" : ""));
            entradas.last().grupo = QString::number(entre(0, 30));
            centavos.append(entre(0, 1000000));
            medidas.append({{}, {}, Cantidad::De(centavos.constLast() / 100.0), {}, {}});
        }
        for (const auto &[menor, mayor] : ParesPosibles(entradas, Programar(entradas, datos)))
            if (entre(0, 1) == 1)
                datos.incluidos.append({QString::number(menor), QString::number(mayor)});
        const Programa programa = Programar(entradas, datos);

        const qint64 dias = s.daysTo(s.addYears(1));
        int programados = 0;
        QMap<int, qint64> naive; // cents by month
        QList<QMap<qint64, int>> teoricas(entradas.size());
        for (int i = 0; i < entradas.size(); ++i) {
            const qint64 d = qint64(entradas.at(i).frecuencia.dias);
            const qint64 r = qint64(entradas.at(i).frecuencia.lectura);
            // P = r·7 / (uso·semana), unless d is less.
            const bool lectura = r > 0 && uso > 0 && (d == 0 || r * 7 <= d * uso * semana);
            const qint64 arriba = lectura ? r * 7 : d;
            const qint64 abajo = lectura ? qint64(uso) * semana : 1;
            if (arriba == 0 || !entradas.at(i).exclusion.isEmpty())
                continue;
            for (qint64 n = alArrancar ? 0 : 1; n * arriba / abajo <= dias - (alArrancar ? 1 : 0); ++n)
                if (const qint64 dia = n * arriba / abajo; alArrancar || dia > 0)
                    ++teoricas[i][dia];
            programados += teoricas.at(i).isEmpty() ? 0 : 1;
        }
        for (int i = 0; i < entradas.size(); ++i)
            for (auto dia = teoricas.at(i).cbegin(); dia != teoricas.at(i).cend(); ++dia) {
                int veces = dia.value();
                for (const auto &[menor, mayor] : datos.incluidos)
                    if (menor.toInt() == i)
                        veces = qMax(0, veces - teoricas.at(mayor.toInt()).value(dia.key()));
                QDate hecha = s.addDays(dia.key());
                while (conDescanso && hecha.dayOfWeek() > 5 && hecha > s)
                    hecha = hecha.addDays(-1);
                if (conDescanso && dia.key() > 0 && (hecha <= s || hecha.dayOfWeek() > 5))
                    hecha = s.addDays(dia.key());
                while (conDescanso && hecha.dayOfWeek() > 5)
                    hecha = hecha.addDays(1);
                naive[hecha.year() * 12 + hecha.month()] += qint64(veces) * equipos * centavos.at(i);
            }

        QVERIFY2(programa.conciliacion.Cuadra(), qPrintable(texto));
        QCOMPARE(programa.conciliacion.programados, programados);
        QCOMPARE(qint64(programa.aparte.size()) + programados, qint64(entradas.size()));
        const QList<Medida> meses = PorMes(programa, medidas);
        Cantidad suma;
        for (int mes = 0; mes < meses.size(); ++mes) {
            const QDate primero = programa.meses.Primero(mes);
            const qint64 esperado = naive.take(primero.year() * 12 + primero.month());
            QVERIFY2(meses.at(mes).costo * 100 == Cantidad::De(esperado),
                     qPrintable(texto + programa.meses.Nombre(mes)));
            suma += meses.at(mes).costo;
        }
        QVERIFY2(naive.isEmpty(), qPrintable(texto));
        QVERIFY(suma == Total(programa, medidas).costo);
    }
}

void PrFechas::numeros()
{
    QCOMPARE(Cantidad::De(0.1) * 3, Cantidad::De(0.3));
    for (const QString &texto : QStringList{"0.29", "-0.07", "1.005", "4503599627370.49", "-1200", "0.1"})
        QCOMPARE(Cantidad::De(texto.toDouble()).Texto(), texto);
    QCOMPARE(Cantidad::De(2.675).Texto(2), "2.68");
    QCOMPARE(Cantidad::De(-2.675).Texto(2), "-2.68");
    QCOMPARE(Cantidad::De(-1234567.5).Texto(0), "-1,234,568");
    QCOMPARE(Cantidad::De(1e15).Texto(2), "1,000,000,000,000,000.00");
    QCOMPARE((Cantidad::De(123456.7891) * Cantidad::De(98765.4321)).Texto(), "12193263121.14007011");
    QCOMPARE(Cantidad::De(100.0).Por(Fraccion(1, 3)).Texto(2), "33.33");
    QVERIFY(Fraccion::De(0.3) / Fraccion(3) == Fraccion(1, 10));
    const Fraccion grande = Fraccion::De(123456789012345e20);
    QVERIFY(grande < grande + Fraccion(1) && Fraccion(1) / grande < Fraccion(1, 3) && -1 < grande); // without overflow
    QCOMPARE(Fraccion(-7, 2).Piso() == -4, true);
    QCOMPARE(Fraccion(7, 2).Resto(Fraccion(2)).Texto(2), "1.5");
    QVERIFY(!Rechazo([&] { grande *grande; }).isEmpty());
}

PRUEBA(PrFechas)
#include "pr_fechas.moc"
