-- Quorvex, embedded engine: from version 6 to version 7.

-- What this version brings is the shared server's alone: a file's commit is never in doubt.
