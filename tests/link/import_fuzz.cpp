#include "tests/link/import_fuzz.h"

#include "link/haeringschuss.h"
#include "tests/link/records.h"
#include "tests/support/wounds.h"

namespace qk::test {

namespace {

constexpr int kOverflow = 6;
constexpr int kTypeMismatch = 13;

/// What records are made of, and what breaks readers of numbers and texts.
const QStringList& pieces() {
  static const QStringList all{" ; ",
                               ";",
                               "\"",
                               ",",
                               ".",
                               "-",
                               "+",
                               " ",
                               "0",
                               "9",
                               "1e9",
                               "78",
                               "22;",
                               "10,9",
                               "32767",
                               "32768",
                               "-32769",
                               "NaN",
                               "inf",
                               "0x1F",
                               "\t",
                               "\r",
                               "\x01",
                               "Ä",
                               "\u00a0",
                               "\u2028",
                               QString(QChar(0)),
                               QString(QChar(0xd800)),
                               "999999999999999999999",
                               QString(300, '9')};
  return all;
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
    for (qsizetype wounds = dice.below(6); wounds > 0 && !line.isEmpty(); --wounds)
      wound(line, pieces(), dice);
    const ErrorAnswer answer = dice.below(2) ? ErrorAnswer::Ignore : ErrorAnswer::Abort;
    const HaeringSchuss before = shot;
    QString input = line;
    int oddNumber = 0;
    const bool isShot = shot.Haering_Import_Zeile(input, nullptr, [&](const Error& error) {
      ++result.reported;
      if (error.number() != kTypeMismatch && error.number() != kOverflow) oddNumber = error.number();
      return answer;
    });
    ++result.lines;
    result.taken += isShot;
    result.complaint = complaintOf(line, input, isShot, before, shot);
    if (oddNumber != 0) result.complaint = QString("error %1: ").arg(oddNumber) + line;
    if (!result.complaint.isEmpty()) break;
  }
  return result;
}

}  // namespace qk::test
