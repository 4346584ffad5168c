#pragma once

#include "app/catalogos/ImportacionDeCatalogo.h"
#include "app/reportes/TextoDeArchivo.h"

#include <QDialog>
#include <memory>

class ModeloDeImportacion;
class QComboBox;

namespace Ui
{
class DialogoImportarCatalogo;
}

// What a spreadsheet would make of a catalogue, for a person to look at, to say how it is to be read, and to write it.
class DialogoImportarCatalogo : public QDialog
{
    Q_OBJECT

public:
    // True when something was written. datos: a file's bytes, or the text of the clipboard in UTF-8; nombre: where they
    // come from, for the person. What cannot be read is told in a message.
    static bool Importar(QWidget *duena, const qvx::TablaDeCatalogo &tabla, const QByteArray &datos,
                         const QString &nombre);
    // Likewise, of a file that the person chooses.
    static bool ImportarArchivo(QWidget *duena, const qvx::TablaDeCatalogo &tabla);

    // Raises an ErrorEjecucion when the bytes are no text, and data errors.
    DialogoImportarCatalogo(QWidget *duena, const qvx::TablaDeCatalogo &tabla, const QByteArray &datos,
                            const QString &nombre);
    ~DialogoImportarCatalogo() override;

private:
    void Disponer(const QString &nombre);
    void Conectar();
    void LeerTexto();
    void LeerFilas();
    void LeerColumnas(std::optional<bool> conTitulos);
    void PonerColumnas();
    void ElegirColumna(int columna);
    void Juzgar();
    void NoLeer(const QString &motivo);
    void Mostrar(const QString &aviso);
    void GuardarErrores();
    void Escribir();
    QMap<QString, QString> Recordadas() const;
    void Recordar() const;

    std::unique_ptr<Ui::DialogoImportarCatalogo> ui;
    const qvx::TablaDeCatalogo &tabla;
    const QByteArray datos;
    qvx::SituacionDeCatalogo situacion;
    QString texto;
    QString alPie;           // what is to be said of the whole
    QList<csv::Fila> leidas; // of which one may be headings
    HojaLeida hoja;
    ImportacionDeCatalogo importacion;
    ModeloDeImportacion *modelo;
    QList<QComboBox *> columnas; // as ColumnasDeImportacion
    bool delimitadorElegido = false;
    bool decimalElegido = false;
};
