#include "bench/Tareas.h"

#include "component/Esquema.h"
#include "system/UnidadC.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QHash>
#include <QKeyEvent>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace
{

constexpr QSize Ventana(1280, 760); // as large as the host's

// The F5 key in the tree: it is read again whole.
void Releer(const Taller &taller)
{
    QKeyEvent f5(QEvent::KeyPress, Qt::Key_F5, Qt::NoModifier);
    QCoreApplication::sendEvent(&taller.De<comunesQVX::TreeView>("tvPartes"), &f5);
}

QString Texto(const char *valor)
{
    return QString::fromUtf8(valor);
}

QStringList Textos(const std::vector<const char *> &valores, qsizetype columnas)
{
    QStringList textos;
    for (qsizetype i = 0; i < columnas; ++i)
        textos.append(Texto(valores[static_cast<size_t>(i)]));
    return textos;
}

void Mostrar(QWidget &control)
{
    control.resize(Ventana);
    control.show();
    Taller::Pintar(control);
}

qint64 Sentencias(const std::vector<QByteArray> &textos)
{
    return std::count_if(textos.begin(), textos.end(), [](const QByteArray &texto) {
        return !texto.startsWith("BEGIN") && texto != "COMMIT" && texto != "ROLLBACK";
    });
}

} // namespace

Tareas::Tareas(const Base &nuestra_, const Base &ajena_, const Tamano &tamano_)
    : nuestra(nuestra_), ajena(ajena_), tamano(tamano_), crudo(ajena.AbrirCrudo())
{
}

Tareas::Tareas(const Base &nuestra_, const Tamano &tamano_) : Tareas(nuestra_, nuestra_, tamano_)
{
    solo = true;
}

QStringList Tareas::Nombres()
{
    return {"arbol", "arbol_y_control", "lista", "abrir", "guardar", "exportar", "importar", "copiar"};
}

Tarea Tareas::Preparar(const QString &nombre)
{
    static const QHash<QString, Tarea (Tareas::*)()> todas{
        {"arbol", &Tareas::Arbol},       {"arbol_y_control", &Tareas::ArbolConControl},
        {"lista", &Tareas::Lista},       {"abrir", &Tareas::Abrir},
        {"guardar", &Tareas::Guardar},   {"exportar", &Tareas::Exportar},
        {"importar", &Tareas::Importar}, {"copiar", &Tareas::Copiar},
    };
    if (!todas.contains(nombre))
        qFatal("No hay tarea %s", qPrintable(nombre));
    Tarea tarea = (this->*todas.value(nombre))();
    tarea.nombre = nombre;
    tarea.sentencias = solo ? tarea.debidas : Sentencias(textos);
    return tarea;
}

void Tareas::Grabar(const std::function<void()> &antes, const std::function<void()> &pasos)
{
    taller.reset();
    if (!solo) {
        taller = std::make_unique<Taller>(nuestra, true);
        antes();
        taller->Textos();
        pasos();
        if (textos.empty())
            textos = taller->Textos();
        taller.reset();
    }
    taller = std::make_unique<Taller>(nuestra, false);
    antes();
}

Tarea Tareas::Arbol()
{
    Grabar([this] { taller->Elegir(tipos::Plan); }, [this] { Releer(*taller); });
    Tarea tarea;
    tarea.limite = nuestra.EnServidor() ? 0.8 : 1.0;
    tarea.debidas = tamano.partes + 1;
    tarea.nuestro = [this] {
        return Milisegundos([this] {
            Releer(*taller);
            taller->Pintar();
        });
    };
    tarea.crudo = [this] { return Milisegundos([this] { crudo->Correr(textos); }); };
    return tarea;
}

