-- Quorvex, shared server: from version 3 to version 4.

-- A catalogue has one writer at a time: whoever changes it first counts up its row.

CREATE TABLE Catalogo (
    Ca_Tabla   Texto NOT NULL PRIMARY KEY,
    Ca_Cambios bigint NOT NULL DEFAULT 0
);
INSERT INTO Catalogo (Ca_Tabla) VALUES
    ('Tipo_Equipo'), ('Producto'), ('Tipo_Gasto'), ('Tipo_Servicio'), ('Prioridad_Servicio'), ('Unidad');

-- What whoever is signed in may change.

CREATE VIEW Derecho AS
    SELECT CAST(has_table_privilege('dbo.Plan_Mantenimiento', 'UPDATE') AS integer) AS De_Planes,
           CAST(has_table_privilege('dbo.Producto', 'INSERT') AS integer) AS De_Catalogos;
