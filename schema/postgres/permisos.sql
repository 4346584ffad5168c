-- Quorvex, shared server: who may do what. Planners have what the statements of the screen need, readers may look.
-- Both are roles of the whole server: they may be there already for another database of it.

DO $$
DECLARE
    rol text;
BEGIN
    FOREACH rol IN ARRAY ARRAY['quorvex_planificadores', 'quorvex_lectores'] LOOP
        CONTINUE WHEN EXISTS (SELECT FROM pg_roles WHERE rolname = rol);
        BEGIN
            EXECUTE format('CREATE ROLE %I NOLOGIN', rol);
        EXCEPTION WHEN duplicate_object OR unique_violation THEN
            NULL; -- by another database's administrator, at the same time
        END;
    END LOOP;
    EXECUTE format('REVOKE CREATE, TEMPORARY ON DATABASE %I FROM PUBLIC', current_database());
    IF to_regnamespace('public') IS NOT NULL THEN
        REVOKE CREATE ON SCHEMA public FROM PUBLIC;
    END IF;
    -- Only the owner takes rights away; from anybody else the server keeps them with a warning.
    FOREACH rol IN ARRAY ARRAY['quorvex_planificadores', 'quorvex_lectores'] LOOP
        IF has_database_privilege(rol, current_database(), 'CREATE, TEMPORARY')
           OR has_schema_privilege(rol, to_regnamespace('public'), 'CREATE') THEN
            RAISE insufficient_privilege USING MESSAGE = 'role ' || rol || ' could create tables of its own';
        END IF;
    END LOOP;
END
$$;

REVOKE ALL ON SCHEMA dbo FROM PUBLIC;
REVOKE ALL ON ALL FUNCTIONS IN SCHEMA dbo FROM PUBLIC;

GRANT USAGE ON SCHEMA dbo TO quorvex_planificadores, quorvex_lectores;
GRANT EXECUTE ON FUNCTION Get_Ruta_Parte_Tipo_Equipo(bpchar, bpchar), Numero_De_Clave(bpchar)
    TO quorvex_planificadores, quorvex_lectores;
GRANT SELECT ON Esquema, Tipo_Equipo, Producto, Tipo_Gasto, Tipo_Servicio, Prioridad_Servicio, Unidad, Formato_Clave,
    Consulta, Tipo_Equipo_Parte, Plan_Mantenimiento, Plan_Mantenimiento_Detalle
    TO quorvex_planificadores, quorvex_lectores;
GRANT INSERT, UPDATE, DELETE ON Tipo_Equipo_Parte, Plan_Mantenimiento, Plan_Mantenimiento_Detalle
    TO quorvex_planificadores;
GRANT INSERT ON Registro_Cambio, Bitacora TO quorvex_planificadores;