// The same with the toolkit's own tree as part of the baseline.
Tarea Tareas::ArbolConControl()
{
    Tarea tarea = Arbol();
    tarea.limite = 0;
    auto arbol = std::make_shared<QTreeWidget>();
    arbol->setHeaderHidden(true);
    arbol->setUniformRowHeights(true);
    Mostrar(*arbol);
    tarea.crudo = [this, arbol] {
        return Milisegundos([&] {
            arbol->clear();
            auto *raiz = new QTreeWidgetItem(arbol.get(), {"RAIZ"});
            QHash<QByteArray, QTreeWidgetItem *> nodos{{"0000", raiz}};
            crudo->Correr(textos, [&](const std::vector<const char *> &parte) {
                nodos.insert(parte[1],
                             new QTreeWidgetItem(nodos.value(parte[2]), {Texto(parte[1]) + " - " + Texto(parte[3])}));
            });
            raiz->setExpanded(true);
            Taller::Pintar(*arbol);
        });
    };
    return tarea;
}

Tarea Tareas::Lista()
{
    const auto elegir = [this] { taller->ElegirNodo("N000001"); };
    Grabar([this] { taller->Elegir(tipos::Detalle); }, elegir);
    Tarea tarea;
    tarea.limite = nuestra.EnServidor() ? 0 : 1.5;
    tarea.debidas = 2; // the stored query's text, and the query
    tarea.nuestro = [this, elegir] {
        return Milisegundos([&] {
            elegir();
            taller->Pintar();
        });
    };
    auto lista = std::make_shared<QTreeWidget>();
    lista->setColumnCount(8);
    lista->setRootIsDecorated(false);
    lista->setUniformRowHeights(true);
    Mostrar(*lista);
    tarea.crudo = [this, lista] {
        return Milisegundos([&] {
            lista->clear();
            crudo->Correr(textos, [&](const std::vector<const char *> &fila) {
                if (fila.size() == 8)
                    lista->addTopLevelItem(new QTreeWidgetItem(Textos(fila, 8)));
            });
            Taller::Pintar(*lista);
        });
    };
    return tarea;
}

// Opens the first service of the list and gives how long it took until its editor was painted; then does the steps
// there, and closes it if they did not.
double Tareas::EnElEditor(const std::function<void(QWidget &editor)> &pasos)
{
    auto &lista = taller->De<comunesQVX::ListView>("lvServicios");
    lista.setCurrentItem(lista.topLevelItem(0));
    double abierto = 0;
    QElapsedTimer reloj;
    QTimer espera; // the job may draw before the editor is there
    espera.callOnTimeout([&] {
        QWidget *editor = QApplication::activeModalWidget();
        if (!editor)
            return;
        espera.stop();
        Taller::Pintar(*editor);
        abierto = static_cast<double>(reloj.nsecsElapsed()) / 1e6;
        Taller::Asentar();
        pasos(*editor);
        if (editor == QApplication::activeModalWidget())
            editor->close();
    });
    reloj.start();
    espera.start(0);
    Taller::EnUnEvento([&] { Q_EMIT lista.DblClick(); });
    if (espera.isActive())
        qFatal("El servicio no se abrió");
    return abierto;
}

// How many lines of the long service have an expense type.
int Tareas::Refacciones()
{
    int cuantas = 0;
    crudo->Correr("SELECT 1 FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = '9003' AND Pmd_Tipo = '02'",
                  [&](const std::vector<const char *> &) { ++cuantas; });
    return cuantas;
}

Tarea Tareas::Abrir()
{
    const auto listar = [this] {
        taller->Elegir(tipos::Detalle);
        taller->ElegirNodo("N000001");
    };
    Grabar(listar, [this] { EnElEditor([this](QWidget &) { textos = taller->Textos(); }); });
    Tarea tarea;
    tarea.debidas = 11 + tamano.enServicio + Refacciones(); // part, service, lines, masks, catalogues; each product
    tarea.limite = nuestra.EnServidor() ? 0 : 1.5;
    tarea.nuestro = [this] { return EnElEditor([](QWidget &) {}); };
    // The rows of the three grids, in a dialog of their own.
    tarea.crudo = [this] {
        return Milisegundos([this] {
            QDialog dialogo;
            QTabWidget fichas(&dialogo);
            QHash<QByteArray, QTableWidget *> tablas;
            for (const char *tipo : {"01", "02", "03"}) {
                tablas.insert(tipo, new QTableWidget(0, 8));
                fichas.addTab(tablas.value(tipo), tipo);
            }
            (new QVBoxLayout(&dialogo))->addWidget(&fichas);
            crudo->Correr(textos, [&](const std::vector<const char *> &linea) {
                QTableWidget *tabla = linea.size() > 8 ? tablas.value(linea[4]) : nullptr;
                if (!tabla)
                    return;
                const int fila = tabla->rowCount();
                tabla->setRowCount(fila + 1);
                for (int i = 0; i < 8; ++i)
                    tabla->setItem(fila, i, new QTableWidgetItem(Texto(linea[static_cast<size_t>(i) + 2])));
            });
            Mostrar(dialogo);
        });
    };
    return tarea;
}

