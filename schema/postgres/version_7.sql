-- Quorvex, shared server: from version 6 to version 7.

-- One row for each transaction of a program, under a name that nobody else has. A program whose connection is lost while
-- it commits looks for the row by writing it: that waits for the transaction's end, and one that comes after is refused.

CREATE TABLE Desenlace (
    Ds_Ficha   uuid NOT NULL PRIMARY KEY,
    Ds_Momento timestamptz NOT NULL DEFAULT now()
);
CREATE INDEX Ds_Por_Momento ON Desenlace (Ds_Momento);

-- Nobody asks after a month. Each new row takes two old ones away, but for those that others take at the same time.

CREATE FUNCTION Olvidar_Desenlaces() RETURNS trigger
    LANGUAGE plpgsql SECURITY DEFINER SET search_path = dbo, pg_temp
    AS $$
BEGIN
    DELETE FROM Desenlace WHERE Ds_Ficha IN
        (SELECT Ds_Ficha FROM Desenlace WHERE Ds_Momento < now() - interval '30 days'
          ORDER BY Ds_Momento LIMIT 2 FOR UPDATE SKIP LOCKED);
    RETURN NULL;
END
$$;
CREATE TRIGGER Ds_Olvido AFTER INSERT ON Desenlace FOR EACH STATEMENT EXECUTE FUNCTION Olvidar_Desenlaces();
