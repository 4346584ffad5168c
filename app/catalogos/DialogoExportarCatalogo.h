#pragma once

#include "app/reportes/Csv.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class DialogoExportarCatalogo;
}

// How a CSV is to be written; what was chosen last is remembered.
class DialogoExportarCatalogo : public QDialog
{
    Q_OBJECT

public:
    // Writes a table where the person says: a workbook, or a CSV in the format that is asked for. Errors are told.
    static void Exportar(QWidget *duena, const Hoja &hoja, bool libro);

    explicit DialogoExportarCatalogo(QWidget *duena);
    ~DialogoExportarCatalogo() override;
    csv::Formato Formato() const;

private:
    void Recordar() const;

    std::unique_ptr<Ui::DialogoExportarCatalogo> ui;
};
