-- Quorvex, shared server: from version 2 to version 3.

-- The root of the tree has no row of its own, and nobody else has its key. Rows that older programs wrote stay.

CREATE FUNCTION Proteger_Raiz() RETURNS trigger
    LANGUAGE plpgsql SET search_path = dbo, pg_temp
    AS $$
BEGIN
    RAISE check_violation USING MESSAGE = 'La clave 0000 está reservada para la raíz del árbol.';
END
$$;
CREATE TRIGGER Tep_Raiz BEFORE INSERT OR UPDATE OF Tep_ID ON Tipo_Equipo_Parte
    FOR EACH ROW WHEN (NEW.Tep_ID = '0000') EXECUTE FUNCTION Proteger_Raiz();

-- Whoever writes a log, and whatever he says, signs it with his own name and with the database's time: in the zone that
-- its owner gave it, or else the server's own, since the session's is the planner's to choose.

CREATE FUNCTION Firmar_Registro() RETURNS trigger
    LANGUAGE plpgsql SET search_path = dbo, pg_temp
    AS $$
DECLARE
    zona text := coalesce(
        (SELECT substr(ajuste, length('TimeZone=') + 1)
           FROM pg_db_role_setting JOIN pg_database ON pg_database.oid = setdatabase, unnest(setconfig) AS ajuste
          WHERE datname = current_database() AND setrole = 0 AND ajuste ILIKE 'TimeZone=%'),
        current_setting('log_timezone'));
    hora text := to_char(clock_timestamp() AT TIME ZONE zona, 'YYYY-MM-DD HH24:MI:SS');
BEGIN
    IF TG_TABLE_NAME = 'bitacora' THEN
        NEW.Bi_Oper := session_user;
        NEW.Bi_Fecha := hora;
    ELSE
        NEW.Rc_Oper := session_user;
        NEW.Rc_Fecha := hora;
    END IF;
    RETURN NEW;
END
$$;
CREATE TRIGGER Rc_Firma BEFORE INSERT ON Registro_Cambio FOR EACH ROW EXECUTE FUNCTION Firmar_Registro();
CREATE TRIGGER Bi_Firma BEFORE INSERT ON Bitacora FOR EACH ROW EXECUTE FUNCTION Firmar_Registro();

-- A plan is held by the row of its equipment type here, which only planners reach, through the function: anybody who
-- may sign in could take an advisory lock. The first who holds a plan whose type is in no catalogue makes its row.

CREATE TABLE Plan_Reserva (
    Te_Cve_Tipo_Equipo Clave NOT NULL PRIMARY KEY
);
INSERT INTO Plan_Reserva SELECT Te_Cve_Tipo_Equipo FROM Tipo_Equipo;

CREATE FUNCTION Reservar_Plan_Nuevo() RETURNS trigger
    LANGUAGE plpgsql SECURITY DEFINER SET search_path = dbo, pg_temp
    AS $$
BEGIN
    INSERT INTO Plan_Reserva VALUES (NEW.Te_Cve_Tipo_Equipo) ON CONFLICT DO NOTHING;
    RETURN NULL;
END
$$;
CREATE TRIGGER Te_Reserva AFTER INSERT OR UPDATE OF Te_Cve_Tipo_Equipo ON Tipo_Equipo
    FOR EACH ROW EXECUTE FUNCTION Reservar_Plan_Nuevo();

-- Holds a plan until the transaction ends. False when somebody else holds it, unless it is waited for. Of a key that
-- stands for no plan there is nothing to hold: rows made here are nobody's to delete.

CREATE FUNCTION Reservar_Plan(tipo bpchar, esperar boolean) RETURNS boolean
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

-- Programs of another version do not write the plan: they would not know what this one needs. The triggers are made
-- anew with the rights, since they name the version. The owner knows what he does.

CREATE FUNCTION Rechazar_Programa() RETURNS trigger
    LANGUAGE plpgsql SET search_path = dbo, pg_temp
    AS $$
BEGIN
    IF NOT pg_has_role(session_user, (SELECT nspowner FROM pg_namespace WHERE nspname = 'dbo'), 'MEMBER') THEN
        RAISE object_not_in_prerequisite_state USING MESSAGE =
            'La base de datos es ahora de otra versión de Quorvex: cierre el programa y abra el de esa versión. '
            'No se guardó nada.';
    END IF;
    RETURN NULL;
END
$$;

CREATE OR REPLACE FUNCTION Get_Ruta_Parte_Tipo_Equipo(tipo bpchar, parte bpchar) RETURNS SETOF text
    LANGUAGE sql STABLE SET search_path = dbo, pg_temp
    AS $$
{guion:Get_Ruta_Parte_Tipo_Equipo.sql}
$$;

-- The text that version 2 brought.
DELETE FROM Consulta
 WHERE Co_Nombre = 'PLAN_MANTENIMIENTO'
   AND sha256(convert_to(Co_Texto, 'UTF8')) = '\x3e41a2106b1d2b369aa253ef15955ac29f703dc111b5c3d760e4e9b0d5787a77';
