-- Quorvex, embedded engine: from version 2 to version 3.

-- The root of the tree has no row of its own, and nobody else has its key. Rows that older programs wrote stay.

CREATE TRIGGER Tep_Raiz_Alta BEFORE INSERT ON Tipo_Equipo_Parte WHEN rtrim(NEW.Tep_ID) = '0000' BEGIN
    SELECT RAISE(ABORT, 'La clave 0000 está reservada para la raíz del árbol.'); END;

CREATE TRIGGER Tep_Raiz_Cambio BEFORE UPDATE OF Tep_ID ON Tipo_Equipo_Parte WHEN rtrim(NEW.Tep_ID) = '0000' BEGIN
    SELECT RAISE(ABORT, 'La clave 0000 está reservada para la raíz del árbol.'); END;

-- What was logged stays, and the next line has the next number, so that none is used twice. Who signs and when is the
-- program's word: a file knows no operators, and who owns it may do what he likes with it.

CREATE TRIGGER Rc_Numero AFTER INSERT ON Registro_Cambio
    WHEN NEW.Rc_ID <> 1 + coalesce((SELECT max(Rc_ID) FROM Registro_Cambio WHERE Rc_ID <> NEW.Rc_ID), 0) BEGIN
    SELECT RAISE(ABORT, 'El número de un registro lo pone la base de datos.'); END;
CREATE TRIGGER Rc_Cambio BEFORE UPDATE ON Registro_Cambio BEGIN
    SELECT RAISE(ABORT, 'Un registro no se cambia.'); END;
CREATE TRIGGER Rc_Baja BEFORE DELETE ON Registro_Cambio BEGIN
    SELECT RAISE(ABORT, 'Un registro no se elimina.'); END;

CREATE TRIGGER Bi_Numero AFTER INSERT ON Bitacora
    WHEN NEW.Bi_ID <> 1 + coalesce((SELECT max(Bi_ID) FROM Bitacora WHERE Bi_ID <> NEW.Bi_ID), 0) BEGIN
    SELECT RAISE(ABORT, 'El número de un registro lo pone la base de datos.'); END;
CREATE TRIGGER Bi_Cambio BEFORE UPDATE ON Bitacora BEGIN
    SELECT RAISE(ABORT, 'Un registro no se cambia.'); END;
CREATE TRIGGER Bi_Baja BEFORE DELETE ON Bitacora BEGIN
    SELECT RAISE(ABORT, 'Un registro no se elimina.'); END;
