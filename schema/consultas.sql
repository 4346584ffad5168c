-- Quorvex: stored queries, in their newest text, which goes where there is none: a step that brings another text takes
-- away the one before, and leaves an administrator's own. {sqlite:…|postgres:…} is what each engine needs.

INSERT INTO Consulta VALUES ('PLAN_MANTENIMIENTO',
'SELECT Plan_Mantenimiento.Pm_ID AS Folio,
       Plan_Mantenimiento.Ts_Cve_Tipo_Servicio AS Servicio,
       Tipo_Servicio.Ts_Descripcion AS Descripcion,
       CASE WHEN Plan_Mantenimiento.Pm_Frecuencia = 0 THEN '''' ELSE {sqlite:Plan_Mantenimiento.Pm_Frecuencia|
            postgres:CAST(trim_scale(Plan_Mantenimiento.Pm_Frecuencia) AS text)} END AS Dias,
       CASE WHEN Plan_Mantenimiento.Pm_Lectura = 0 THEN ''''
            ELSE {sqlite:Plan_Mantenimiento.Pm_Lectura|
            postgres:trim_scale(Plan_Mantenimiento.Pm_Lectura)} || '' '' || Plan_Mantenimiento.Pm_Unidad_Lectura END AS Lectura,
       Plan_Mantenimiento.Pm_Tiempo_Estimado AS Tiempo_Estimado,
       CASE WHEN Plan_Mantenimiento.Pm_Requiere_Paro = ''SI'' THEN ''Sí'' ELSE ''No'' END AS Requiere_Paro,
       Prioridad_Servicio.Ps_Descripcion AS Prioridad
  FROM Plan_Mantenimiento
  LEFT JOIN Tipo_Servicio
    ON Tipo_Servicio.Ts_Cve_Tipo_Servicio = Plan_Mantenimiento.Ts_Cve_Tipo_Servicio
  LEFT JOIN Prioridad_Servicio
    ON Prioridad_Servicio.Ps_Cve_Prioridad = Plan_Mantenimiento.Pm_Prioridad
 WHERE {PARAMETROS}
 ORDER BY Plan_Mantenimiento.Pm_ID')
ON CONFLICT (Co_Nombre) DO NOTHING;
