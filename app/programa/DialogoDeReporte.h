#pragma once

#include "app/programa/Reportes.h"
#include "app/reportes/Papel.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPrinter;

// How a report is to be, and where it is to go: the screen, a PDF, a printer. It stays open until it is closed, so that
// what was seen can be sent.
class DialogoDeReporte : public QDialog
{
    Q_OBJECT

public:
    enum class Clase { Plan, Hojas, Materiales };
    struct Oferta {
        Clase clase = Clase::Plan;
        QString nombre; // "Plan de mantenimiento"
        // What may be chosen of it ("Las fechas que se muestran"), the first one proposed; none where there is one
        // only.
        QStringList alcances;
        bool puede = false; // keep the plant's name
    };
    // hacer: the report, by what is chosen, its scope as a place among the offered.
    using Hacer = std::function<impreso::Documento(const programa::Encargo &, int)>;
    DialogoDeReporte(const Oferta &oferta, const programa::Encargo &encargo, Hacer hacer, QWidget *duena);
    // The one that this person chose last.
    static impreso::Papel PapelRecordado();

private:
    programa::Encargo Elegido() const;
    impreso::Papel PapelElegido() const;
    impreso::Documento Documento() const;
    void Recordar();
    void VerAntes();
    void HacerPdf();
    void Imprimir();
    bool Mandar(QPrinter &impresora, const impreso::Documento &documento);

    Oferta oferta;
    programa::Encargo encargo;
    Hacer hacer;
    QLineEdit *txtPlanta;
    QComboBox *cboPapel;
    QComboBox *cboAlcance;
    QCheckBox *chkCostos;
    QCheckBox *chkLineas;
    QCheckBox *chkPorParte;
};

// Shows how far a report is while it is made, and lets the person stop it. Nothing is shown for what is quick.
class AvanceDeReporte
{
public:
    AvanceDeReporte(QWidget &duena, const QString &titulo);
    ~AvanceDeReporte();
    AvanceDeReporte(const AvanceDeReporte &) = delete;
    AvanceDeReporte &operator=(const AvanceDeReporte &) = delete;

    bool operator()(int hecho, int todo);

private:
    struct Cuadro;
    std::unique_ptr<Cuadro> cuadro;
};
