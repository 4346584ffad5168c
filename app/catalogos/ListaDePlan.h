#pragma once

class QTreeView;

// Titles and texts fit, and none takes more than its share of the window.
void AjustarColumnas(QTreeView &lista);
