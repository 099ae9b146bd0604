// What a query text costs on its way to a prepared statement, against preparing SQLite's own text.
#pragma once

namespace qk::bench {

/// Time of translating and preparing "Select * from <table> where ID = <n>" on a table of 28 columns, divided
/// by the time of preparing the native text; every literal differs. The rounds of both alternate and the
/// medians count.
double queryLanguageRatio(int rounds = 41, int statementsPerRound = 500);

}  // namespace qk::bench
