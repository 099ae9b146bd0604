// Lists of clubs and of teams.
#include <optional>

#include "masterdata/lists/cells.h"
#include "masterdata/lists/judge_kinds.h"
#include "masterdata/lists/named_rows.h"
#include "masterdata/lists/store_state.h"

namespace qk::lists {

namespace {

constexpr int LongestName = 255;
constexpr int LongestShortName = 50;

struct Word {
  QString text;
  int cell = -1;
};

/// One row of texts, with its judgement so far.
class NamedRow {
 public:
  NamedRow(const Judgement& judgement, int row) : cells_(judgement.table->rows[static_cast<size_t>(row)]) {
    judged.row = row;
    judged.line = judgement.table->lines[static_cast<size_t>(row)];
    assignment_ = judgement.assignment;
  }

  bool isBlank() const { return plainText(cells_.join(QString())).isEmpty(); }

  /// The text of a column; what is wrong with it is a fault.
  QString word(const QString& heading, int size) {
    const qsizetype cell = assignment_.indexOf(heading);
    if (cell < 0 || cell >= cells_.size() || cells_[cell].isNull()) return {};
    QString trouble = troubleOf(cells_[cell]);
    const QString text = trouble.isEmpty() ? plainText(cells_[cell]) : QString();
    if (trouble.isEmpty()) trouble = tooLong(text, size);
    if (!trouble.isEmpty()) fault(heading, trouble);
    return text;
  }

  void fault(const QString& heading, const QString& why) {
    judged.faults.push_back({static_cast<int>(assignment_.indexOf(heading)), heading, why});
  }

  JudgedRow judged;

 private:
  const QStringList& cells_;
  Assignment assignment_;
};

/// Walks over the rows; `judgeRow` fills one in, and `key` says what may stand only once.
template <class JudgeRow>
void judgeRows(Judgement& judgement, const GoesOn& goesOn, NamedRows& names, const JudgeRow& judgeRow) {
  const int all = static_cast<int>(judgement.table->rows.size());
  QHash<QString, size_t> seen;
  for (int i = 1; i < all; ++i) {
    if (goesOn && i % kRowsBetweenQuestions == 0 && !goesOn(i, all)) {
      judgement.stopped = true;
      return;
    }
    NamedRow row(judgement, i);
    if (row.isBlank()) continue;
    const size_t planned = judgement.plan.size();
    const QString key = judgeRow(row);
    const auto twin = seen.constFind(key);
    if (twin != seen.constEnd() && row.judged.faults.empty())
      row.judged.faults.push_back(
          {-1, {}, QString("Das steht schon in Zeile %1.").arg(judgement.rows[*twin].line)});
    if (row.judged.faults.empty()) {
      seen.insert(key, judgement.rows.size());
      row.judged.remarks << names.takeRemarks();
    } else {
      judgement.plan.resize(planned);
      names.forgetFrom(static_cast<int>(planned));
      row.judged.changes.clear();
      row.judged.verdict = Verdict::Faulty;
    }
    judgement.rows.push_back(std::move(row.judged));
  }
}

void planClub(NamedRow& row, const QString& name, const QString& shortName, NamedRows& names, Plan& plan) {
  const std::vector<NamedRows::Club> found = names.clubsCalled(name);
  if (found.size() > 1) return row.fault(heading::Club, "Den Verein gibt es im Wettkampf mehrmals.");
  if (found.empty()) {
    row.judged.verdict = Verdict::New;
    row.judged.changes = {{heading::Club, {}, name}};
    if (!shortName.isEmpty()) row.judged.changes.push_back({heading::ClubShort, {}, shortName});
    std::vector<PlannedValue> values = {{"Name", {}, name}};
    if (!shortName.isNull()) values.push_back({"Kurzname", {}, shortName});
    plan.push_back({"Verein", 0, std::move(values)});
    return;
  }
  const NamedRows::Club& club = found.front();
  std::vector<PlannedValue> values;
  const auto change = [&](const QString& heading, const QString& column, const QString& before,
                          const QString& after) {
    if (after.isEmpty() || after == before) return;
    row.judged.changes.push_back({heading, before, after});
    values.push_back({column, before, after});
  };
  change(heading::Club, "Name", club.name, name);
  change(heading::ClubShort, "Kurzname", club.shortName, shortName);
  if (values.empty()) return;
  row.judged.verdict = Verdict::Changed;
  plan.push_back({"Verein", club.row.key, std::move(values)});
}

}  // namespace

void judgeClubs(Judgement& judgement, const GoesOn& goesOn) {
  NamedRows names(*judgement.state, judgement.plan);
  judgeRows(judgement, goesOn, names, [&](NamedRow& row) {
    const QString name = row.word(heading::Club, LongestName);
    const QString shortName = row.word(heading::ClubShort, LongestShortName);
    row.judged.who = shownText(name);
    if (name.isEmpty() && row.judged.faults.empty()) row.fault(heading::Club, "Der Name fehlt.");
    if (row.judged.faults.empty()) planClub(row, name, shortName, names, judgement.plan);
    return foldedText(name);
  });
}

void judgeTeams(Judgement& judgement, const GoesOn& goesOn) {
  NamedRows names(*judgement.state, judgement.plan);
  judgeRows(judgement, goesOn, names, [&](NamedRow& row) {
    const TeamWords words{row.word(heading::Team, LongestName), row.word(heading::TeamClub, LongestName),
                          row.word(heading::TeamGroup, LongestName)};
    row.judged.who = shownText(words.name);
    if (words.name.isEmpty() && row.judged.faults.empty()) row.fault(heading::Team, "Der Name fehlt.");
    if (!row.judged.faults.empty()) return QString();
    const FoundRow found = names.team(words, {});
    if (!found.trouble.isEmpty()) row.fault(heading::Team, found.trouble);
    if (found.made) {
      row.judged.verdict = Verdict::New;
      row.judged.changes = {{heading::Team, {}, words.name}};
      if (!words.club.isEmpty()) row.judged.changes.push_back({heading::TeamClub, {}, words.club});
      if (!words.group.isEmpty()) row.judged.changes.push_back({heading::TeamGroup, {}, words.group});
    }
    return QStringList{foldedText(words.name), foldedText(words.club), foldedText(words.group)}.join(u'\n');
  });
}

}  // namespace qk::lists
