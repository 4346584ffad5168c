#pragma once

#include "app/programa/PedidoDePrograma.h"
#include "app/reportes/Cifras.h"
#include "app/reportes/TextoDeArchivo.h"
#include "data/Servidor.h"
#include "plan/RegistrosDeCatalogo.h"

#include <QString>
#include <QStringList>
#include <optional>

// The command line of the stand-alone host.
struct Argumentos {
    QString baseDatos;                     // file; the user's data folder when neither it nor a server is given
    bool baseDada = false;                 // the command line names the file
    bool lectura = false;                  // nothing can be changed on the server
    std::optional<qvx::Servidor> servidor; // in its place
    QString direccion;                     // of the server, as it was given
    QString tipoEquipo;                    // equipment type to open on, "" for none
    QString operador;                      // the system's user when not given; not of a server, which knows its own
    bool sinEjemplos = false;
    // Without a window: at most one of the five, and its file. exportar holds the equipment type's key.
    QString exportar;
    bool importar = false;
    bool validar = false;
    bool importarCatalogo = false;
    bool exportarCatalogo = false;
    QString archivo;
    bool si = false;                                // what an import asks is answered Yes, what was told is written
    const qvx::TablaDeCatalogo *catalogo = nullptr; // of the last two
    // How a spreadsheet's text is written, where the command line says it.
    std::optional<QChar> delimitador;
    std::optional<csv::Decimal> decimal;
    std::optional<csv::Codificacion> codificacion;
    bool revisar = false; // without a window: what the trees do not reach
    // Without a window: at most one of the two, of the equipment types with these keys, none for all.
    bool actualizarCostos = false;
    bool completarGastos = false;
    QStringList claves;
    // Without a window: a copy of the file, or the file, or the plan with the key, from a copy. Which is in archivo.
    bool respaldar = false;
    bool restaurar = false;
    bool comparar = false; // without a window: the two plans, documents or moments that claves holds
    // Without a window, of the history: at most one of the four. Its operations, of the plan that claves holds; one
    // alone; one to take back; those to delete that are older than so many days.
    bool historial = false;
    bool deshacer = false;
    bool rehacer = false;
    std::optional<int> depurar;
    qint64 operacion = 0;
    PedidoDePrograma programa; // without a window: a programme or a report
    bool crearEsquema = false; // without a window: on the server, at most one of the two
    bool actualizarEsquema = false;
    bool conEjemplos = false;
    bool ayuda = false;
    bool version = false;
    QString error; // why the command line is wrong, "" when it is right

    static Argumentos Leer(const QStringList &linea);
    bool EsIntercambio() const { return !exportar.isEmpty() || importar || validar; }
    bool EsDeCatalogo() const { return importarCatalogo || exportarCatalogo; }
    bool EsDeCopias() const { return respaldar || restaurar; }
    bool EsDeHistorial() const { return historial || deshacer || rehacer || depurar; }
    bool EsDeCostos() const { return actualizarCostos || completarGastos; }
    static QString Ayuda();

    static QString BaseDelUsuario();
    // Of whoever signs changes in a file and gave no name.
    static QString OperadorDelSistema();
    // The same window on another database, a file or the address of a server, and nothing else. Raises an
    // ErrorEjecucion for an address that is none.
    Argumentos Hacia(const QString &base) const;
    // The file, or the address of the server.
    QString Base() const { return servidor ? direccion : baseDatos; }
    // With a server alone.
    void PonerLectura(bool si);
    // Why somebody of this name cannot sign changes, "" when he can.
    static QString RevisarOperador(const QString &operador);
};