Tarea Tareas::Guardar()
{
    const auto listar = [this] {
        taller->Elegir(tipos::Detalle);
        taller->ElegirNodo("N000001");
    };
    const auto aceptar = [](const QWidget &editor) {
        Taller::EnUnEvento([&] { En<QAction>(editor, "Aceptar").trigger(); });
    };
    Grabar(listar, [&] {
        EnElEditor([&](QWidget &editor) {
            taller->Textos();
            aceptar(editor);
            textos = taller->Textos();
        });
    });
    Tarea tarea;
    // The service, its log and its old lines; for each line the product's state, key and mask of the line, the line.
    tarea.debidas = 5 + 4 * tamano.enServicio + Refacciones();
    tarea.limite = nuestra.EnServidor() ? 0 : 1.0;
    tarea.nuestro = [this, aceptar] {
        double guardado = 0;
        EnElEditor([&](QWidget &editor) { guardado = Milisegundos([&] { aceptar(editor); }); });
        return guardado;
    };
    tarea.crudo = [this] { return Milisegundos([this] { crudo->Correr(textos); }); };
    return tarea;
}

Tarea Tareas::Exportar()
{
    const QString archivo = carpeta.filePath("plan.xml");
    const auto preparar = [this, archivo] {
        taller->Persona().archivo = archivo;
        taller->Elegir(tipos::Plan);
    };
    Grabar(preparar, [this] { taller->Pulsar("B1"); });
    if (!solo)
        documento.emplace(archivo);
    Tarea tarea;
    tarea.limite = nuestra.EnServidor() ? 0 : 1.2;
    tarea.debidas = 2 * (tamano.partes + 1) + tamano.servicios;
    tarea.nuestro = [this] { return Milisegundos([this] { taller->Pulsar("B1"); }); };
    tarea.crudo = [this] {
        return Milisegundos([this] {
            crudo->Correr(textos);
            documento->Escribir(carpeta.filePath("crudo.xml"));
        });
    };
    return tarea;
}

Tarea Tareas::Importar()
{
    const QString archivo = carpeta.filePath("plan.xml");
    Grabar(
        [this, archivo] {
            taller->Persona().archivo = archivo;
            taller->Elegir(tipos::Plan);
            taller->Pulsar("B1");
        },
        [this] { taller->Pulsar("B2"); });
    Tarea tarea;
    tarea.limite = nuestra.EnServidor() ? 0 : 1.0;
    // Keys and their masks among them, and the tree that is shown at the end.
    tarea.debidas = 2 * tamano.partes + 3 * tamano.servicios + 4 * tamano.lineas + 6;
    tarea.nuestro = [this] { return Milisegundos([this] { taller->Pulsar("B2"); }); };
    tarea.crudo = [this, archivo] {
        return Milisegundos([&] {
            DocumentoCrudo::Validar(archivo, qvx::RutaEnUnidadC(KT580::RutaEsquema));
            crudo->Correr(textos);
        });
    };
    return tarea;
}

Tarea Tareas::Copiar()
{
    const auto preparar = [this] {
        taller->Persona().clave = tipos::Copia;
        taller->Elegir(tipos::Plan);
    };
    Grabar(preparar, [this] { taller->Pulsar("B3"); });
    Tarea tarea;
    tarea.limite = nuestra.EnServidor() ? 0 : 1.05;
    tarea.debidas = tamano.partes + 9; // nearly all of them the tree's
    tarea.nuestro = [this, preparar] {
        preparar();
        return Milisegundos([this] { taller->Pulsar("B3"); });
    };
    tarea.crudo = [this] { return Milisegundos([this] { crudo->Correr(textos); }); };
    return tarea;
}
