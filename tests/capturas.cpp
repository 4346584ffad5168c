// Takes the pictures of the documents from the real screen, on the example plans: capturas FOLDER.

#include "controls/Comunes.h"
#include "controls/Controles.h"
#include "controls/SSOleDBGrid.h"
#include "controls/ssTbQvx.h"
#include "support/Plan.h"

#include <QDir>

using comunesQVX::ListView;
using comunesQVX::TreeView;

namespace
{

QDir carpeta;

void Guardar(QWidget &ventana, const QString &nombre)
{
    QCoreApplication::processEvents();
    if (!ventana.grab().save(carpeta.filePath(nombre + ".png")))
        qFatal("No se pudo guardar %s", qPrintable(nombre));
}

} // namespace

int main(int argc, char **argv)
{
    qvx::Aplicacion aplicacion(argc, argv);
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1])))
        qFatal("Uso: capturas CARPETA");
    carpeta.setPath(QString::fromLocal8Bit(argv[1]));

    Escenario escenario(true);
    QWidget &pantalla = escenario.Pantalla("0001");
    auto &arbol = escenario.De<TreeView>("tvPartes");
    auto &lista = escenario.De<ListView>("lvServicios");
    arbol.expandAll();
    const QString parte = "N"
                          + escenario
                                .Motor("SELECT Tep_ID FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0001' "
                                       "GROUP BY Tep_ID ORDER BY count(*) DESC LIMIT 1")
                                .toString();
    ElegirNodo(arbol, parte);
    QTest::mouseClick(lista.viewport(), Qt::LeftButton, {}, lista.visualItemRect(lista.topLevelItem(0)).center());
    Guardar(*pantalla.window(), "pantalla");

    EnElDialogo([&](QWidget &editor) {
        auto &fichas = escenario.En<ssTabQvx::ssTbQvx>(editor, "ssTabQvx");
        const char *nombres[] = {"servicio", "mano_de_obra", "refacciones", "herramientas_y_costos"};
        for (int pagina = 0; pagina < 4; ++pagina) {
            fichas.setTab(pagina);
            Guardar(editor, nombres[pagina]);
        }
    });
    QTest::keyClick(&lista, Qt::Key_Return);

    EnElDialogo([&](QWidget &dialogo) { Guardar(dialogo, "parte"); });
    Pulsar(escenario.De<QWidget>("Controles"), "Nuevo");
    return 0;
}
