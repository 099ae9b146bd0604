// What SQLite lacks for the query language: functions and the German order. Registered on each connection
// anew.
#pragma once

struct sqlite3;

namespace qk::dao::sql {

/// Functions, all free of side effects and usable in stored queries:
///   qk_like(value, pattern), qk_like_date(value, pattern)   1, 0 or NULL
///   qk_text(value), qk_text_date(value)                     German text
///   qk_val(value)                                           number at the start of a text
///   qk_datevalue(value), qk_date(serial)                    ISO text; qk_date takes days since 30.12.1899
///   qk_serial(date)                                         days since 30.12.1899
///   qk_datepart(date, part)                                 part 0 year, 1 month, 2 day
///   qk_round(value, mode)                                   towards minus infinity (0), towards zero (1)
///   qk_idiv(a, b), qk_mod(a, b)                             on operands rounded to whole numbers, halves to
///   even
///   qk_number(text)                                         number at the start of a text, exponent and all
///   qk_whole(value, least, greatest)                        whole number, halves to even; an error beyond
///   qk_money(value), qk_stored_money(value)                 four decimals; the second an error beyond
///   qk_ucase(text), qk_lcase(text)
/// and the collation "german": without regard to case, umlauts beside their base letters.
/// Double-quoted names no longer fall back to strings on this connection. Throws Error 3000 when SQLite
/// refuses.
void registerSqliteFunctions(sqlite3* database);

}  // namespace qk::dao::sql
