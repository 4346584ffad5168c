#include "bench/Siembra.h"

#include <QStringList>
#include <random>

namespace
{

constexpr int Niveles = 6;
constexpr qsizetype FilasPorSentencia = 500;
const QString Auditoria = "'jcruz', '2025-01-02 03:04:05', 'jcruz', '2025-01-02 03:04:05'";

QString Clave(int numero, int cifras)
{
    return QString::number(numero).rightJustified(cifras, QLatin1Char('0'));
}

// Rows of one table, written in statements of many rows.
class Tabla
{
public:
    Tabla(Crudo &base_, const QString &columnas) : base(base_), inicio("INSERT INTO " + columnas + " VALUES ") {}
    ~Tabla() { Escribir(); }
    Tabla(const Tabla &) = delete;
    Tabla &operator=(const Tabla &) = delete;

    void Agregar(const QString &valores)
    {
        filas.append("(" + valores + ")");
        if (filas.size() == FilasPorSentencia)
            Escribir();
    }

private:
    void Escribir()
    {
        if (!filas.isEmpty())
            base.Correr((inicio + filas.join(QLatin1Char(','))).toUtf8());
        filas.clear();
    }

    Crudo &base;
    QString inicio;
    QStringList filas;
};

class Sembrador
{
public:
    Sembrador(Crudo &base_, const Tamano &tamano_) : base(base_), tamano(tamano_), azar(tamano.semilla) {}

    void Sembrar()
    {
        base.Correr("BEGIN");
        Catalogos();
        Plan();
        Detalle();
        base.Correr("COMMIT");
    }

private:
    // By hand: the library's distributions differ from one compiler to the next.
    int Hasta(int cuantos) { return static_cast<int>(azar() % static_cast<unsigned>(cuantos)); }

    void Catalogos()
    {
        base.Correr("INSERT INTO Tipo_Equipo VALUES ('9001', 'PLAN GRANDE', 'AC'), ('9002', 'COPIA', 'AC'), "
                    "('9003', 'LISTA LARGA', 'AC')");
        base.Correr("INSERT INTO Tipo_Servicio VALUES ('9001', 'LUBRICACIÓN', 'AC')");
        base.Correr("INSERT INTO Prioridad_Servicio VALUES ('9001', 'NORMAL', 'AC')");
        base.Correr("INSERT INTO Tipo_Gasto VALUES ('9001', 'CONSUMO', 'AC')");
        base.Correr("INSERT INTO Unidad VALUES ('HRS', 'HORAS', 'AC')");
        Tabla productos(base, "Producto");
        for (int clase = 0; clase < 3; ++clase)
            for (int i = 0; i < tamano.enServicio; ++i)
                productos.Agregar("'" + Producto(clase, i) + "', 'PRODUCTO " + QString::number(i) + "', '"
                                  + QStringList{"MO", "RE", "HE"}.at(clase) + "', 'PZA', " + QString::number(i)
                                  + ".25, 'AC'");
    }

    // Of each class as many as there are lines in the long service, which has each only once.
    QString Producto(int clase, int i) const { return Clave(900'000'000 + (clase * tamano.enServicio) + i, 10); }

    void Plan()
    {
        std::vector<int> nivel{0};
        Tabla partes(base, ColumnasParte);
        for (int i = 1; i <= tamano.partes; ++i) {
            int padre = Hasta(i); // 0 is the root
            while (nivel[static_cast<size_t>(padre)] == Niveles)
                padre = Hasta(i);
            nivel.push_back(nivel[static_cast<size_t>(padre)] + 1);
            partes.Agregar(QString("'9001', '%1', '%2', 'PARTE %1 DEL EQUIPO', %3")
                               .arg(Clave(i, 6), padre == 0 ? "0000" : Clave(padre, 6), Auditoria));
        }
        std::vector<int> parteDe{0};
        Tabla servicios(base, ColumnasServicio);
        for (int i = 1; i <= tamano.servicios; ++i) {
            parteDe.push_back(1 + Hasta(tamano.partes));
            Servicio(servicios, "9001", Clave(parteDe.back(), 6), i);
        }
        Tabla lineas(base, ColumnasLinea);
        for (int i = 1; i <= tamano.lineas; ++i) {
            const int servicio = 1 + Hasta(tamano.servicios);
            Linea(lineas, "9001", Clave(parteDe[static_cast<size_t>(servicio)], 6), servicio, i,
                  Hasta(tamano.enServicio));
        }
    }

    void Detalle()
    {
        Tabla partes(base, ColumnasParte);
        partes.Agregar("'9003', '000001', '0000', 'MOTOR', " + Auditoria);
        Tabla servicios(base, ColumnasServicio);
        for (int i = 1; i <= tamano.enLista; ++i)
            Servicio(servicios, "9003", "000001", i);
        Tabla lineas(base, ColumnasLinea);
        for (int i = 1; i <= tamano.enServicio; ++i)
            Linea(lineas, "9003", "000001", 1, i, i - 1);
    }

    void Servicio(Tabla &servicios, const QString &tipo, const QString &parte, int i)
    {
        const int dias = 1 + Hasta(365);
        servicios.Agregar(QString("'%1', '%2', '%3', '9001', %4, %5, 'HRS', %6, %7, '9001', 'SI', %7, %8")
                              .arg(tipo, parte, Clave(i, 6))
                              .arg(dias)
                              .arg(dias * 8)
                              .arg(dias * 10)
                              .arg(1 + dias % 12)
                              .arg(Auditoria));
    }

    void Linea(Tabla &lineas, const QString &tipo, const QString &parte, int servicio, int i, int producto)
    {
        const int clase = Hasta(3);
        lineas.Agregar(QString("'%1', '%2', '%3', '%4', '0%5', '%6', 2, 'PZA', %7.25, %8.5, '%9'")
                           .arg(tipo, parte, Clave(servicio, 6), Clave(i, 6), QString::number(clase + 1),
                                Producto(clase, producto), QString::number(producto), QString::number(2 * producto),
                                clase == 1 ? "9001" : ""));
    }

    static inline const QString ColumnasParte =
        "Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Oper_Alta, Fecha_Alta, "
        "Oper_Ult_Modif, Fecha_Ult_Modif)";
    static inline const QString ColumnasServicio =
        "Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, "
        "Pm_Unidad_Lectura, Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Oper_Alta, "
        "Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif)";
    static inline const QString ColumnasLinea =
        "Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, "
        "Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto)";

    Crudo &base;
    const Tamano &tamano;
    std::mt19937 azar;
};

} // namespace

void Sembrar(Crudo &base, const Tamano &tamano)
{
    Sembrador(base, tamano).Sembrar();
}
