-- Quorvex, shared server: from version 3 to version 4.

-- A catalogue has one writer at a time: whoever changes it first counts up its row.

CREATE TABLE Catalogo_Cambio (
    Ca_Tabla   Texto NOT NULL PRIMARY KEY,
    Ca_Cambios bigint NOT NULL DEFAULT 0
);
INSERT INTO Catalogo_Cambio (Ca_Tabla) VALUES
    ('Tipo_Equipo'), ('Producto'), ('Tipo_Gasto'), ('Tipo_Servicio'), ('Prioridad_Servicio'), ('Unidad');

-- What whoever is signed in may change.

CREATE VIEW Derecho AS
    SELECT CAST(has_table_privilege('dbo.Plan_Mantenimiento', 'UPDATE') AS integer) AS De_Planes,
           CAST(has_table_privilege('dbo.Producto', 'INSERT') AS integer) AS De_Catalogos;

-- Holds a plan until the transaction ends. False when somebody else holds it, unless it is waited for. Of a key that
-- stands for no plan there is nothing to hold: rows made here are nobody's to delete.

CREATE OR REPLACE FUNCTION Reservar_Plan(tipo bpchar, esperar boolean) RETURNS boolean
    LANGUAGE plpgsql SECURITY DEFINER SET search_path = dbo, pg_temp
    AS $$
BEGIN
    LOOP
        IF esperar THEN
            PERFORM FROM Plan_Reserva WHERE Te_Cve_Tipo_Equipo = tipo FOR UPDATE;
        ELSE
            PERFORM FROM Plan_Reserva WHERE Te_Cve_Tipo_Equipo = tipo FOR UPDATE SKIP LOCKED;
        END IF;
        IF FOUND THEN
            RETURN true;
        END IF;
        IF EXISTS (SELECT FROM Plan_Reserva WHERE Te_Cve_Tipo_Equipo = tipo) THEN
            RETURN false;
        END IF;
        IF NOT EXISTS (SELECT FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = tipo)
           AND NOT EXISTS (SELECT FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = tipo)
           AND NOT EXISTS (SELECT FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = tipo) THEN
            RETURN true;
        END IF;
        INSERT INTO Plan_Reserva VALUES (tipo) ON CONFLICT DO NOTHING;
    END LOOP;
END
$$;

-- Where a product is used, in all plans.

CREATE INDEX Pmd_Por_Producto ON Plan_Mantenimiento_Detalle (Pr_Cve_Producto);
