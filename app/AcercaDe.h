#pragma once

class QString;
class QWidget;

// Which program this is, what it stands on, and the database that is open with the version of its schema.
void MostrarAcercaDe(const QWidget &ventana, const QString &nombreDeBase, bool enServidor);
