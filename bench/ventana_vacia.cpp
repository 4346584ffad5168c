// The baseline of a start: an empty window of the toolkit, as large as the host's.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char **argv)
{
    const QApplication aplicacion(argc, argv);
    QMainWindow ventana;
    ventana.resize(1280, 760);
    ventana.show();
    return QApplication::exec();
}
