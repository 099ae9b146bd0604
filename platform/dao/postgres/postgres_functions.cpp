#include "platform/dao/postgres/postgres_functions.h"

namespace qk::dao::sql {
namespace {

constexpr auto kGerman =
    "CREATE COLLATION IF NOT EXISTS german (provider = icu, locale = 'de-u-ks-level2', deterministic = "
    "false)";

/// The German text of a number has at most 15 digits, as extra_float_digits 0 gives them.
constexpr const char* kFunctions[] = {
    R"sql(CREATE OR REPLACE FUNCTION qk_german(n float8) RETURNS text LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE
SET extra_float_digits = 0 AS $$
  SELECT CASE WHEN n = 0 THEN '0' WHEN n = 'infinity' THEN 'INF' WHEN n = '-infinity' THEN '-INF'
              ELSE upper(replace(n::text, '.', ',')) END $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_german(t text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT t $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_german(d timestamp) RETURNS text LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN d::date = date '1899-12-30' THEN to_char(d, 'HH24:MI:SS')
              WHEN d::time = time '00:00' THEN to_char(d, 'DD.MM.YYYY')
              ELSE to_char(d, 'DD.MM.YYYY HH24:MI:SS') END $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_date(d timestamp) RETURNS timestamp LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT d $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_date(n float8) RETURNS timestamp LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN abs(n) <= 1e6
              THEN timestamp '1899-12-30' + floor(n) * interval '1 day'
                   + round(((n - floor(n)) * 86400)::numeric)::float8 * interval '1 second' END $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_date(t text) RETURNS timestamp LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  s text := btrim(t, E' \t\r\n');
  clock CONSTANT text := '(\d{1,2}):(\d{1,2})(?::(\d{1,2})(?:\.\d{1,3})?)?';
  m text[];
  y int;
BEGIN
  m := regexp_match(s, '^(\d{4})-(\d{1,2})-(\d{1,2})(?:[T ] *' || clock || ')?$');
  IF m IS NOT NULL THEN
    y := m[1]::int;
    RETURN make_timestamp(y, m[2]::int, m[3]::int, coalesce(m[4]::int, 0), coalesce(m[5]::int, 0),
                          coalesce(m[6]::float8, 0));
  END IF;
  m := regexp_match(s, '^(\d{1,2})\.(\d{1,2})\.(\d{1,2}|\d{4})(?: +' || clock || ')?$');
  IF m IS NOT NULL THEN
    y := m[3]::int;
    IF length(m[3]) < 3 THEN y := y + CASE WHEN y < 30 THEN 2000 ELSE 1900 END; END IF;
    RETURN make_timestamp(y, m[2]::int, m[1]::int, coalesce(m[4]::int, 0), coalesce(m[5]::int, 0),
                          coalesce(m[6]::float8, 0));
  END IF;
  m := regexp_match(s, '^' || clock || '$');
  IF m IS NOT NULL THEN
    RETURN make_timestamp(1899, 12, 30, m[1]::int, m[2]::int, coalesce(m[3]::float8, 0));
  END IF;
  RETURN NULL;
EXCEPTION WHEN datetime_field_overflow THEN
  RETURN NULL;
END $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_number(t text) RETURNS float8 LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT coalesce(substring(t FROM '^\s*([+-]?(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?)')::float8, 0) $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_val(t text) RETURNS float8 LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT coalesce(substring(t FROM '^[ \t]*([+-]?(?:\d+\.?\d*|\.\d+))')::float8, 0) $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_stored_money(n float8) RETURNS numeric LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT round((n * 10000)::numeric::float8)::bigint::numeric / 10000 $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_money(n float8) RETURNS numeric LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN abs(n) < 9e14 THEN qk_stored_money(n) ELSE n::numeric END $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_round(n float8, part int) RETURNS float8 LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT CASE part WHEN 0 THEN floor(n) ELSE trunc(n) END $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_idiv(a float8, b float8) RETURNS bigint LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT CASE WHEN round(b) <> 0 THEN round(a)::bigint / round(b)::bigint END $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_mod(a float8, b float8) RETURNS bigint LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT CASE WHEN round(b) <> 0 THEN round(a)::bigint % round(b)::bigint END $$)sql",
    // A pattern that differs by row: one character after the other, as like_pattern.cpp does it.
    R"sql(CREATE OR REPLACE FUNCTION qk_like(t text, pattern text) RETURNS boolean LANGUAGE plpgsql IMMUTABLE STRICT
PARALLEL SAFE AS $$
DECLARE
  p text := lower(pattern COLLATE "de-x-icu");
  regex text := '^';
  c text;
  inner_ text;
  i int := 1;
  stop int;
BEGIN
  WHILE i <= length(p) LOOP
    c := substr(p, i, 1);
    stop := CASE WHEN c = '[' THEN strpos(substr(p, i + 1), ']') ELSE 0 END;
    IF stop > 0 THEN
      inner_ := substr(p, i + 1, stop - 1);
      IF inner_ <> '' THEN
        c := CASE WHEN length(inner_) > 1 AND left(inner_, 1) = '!' THEN '^' ELSE '' END;
        IF c = '^' THEN inner_ := substr(inner_, 2); END IF;
        inner_ := regexp_replace(inner_, '([\\\]\[^])', '\\\1', 'g');
        regex := regex || '[' || c || inner_ ||
                 CASE WHEN inner_ ~ 'a-z' THEN 'à-öø-ÿ' ELSE '' END || ']';
      END IF;
      i := i + stop + 1;
      CONTINUE;
    END IF;
    regex := regex || CASE c WHEN '*' THEN '.*' WHEN '?' THEN '.' WHEN '#' THEN '[0-9]'
                             ELSE regexp_replace(c, '([][\\^$.|()*+?{}])', '\\\1') END;
    i := i + 1;
  END LOOP;
  RETURN lower(t COLLATE "de-x-icu") COLLATE "C" ~ (regex || '$');
END $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_ucase(t text) RETURNS text LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT upper(t COLLATE "de-x-icu") $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_lcase(t text) RETURNS text LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT lower(t COLLATE "de-x-icu") $$)sql",
    // Numbers follow what is there: whoever stored a row with a number of his own has moved them on. One look
    // a statement is enough.
    R"sql(CREATE OR REPLACE FUNCTION qk_next(tab text, col text) RETURNS bigint LANGUAGE plpgsql AS $$
DECLARE
  sequence_ CONSTANT regclass := pg_get_serial_sequence(tab, col);
  statement_ CONSTANT text := tab || statement_timestamp()::text;
  n bigint := nextval(sequence_);
  greatest_ bigint;
BEGIN
  IF current_setting('dao.looked', true) = statement_ THEN RETURN n; END IF;
  PERFORM set_config('dao.looked', statement_, false);
  EXECUTE format('SELECT max(%I) FROM %s', col, tab) INTO greatest_;
  IF greatest_ >= n THEN
    PERFORM pg_advisory_xact_lock(sequence_::bigint);
    n := nextval(sequence_);
    IF greatest_ > n THEN PERFORM setval(sequence_, greatest_); END IF;
    WHILE n <= greatest_ LOOP n := nextval(sequence_); END LOOP;
  END IF;
  RETURN n;
END $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_reserve(tab text, col text, count int) RETURNS text LANGUAGE sql VOLATILE AS $$
  SELECT qk_next(tab, col)::text || coalesce(
    (SELECT string_agg(',' || nextval(pg_get_serial_sequence(tab, col))::text, '') FROM generate_series(2, count)), '')
$$)sql",
};

