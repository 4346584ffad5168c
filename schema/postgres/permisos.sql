-- Quorvex, shared server: who may do what. Planners have what the statements of the screen need, readers may look.
-- Both are roles of the whole server: they may be there already for another database of it.

DO $$
BEGIN
    IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = 'quorvex_planificadores') THEN
        CREATE ROLE quorvex_planificadores NOLOGIN;
    END IF;
    IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = 'quorvex_lectores') THEN
        CREATE ROLE quorvex_lectores NOLOGIN;
    END IF;
    EXECUTE format('REVOKE TEMPORARY ON DATABASE %I FROM PUBLIC', current_database());
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
