#include "tools/rundgang/evaluation_reckoning.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "platform/dao/database.h"
#include "tools/rundgang/reckoning_log.h"
#include "tools/rundgang/sheet_reckoning.h"
#include "tools/rundgang/shown_report.h"

namespace qk {

namespace {

int tenthsIn(const StoredRow& row) {
  return static_cast<int>(std::lround(row["Ergebnis"].toDouble() * 10));
}

/// The results as they should be after every act.
class Corrected {
 public:
  Corrected(dao::Database& store, ResultTables before) : tables_(std::move(before)) {
    for (const StoredRow& row : storedRows(store, "Select * from Disziplin"))
      disciplines_[row["Name"].toString()] = row["ID"];
  }

  void replay(const ResultAct& act) {
    std::vector<StoredRow>& rows = act.teiler ? tables_.teilers : tables_.series;
    const auto meant = [&](const StoredRow& row) {
      return row["Startnummer"].toString() == act.shooter &&
             row["DisziID"].toInt() == disciplines_[act.discipline].toInt() &&
             (act.all || tenthsIn(row) == act.tenths);
    };
    std::vector<StoredRow> copies;
    for (StoredRow& row : rows) {
      if (!meant(row)) continue;
      switch (act.kind) {
        case ResultAct::Kind::Change:
          row[act.column == "Waffe" ? "WTyp" : act.column] =
              act.column == "Ergebnis" ? QVariant(tenthsOf(act.typed) / 10.0) : act.typed;
          break;
        case ResultAct::Kind::Move:
          row["DisziID"] = disciplines_[act.target];
          break;
        case ResultAct::Kind::Copy:
          copies.push_back(row);
          copies.back()["DisziID"] = disciplines_[act.target];
          copies.back().remove("ID");
          break;
        case ResultAct::Kind::Delete:
          break;
      }
    }
    if (act.kind == ResultAct::Kind::Delete) std::erase_if(rows, meant);
    rows.insert(rows.end(), copies.begin(), copies.end());
  }

  static std::vector<ExpectedRow> expected(const std::vector<StoredRow>& rows) {
    std::vector<ExpectedRow> all;
    for (const StoredRow& row : rows) {
      ExpectedRow one;
      for (auto it = row.begin(); it != row.end(); ++it)
        one.figures.push_back({it.key(), it->toString(), [value = *it](const QVariant& stored) {
                                 return stored.isNull() == value.isNull() &&
                                        stored.toString() == value.toString();
                               }});
      all.push_back(one);
    }
    return all;
  }

  /// What a sheet does before it is printed: results follow their shooters.
  void alignWithShooters(dao::Database& store) {
    QHash<QString, StoredRow> shooters;
    for (const StoredRow& row : storedRows(store, "Select * from Schützen"))
      shooters[row["Startnummer"].toString()] = row;
    for (std::vector<StoredRow>* rows : {&tables_.teilers, &tables_.series})
      for (StoredRow& row : *rows) {
        const auto shooter = shooters.constFind(row["Startnummer"].toString());
        if (shooter == shooters.cend()) continue;
        row["KlassenID"] = (*shooter)["KlassenID"];
        row["MannID"] = (*shooter)["VereinsID"];
        row["VorMannID"] = (*shooter)["lMannID"];
      }
  }

  const ResultTables& tables() const { return tables_; }

