-- Quorvex, embedded engine: from version 3 to version 4.

-- A catalogue has one writer at a time: whoever changes it first counts up its row.

CREATE TABLE Catalogo_Cambio (
    Ca_Tabla   TEXT NOT NULL PRIMARY KEY,
    Ca_Cambios INTEGER NOT NULL DEFAULT 0
);
INSERT INTO Catalogo_Cambio (Ca_Tabla) VALUES
    ('Tipo_Equipo'), ('Producto'), ('Tipo_Gasto'), ('Tipo_Servicio'), ('Prioridad_Servicio'), ('Unidad');

-- What whoever is signed in may change. Who can write a file may change all of it.

CREATE VIEW Derecho AS SELECT 1 AS De_Planes, 1 AS De_Catalogos;

-- Where a product is used, in all plans.

CREATE INDEX Pmd_Por_Producto ON Plan_Mantenimiento_Detalle (Pr_Cve_Producto);
