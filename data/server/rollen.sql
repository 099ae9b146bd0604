-- Roles, rights and the empty database of a competition on a PostgreSQL server (15 or newer).
--
--   psql -U postgres -v datenbank=pokal2026 -f rollen.sql
--
-- Run it as a superuser, once for each competition. It may run again: what is there already stays, and rights are
-- granted anew. Passwords are set afterwards: \password qk_besitzer, \password qk_buero.
--
--   qk_besitzer  owns the competition: makes it (qk-wettkampf neu, demo), moves it in and out (umziehen)
--   qk_buero     what the desks work with: reads and writes rows; makes the program's own tables where they are
--                missing; can't drop, empty, alter or index a table of the owner, make roles or databases, or open
--                another competition; sees the server's figures

\set ON_ERROR_STOP on
\if :{?datenbank}
\else
  \warn 'Es fehlt der Name der Datenbank: psql -v datenbank=NAME -f rollen.sql'
  \quit
\endif

-- Roles belong to the whole server: a second competition finds them there.
SELECT format('CREATE ROLE %I LOGIN NOSUPERUSER NOCREATEDB NOCREATEROLE', name)
  FROM (VALUES ('qk_besitzer'), ('qk_buero')) AS wanted(name)
 WHERE NOT EXISTS (SELECT 1 FROM pg_roles WHERE rolname = name)
\gexec

-- UTF8 whatever the server's default is: names and texts are German.
SELECT format('CREATE DATABASE %I OWNER qk_besitzer ENCODING ''UTF8'' TEMPLATE template0', :'datenbank')
 WHERE NOT EXISTS (SELECT 1 FROM pg_database WHERE datname = :'datenbank')
\gexec

\connect :"datenbank"

-- By default everybody may connect to every database and make temporary tables there.
REVOKE ALL ON DATABASE :"datenbank" FROM PUBLIC;
GRANT CONNECT ON DATABASE :"datenbank" TO qk_buero;

-- Nobody keeps anything in the schema that every database has.
REVOKE ALL ON SCHEMA public FROM PUBLIC;

-- All of a competition stands in the schema "dao", which the first command of the owner makes: so the rights are
-- given beforehand, to whatever the owner will make in this database. USAGE to see the tables; CREATE only for the
-- program's own ones, which a desk makes when they are missing.
ALTER DEFAULT PRIVILEGES FOR ROLE qk_besitzer GRANT USAGE, CREATE ON SCHEMAS TO qk_buero;
-- The owner's tables: rows only. No TRUNCATE, REFERENCES or TRIGGER. Sequences hand out the auto numbers, and are
-- set where rows came in with numbers of their own.
ALTER DEFAULT PRIVILEGES FOR ROLE qk_besitzer GRANT SELECT, INSERT, UPDATE, DELETE ON TABLES TO qk_buero;
ALTER DEFAULT PRIVILEGES FOR ROLE qk_besitzer GRANT USAGE, SELECT, UPDATE ON SEQUENCES TO qk_buero;
-- And the other way round: what a desk made, the owner works with and moves out.
ALTER DEFAULT PRIVILEGES FOR ROLE qk_buero GRANT SELECT, INSERT, UPDATE, DELETE ON TABLES TO qk_besitzer;
ALTER DEFAULT PRIVILEGES FOR ROLE qk_buero GRANT USAGE, SELECT, UPDATE ON SEQUENCES TO qk_besitzer;

-- Whether the standby follows, and how far it is behind, is told to those alone who may read the server's figures.
GRANT pg_read_all_stats TO qk_buero, qk_besitzer;