 private:
  ResultTables tables_;
  QHash<QString, QVariant> disciplines_;
};

/// A figure in tenths, however many places it is printed with; other words as they are.
QString inTenths(const QString& word) {
  static const QRegularExpression figure("^(\\(?)(-?[0-9.]+(?:,[0-9])?)(\\)?)$");
  const auto found = figure.match(word);
  if (!found.hasMatch()) return word;
  return found.captured(1) + QString::number(tenthsOf(found.captured(2).remove('.'))) + found.captured(3);
}

/// Everything the sheet has to say, in its order.
QStringList wordsOf(const std::vector<SheetRow>& rows) {
  QStringList words;
  QString before;
  for (const SheetRow& row : rows) {
    const QString head = row.contest.isEmpty() ? row.group : row.contest;
    if (std::exchange(before, head) != head) {
      words += (head == "Prämie" ? QString("Prämien") : head).split(' ');
      if (row.sum > 0) words << "Summe" << QString::number(row.sum);
    }
    const QStringList discipline = row.discipline.split(' ');
    std::transform(discipline.begin(), discipline.end(), std::back_inserter(words), inTenths);
    const bool fallsShort = row.discipline.contains("-ohne Wertung");
    if (fallsShort)
      words << "ohne"
            << "Wertung";
    if (!row.weapon.isEmpty()) words << row.weapon;
    for (const int result : row.results)
      words << (fallsShort ? "(" + QString::number(result) + ")" : QString::number(result));
  }
  return words;
}

/// What stands between head and foot of the pages.
QStringList printedWords(const QString& pdf) {
  constexpr int kHeadLines = 2;
  static const QRegularExpression blank("\\s+"), foot("Seite \\d+ von \\d+");
  QStringList words;
  for (const QString& page : printedText(pdf).split('\f')) {
    QStringList lines = page.split('\n', Qt::SkipEmptyParts);
    lines.remove(0, std::min<qsizetype>(kHeadLines, lines.size()));
    for (const QString& line : lines)
      if (!line.contains(foot)) words += line.split(blank, Qt::SkipEmptyParts);
  }
  std::transform(words.begin(), words.end(), words.begin(), inTenths);
  return words;
}

/// All that is expected stands on the sheet, and no figure besides.
void compareSheet(Comparison& sides, dao::Database& store, const PrintedSheet& sheet) {
  const QStringList expected = wordsOf(sheet.byProfiles ? profileSheet(store, sheet.startNumber)
                                                        : plainSheet(store, sheet.startNumber));
  const QStringList printed = printedWords(sheet.pdf);
  qsizetype begin = 0, best = 0, alike = 0;
  for (; begin < printed.size() && alike < expected.size(); ++begin) {
    alike = 0;
    while (alike < expected.size() && begin + alike < printed.size() &&
           printed[begin + alike] == expected[alike])
      ++alike;
    best = std::max(best, alike);
  }
  const QString title =
      QString("Blatt %1 (%2)").arg(sheet.startNumber, sheet.byProfiles ? "Wettkampf" : "Liste");
  if (best < expected.size())
    sides.result.differences << title + ": hinter \"" + expected.mid(0, best).join(' ').right(60) +
                                    "\" fehlt \"" + expected[best] + "\"";
  const qsizetype end = begin - 1 + expected.size();
  if (best == expected.size() && end < printed.size() && printed[end].front().isDigit())
    sides.result.differences << title + ": zu viel: " + printed[end];
  sides.add(title, expected.size(), best);
}

}  // namespace

ResultTables readResults(const QString& competition) {
  const auto store = dao::Database::open(competition);
  return {storedRows(*store, "Select * from Schuss order by ID"),
          storedRows(*store, "Select * from SchussSerien order by ID")};
}

Reckoning reckonEvaluation(const QString& competition, const ResultTables& before,
                           const ResultJournal& journal, const std::vector<PrintedSheet>& sheets) {
  const auto store = dao::Database::open(competition);
  Corrected corrected(*store, before);
  for (const ResultAct& act : journal) corrected.replay(act);
  corrected.alignWithShooters(*store);
  Comparison sides;
  const ResultTables now = readResults(competition);
  sides.claim("Schuss", Corrected::expected(corrected.tables().teilers), now.teilers);
  sides.claim("SchussSerien", Corrected::expected(corrected.tables().series), now.series);
  for (const PrintedSheet& sheet : sheets) compareSheet(sides, *store, sheet);
  return sides.result;
}

}  // namespace qk
