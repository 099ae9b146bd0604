#include "tests/platform/dao/random_query.h"

#include "tests/platform/dao/sql/sample_store.h"

namespace qk::dao::test {
namespace {

const QStringList kNumbers{"Zahl", "Kurz", "Wert", "Betrag", "Ja", "ID"};
const QStringList kTexts{"Txt", "NrText", "Notiz"};
const QStringList kDates{"Am"};

const QStringList kWritten[] = {
    {"0", "1", "-1", "2", "3", "9.5", "0.1", "1.2345", "-0.5", "1e3", "2.5", "3.5", "1000000", "123456789.25",
     "True", "False", "Null"},
    {"'Müller'", "'MÜLLER'", "'strasse'", "'Straße'", "'äpfel'", "'arg'", "''", "'9'", "'10'", "'107'",
     "'9,5'", "'9.5'", "'-1'", "'O''Neill'", "'a*b'", "'20.11.2026'", "'lg'", "Null"},
    {"#11/20/2026#", "#2026-11-18#", "#11/20/2026 23:59:59#", "#12/30/1899#", "#8/18/2026#", "Null"}};
const QStringList kPatterns{
    "'*'",     "'m*'",  "'*ü*'",    "'?????r'", "'[a-m]*'",  "'[!a-m]*'", "'*[äöü]*'", "'#*'",    "'##7'",
    "'9,*'",   "'-*'",  "'20.11*'", "'*2026*'", "'*:*'",     "'[[]x]'",   "'*%*'",     "'*_*'",   "'\\'",
    "''",      "'1##'", "'*[*]*'",  "'STRA?E'", "'*[0-9]*'", "'[ß]*'",    "'stras*'",  "'?'",     "'*ß*'",
    "'[!#]*'", "'*,5'", "'[a-z'",   "'*[a-]*'", "'*e+*'",    "'0*'",      "' *'",      "'*[-0]*'"};

}  // namespace

std::vector<TableDef> randomQueryTables() {
  const auto table = [](const QString& name, const QString& columns) {
    return sql::test::sampleTable(name, columns);
  };
  TableDef values =
      table("Werte", "ID* l, Txt t, NrText t, Notiz t, Zahl l, Kurz i, Wert d, Betrag m, Am c, Ja y");
  values.fields[3].type = FieldType::Memo;
  return {values, table("Orte", "ID* l, Name t, WerteID l, Preis m, Seit c, Offen y, Punkte d"),
          table("Lose", "OrteID l, Nr t, Gewinn m, Gezogen c")};
}

QString RandomQuery::column(Kind kind) {
  const QStringList& names = kind == Kind::Number ? kNumbers : kind == Kind::Text ? kTexts : kDates;
  return qualifier_ + oneOf(names);
}

QString RandomQuery::literal(Kind kind) {
  return oneOf(kWritten[int(kind)]);
}

QString RandomQuery::value(Kind kind, int depth) {
  switch (kind) {
    case Kind::Number:
      return number(depth);
    case Kind::Text:
      return text(depth);
    default:
      return date(depth);
  }
}

QString RandomQuery::calculation(int depth) {
  static const QStringList kOperators{" + ", " - ", " * ", " / ", " \\ ", " MOD "};
  // Now and then with a text or a date in it.
  const auto side = [&] { return below(8) ? number(depth - 1) : value(kind(), depth - 1); };
  const QString left = side();
  return "(" + left + oneOf(kOperators) + side() + ")";
}

QString RandomQuery::number(int depth) {
  if (depth <= 0) return below(3) ? column(Kind::Number) : literal(Kind::Number);
  switch (below(11)) {
    case 0:
    case 1:
    case 2:
      return calculation(depth);
    case 3:
      return "-" + column(Kind::Number);
    case 4:
      return oneOf({"Abs(", "Int(", "Fix("}) + number(depth - 1) + ")";
    case 5:
      return "val(" + value(kind(), depth - 1) + ")";
    case 6:
      return "Len(" + value(kind(), depth - 1) + ")";
    case 7:
      return oneOf({"Month(", "Year(", "Day("}) + (below(4) ? date(depth - 1) : text(depth - 1)) + ")";
    case 8: {
      const QString test = condition(depth - 1), yes = number(depth - 1);
      return "IIf(" + test + ", " + yes + ", " + number(depth - 1) + ")";
    }
    case 9:
      return "Nz(" + column(Kind::Number) + ", " + oneOf({"0", "1.5", "-1"}) + ")";
    default:
      return "(" + condition(depth - 1) + ")";
  }
}

QString RandomQuery::text(int depth) {
  if (depth <= 0) return below(3) ? column(Kind::Text) : literal(Kind::Text);
  switch (below(7)) {
    case 0:
    case 1: {
      const QString left = value(kind(), depth - 1);
      return "(" + left + " & " + value(kind(), depth - 1) + ")";
    }
    case 2: {
      const QString left = text(depth - 1);
      return "(" + left + " + " + text(depth - 1) + ")";
    }
    case 3:
      return oneOf({"UCase(", "LCase("}) + text(depth - 1) + ")";
    case 4: {
      const QString test = condition(depth - 1), yes = text(depth - 1);
      return "IIf(" + test + ", " + yes + ", " + text(depth - 1) + ")";
    }
    case 5:
      return "Nz(" + column(Kind::Text) + ", 'ohne')";
    default:
      return column(Kind::Text);
  }
}

QString RandomQuery::date(int depth) {
  if (depth <= 0) return below(3) ? column(Kind::Date) : literal(Kind::Date);
  switch (below(4)) {
    case 0:
      return "DateValue(" + (below(3) ? date(depth - 1) : text(depth - 1)) + ")";
    case 1:
      return "(" + date(depth - 1) + oneOf({" + ", " - "}) + oneOf({"1", "0.5", "30", "Zahl"}) + ")";
    case 2:
      return "Nz(" + column(Kind::Date) + ", #11/20/2026#)";
    default:
      return column(Kind::Date);
  }
}

QString RandomQuery::comparison(int depth) {
  static const QStringList kOperators{" = ", " <> ", " < ", " <= ", " > ", " >= "};
  const Kind one = kind(), other = below(4) ? one : kind();
  const QString left = value(one, depth - 1);
  return left + oneOf(kOperators) + value(other, depth - 1);
}

QString RandomQuery::like(int depth) {
  const QString left = value(kind(), depth - 1);
  const QString pattern = below(12) ? oneOf(kPatterns) : text(0);
  return left + (below(4) ? " LIKE " : " NOT LIKE ") + pattern;
}

QString RandomQuery::in(int depth) {
  const Kind of = kind();
  QString result = value(of, depth - 1) + (below(3) ? " IN (" : " NOT IN (");
  if (below(3) == 0) {
    const QString outer = std::exchange(qualifier_, QString());
    result += "SELECT " + column(below(5) ? of : kind()) + " FROM Werte WHERE " + condition(depth - 1);
    qualifier_ = outer;
    return result + ")";
  }
  result += literal(of);
  for (int i = below(4); i > 0; --i) result += ", " + literal(below(6) ? of : kind());
  return result + ")";
}

QString RandomQuery::condition(int depth) {
  if (depth <= 0) return comparison(1);
  switch (below(11)) {
    case 0: {
      const QString left = condition(depth - 1);
      return "(" + left + oneOf({" AND ", " OR "}) + condition(depth - 1) + ")";
    }
    case 1:
      return "NOT (" + condition(depth - 1) + ")";
    case 2:
    case 3:
      return like(depth);
    case 4: {
      const Kind of = kind();
      const QString left = value(of, depth - 1), low = literal(of);
      return left + (below(4) ? " BETWEEN " : " NOT BETWEEN ") + low + " AND " +
             literal(below(6) ? of : kind());
    }
    case 5:
      return in(depth);
    case 6:
      return value(kind(), depth - 1) + (below(2) ? " IS NULL" : " IS NOT NULL");
    case 7:
      return column(Kind::Number);
    case 8:
      return "IsNull(" + value(kind(), depth - 1) + ")";
    default:
      return comparison(depth);
  }
}

QString RandomQuery::criterion() {
  return condition(2);
}

QString RandomQuery::aggregate() {
  switch (below(6)) {
    case 0:
      return "Count(*)";
    case 1:
      return "Count(" + value(kind(), 1) + ")";
    case 2:
      return oneOf({"Sum(", "Avg("}) + number(1) + ")";
    default:
      return oneOf({"Max(", "Min("}) + value(kind(), 1) + ")";
  }
}

/// A few terms, then all that tell rows apart.
QString RandomQuery::order(const QStringList& total) {
  QStringList terms;
  for (int i = below(3); i > 0; --i) terms << value(kind(), below(2)) + oneOf({"", " ASC", " DESC"});
  return " ORDER BY " + (terms + total).join(", ");
}

RandomQuery::Reading RandomQuery::plain() {
  qualifier_.clear();
  const bool distinct = below(6) == 0;
  Reading reading{"SELECT ", true};
  QStringList items, names;
  if (distinct || below(3)) {
    for (int i = 0; i <= below(3); ++i) {
      items << value(kind(), 2) + QString(" AS A%1").arg(i);
      names << QString("A%1").arg(i);
    }
  } else {
    items << "*";
  }
  if (distinct) reading.text += "DISTINCT ";
  if (!distinct && below(4) == 0) reading.text += QString("TOP %1 ").arg(1 + below(9));
  reading.text += items.join(", ") + " FROM Werte";
  if (below(4)) reading.text += " WHERE " + condition(3);
  if (distinct) {
    reading.text += " ORDER BY " + names.join(", ");
    reading.ordered = false;  // texts that differ in their case alone are one row
  } else if (below(2)) {
    reading.text += order({});
  }
  return reading;
}

RandomQuery::Reading RandomQuery::grouped() {
  qualifier_.clear();
  if (below(3) == 0)
    return {"SELECT " + aggregate() + " AS A, " + aggregate() + " AS B FROM Werte WHERE " + condition(2),
            false};
  const QString by = value(kind(), below(2));
  QString text = "SELECT " + by + " AS G, " + aggregate() + " AS A, " + aggregate() + " AS B FROM Werte";
  if (below(2)) text += " WHERE " + condition(2);
  text += " GROUP BY " + by;
  if (below(3) == 0) text += " HAVING " + aggregate() + oneOf({" > ", " = ", " < "}) + literal(Kind::Number);
  return {text, false};
}

RandomQuery::Reading RandomQuery::joined() {
  static const QStringList kJoins{" INNER JOIN ", " LEFT JOIN ", " RIGHT JOIN "};
  qualifier_ = "Werte.";
  const QString items = oneOf({"*", "Werte.*, Orte.Name", "Orte.ID, Werte.ID, Txt, Name, Preis", "Orte.*"});
  switch (below(4)) {
    case 0: {
      const QString text = "SELECT " + (below(4) ? QString() : QString("TOP %1 ").arg(1 + below(9))) + items +
                           " FROM Werte" + oneOf(kJoins) + "Orte ON Werte.ID = Orte.WerteID WHERE " +
                           condition(2);
      return {text + order({"Werte.ID", "Orte.ID"}), true};
    }
    case 1:
      return {"SELECT Lose.*, Name, Txt FROM (Lose" + oneOf(kJoins) + "Orte ON Lose.OrteID = Orte.ID)" +
                  oneOf(kJoins) + "Werte ON Orte.WerteID = Werte.ID WHERE " + condition(2),
              false};
    case 2: {
      const QString join = oneOf(kJoins);
      return {"SELECT Werte.ID, Werte.Txt, B.Bez, B.Art FROM Werte" + join +
                  "(SELECT Name AS Bez, WerteID, 0 AS Art FROM Orte UNION SELECT Nr AS Bez, OrteID, 1 AS Art "
                  "FROM Lose) "
                  "AS B ON (Werte.ID = B.WerteID)" +
                  (below(2) ? " AND (Werte.Ja = B.Art)" : "") + " WHERE " + condition(2),
              false};
    }
    default:
      return {"SELECT " + items + " FROM Werte, Orte WHERE Werte.ID = Orte.WerteID AND " + condition(2),
              false};
  }
}

RandomQuery::Reading RandomQuery::unionOf() {
  qualifier_.clear();
  const Kind first = kind(), second = kind();
  const auto part = [&] {
    const QString one = value(below(6) ? first : kind(), 1), other = value(below(6) ? second : kind(), 1);
    return "SELECT " + one + " AS A, " + other + " AS B FROM Werte WHERE " + condition(2);
  };
  QString text = part();
  for (int i = 0; i <= below(2); ++i) text += oneOf({" UNION ", " UNION ALL "}) + part();
  if (below(2)) text += oneOf({" ORDER BY A, B", " ORDER BY 2 DESC, 1"});
  return {text, false};
}

RandomQuery::Reading RandomQuery::reading() {
  switch (below(8)) {
    case 0:
      return grouped();
    case 1:
    case 2:
      return joined();
    case 3:
      return unionOf();
    default:
      return plain();
  }
}

QString RandomQuery::assignment(const QString& column) {
  const Kind of = kTexts.contains(column) ? Kind::Text : kDates.contains(column) ? Kind::Date : Kind::Number;
  return qualifier_ + column + " = " + value(below(6) ? of : kind(), 2);
}

QString RandomQuery::action() {
  static const QStringList kColumns{"Txt", "NrText", "Notiz", "Zahl", "Kurz", "Wert", "Betrag", "Am", "Ja"};
  qualifier_.clear();
  switch (below(7)) {
    case 0:
      return "DELETE * FROM Werte WHERE ID > 9 AND " + condition(2);
    case 1: {
      qualifier_ = "Werte.";
      return "DELETE Orte.* FROM Orte INNER JOIN Werte ON Orte.WerteID = Werte.ID WHERE Orte.ID > 9 AND " +
             condition(2);
    }
    case 2: {
      const QString txt = text(1), amount = number(1), day = date(1);
      return "INSERT INTO Werte ( Txt, Betrag, Am, Wert ) SELECT " + txt + ", " + amount + ", " + day + ", " +
             number(1) + " FROM Werte WHERE ID < 4 AND " + condition(1);
    }
    case 3:
      return "INSERT INTO Werte ( Txt, Zahl, Betrag, Am, Ja ) VALUES (" +
             literal(below(6) ? Kind::Text : kind()) + ", " + literal(below(6) ? Kind::Number : kind()) +
             ", " + literal(Kind::Number) + ", " + literal(below(6) ? Kind::Date : kind()) + ", " +
             oneOf({"True", "False", "-1", "0"}) + ")";
    case 4: {
      qualifier_ = "Werte.";
      const QString name = text(1), price = number(1);
      return "UPDATE Orte INNER JOIN Werte ON Orte.WerteID = Werte.ID SET Orte.Name = " + name +
             ", Orte.Preis = " + price + " WHERE " + condition(2);
    }
    default: {
      const QString one = oneOf(kColumns);
      QString text = "UPDATE Werte SET " + assignment(one);
      const QString other = oneOf(kColumns);
      if (other != one) text += ", " + assignment(other);
      return text + " WHERE " + condition(2);
    }
  }
}

}  // namespace qk::dao::test