/// Functions of a value that may be a date, a number or a text.
constexpr const char* kOfAnyKind[] = {
    R"sql(CREATE OR REPLACE FUNCTION qk_text(x %1) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT qk_german(x) $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_datevalue(x %1) RETURNS timestamp LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT date_trunc('day', qk_date(x)) $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_serial(x %1) RETURNS float8 LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT (qk_date(x)::date - date '1899-12-30')::float8 + extract(epoch FROM qk_date(x)::time)::float8 / 86400 $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_datepart(x %1, part int) RETURNS int LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT CASE part WHEN 0 THEN extract(year FROM qk_date(x)) WHEN 1 THEN extract(month FROM qk_date(x))
              ELSE extract(day FROM qk_date(x)) END::int $$)sql",
    R"sql(CREATE OR REPLACE FUNCTION qk_text_date(x %1) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT coalesce(qk_german(qk_date(x)), qk_german(x)) $$)sql",
};

}  // namespace

QStringList postgresFunctions() {
  QStringList statements{kGerman};
  for (const char* function : kFunctions) statements << QString(function);
  for (const char* function : kOfAnyKind)
    for (const char* type : {"text", "float8", "timestamp"})
      statements << QString(function).replace("%1", QLatin1String(type));
  return statements;
}

}  // namespace qk::dao::sql
