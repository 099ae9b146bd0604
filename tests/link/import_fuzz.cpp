#include "tests/link/import_fuzz.h"

#include "link/haeringschuss.h"
#include "tests/link/records.h"

namespace qk::test {

namespace {

class Dice {
 public:
  explicit Dice(quint64 seed) : state_(seed) {}
  qsizetype below(qsizetype limit) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<qsizetype>((state_ >> 33) % static_cast<quint64>(limit));
  }

 private:
  quint64 state_;
};

void wound(QString& line, Dice& dice) {
  static const QString characters = "\"; ,.-+0123456789eE78xüÄ\t\u00a0\u2028";
  const qsizetype at = dice.below(line.size());
  switch (dice.below(5)) {
    case 0:
      line[at] = characters[dice.below(characters.size())];
      break;
    case 1:
      line.truncate(at);
      break;
    case 2:
      line.insert(at, " ; ");
      break;
    case 3:
      line.remove(at, 1 + dice.below(20));
      break;
    case 4:
      line.insert(at, QString::number(dice.below(100000)));
      break;
  }
}

QString complaintOf(const QString& line, const QString& input, bool isShot, const HaeringSchuss& before,
                    const HaeringSchuss& after) {
  if (input.contains('"')) return "a quote was left in: " + line;
  const bool tooShort = QString(line).remove('"').count(" ; ") < 20;
  if (tooShort && isShot) return "a shot of too few fields: " + line;
  if (tooShort && (after.Key != before.Key || after.ZeilenCode != before.ZeilenCode || after.X != before.X))
    return "a line too short touched the object: " + line;
  if (isShot &&
      after.Key != schussKey(after.LinienNummer, after.TrefferNummer, after.Datum, after.AbsoluteZeit))
    return "a key of other fields: " + line;
  return {};
}

}  // namespace

FuzzResult fuzzImport(quint64 seed, int lines) {
  Dice dice(seed);
  FuzzResult result;
  HaeringSchuss shot;
  for (int i = 0; i < lines; ++i) {
    QString line = shotRecord();
    for (qsizetype wounds = dice.below(6); wounds > 0 && !line.isEmpty(); --wounds) wound(line, dice);
    const ErrorAnswer answer = dice.below(2) ? ErrorAnswer::Ignore : ErrorAnswer::Abort;
    const HaeringSchuss before = shot;
    QString input = line;
    const bool isShot = shot.Haering_Import_Zeile(input, nullptr, [&](const Error&) { return answer; });
    result.taken += isShot;
    result.complaint = complaintOf(line, input, isShot, before, shot);
    if (!result.complaint.isEmpty()) break;
  }
  return result;
}

}  // namespace qk::test
