-- dbo.Get_Ruta_Parte_Tipo_Equipo({1} equipment type, {2} part): the descriptions from the top part down to the part.
-- No row when there is no such part. The root "0000" has no row of its own and gives its name. The level ends rings.
WITH RECURSIVE argumentos (tipo, parte) AS (VALUES ({1}, {2})),
ruta (tipo, padre, texto, nivel) AS (
    SELECT p.Te_Cve_Tipo_Equipo, p.Tep_Padre, CAST(p.Tep_Descripcion AS text), 1
      FROM argumentos
      JOIN Tipo_Equipo_Parte p ON p.Te_Cve_Tipo_Equipo = argumentos.tipo AND p.Tep_ID = argumentos.parte
    UNION ALL
    SELECT p.Te_Cve_Tipo_Equipo, p.Tep_Padre, p.Tep_Descripcion || ' / ' || ruta.texto, ruta.nivel + 1
      FROM ruta
      JOIN Tipo_Equipo_Parte p ON p.Te_Cve_Tipo_Equipo = ruta.tipo AND p.Tep_ID = ruta.padre
     WHERE ruta.nivel < 500
)
SELECT 'RAIZ' AS valor FROM argumentos WHERE rtrim(parte) = '0000'
UNION ALL
SELECT texto FROM ruta WHERE nivel = (SELECT max(nivel) FROM ruta)
