#include "evaluation/result_check.h"

#include <cmath>

#include "platform/runtime/datetext.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

constexpr double kGreatestTeiler = 9999.9;
constexpr int kFirstYear = 1990;
constexpr double kTolerance = 1e-6;

const CellCheck kFine;

CellCheck doubtful(const QString& text) {
  return {CellCheck::Verdict::Doubtful, text + "\r\nTrotzdem übernehmen?"};
}

CellCheck impossible(const QString& text) {
  return {CellCheck::Verdict::Impossible, text};
}

struct Range {
  double least = 0;
  double most = 0;
  bool open = false;  ///< nothing is known of its upper end
  bool whole = false;
  QString what;
};

/// The most that one shot counts in a ring discipline; the first flag that is set decides, as in the
/// transfer.
double mostOfAShot(const Disziplin& discipline) {
  if (kindOf(discipline) == DisciplineKind::Ring) {
    if (discipline.Ring0XZehntel) return 9;
    if (discipline.RingXXZehntel) return 19;
  }
  return discipline.RingZentel ? 10.9 : 10;
}

bool countsWholeRings(const Disziplin& discipline) {
  if (kindOf(discipline) == DisciplineKind::Ring && (discipline.Ring0XZehntel || discipline.RingXXZehntel))
    return true;
  return !discipline.RingZentel && !discipline.Ring05Zehntel;
}

Range rangeOf(const Disziplin& discipline) {
  const double teiler = discipline.DSBTeilerGrenze ? double(discipline.DSBTeilerGrenzWert) : kGreatestTeiler;
  const int shots = discipline.RingSerie;
  switch (kindOf(discipline)) {
    case DisciplineKind::Teiler:
      return {.most = kGreatestTeiler, .what = "Ein Teiler"};
    case DisciplineKind::RingTeiler:
      return {.least = discipline.dblMaxSerieDSB - shots * mostOfAShot(discipline),
              .most = discipline.dblMaxSerieDSB + teiler,
              .what = "Ein Ring-Teiler"};
    case DisciplineKind::Ring:
    case DisciplineKind::None:
      break;
  }
  const int counting = shots - (discipline.ZusatzTeiler ? 1 : 0);
  return {.most = counting * mostOfAShot(discipline),
          .open = counting < 1,
          .whole = countsWholeRings(discipline),
          .what = "Eine Serie"};
}

bool hasMoreThan(double value, int decimals) {
  const double scaled = value * std::pow(10, decimals);
  return std::abs(scaled - std::round(scaled)) > kTolerance;
}

}  // namespace

CellCheck checkErgebnis(const Disziplin& discipline, const QVariant& value) {
  if (value.isNull())
    return impossible(
        "Ein Ergebnis ohne Zahl gibt es nicht.\r\nBitte eine Zahl eingeben oder die Zeile löschen.");
  const double number = value.toDouble();
  const Range range = rangeOf(discipline);
  const QString typed = numberText(number) + ": ";
  if (number < range.least - kTolerance || (!range.open && number > range.most + kTolerance))
    return doubtful(typed + range.what + " in " + discipline.Name + " liegt " +
                    (range.open ? "bei mindestens " + numberText(range.least)
                                : "zwischen " + formatNumber(range.least, range.whole ? 0 : 1, true) +
                                      " und " + formatNumber(range.most, range.whole ? 0 : 1, true)) +
                    ".");
  if (range.whole && hasMoreThan(number, 0)) return doubtful(typed + discipline.Name + " zählt ganze Ringe.");
  if (hasMoreThan(number, 1)) return doubtful(typed + range.what + " hat höchstens eine Nachkommastelle.");
  return kFine;
}

CellCheck checkWaffe(const Disziplin& discipline, const QString& text) {
  QStringList admitted;
  for (const auto& weapon : discipline.Waffen.objects()) {
    if (weapon->Kurzbezeichnung.compare(text, Qt::CaseInsensitive) == 0) return kFine;
    admitted << weapon->Kurzbezeichnung;
  }
  if (admitted.isEmpty()) return kFine;
  return doubtful("Waffe \"" + text + "\": In " + discipline.Name + " wird mit " + admitted.join(", ") +
                  " geschossen.");
}

CellCheck checkDatum(const QVariant& value, const QDate& today) {
  if (value.isNull() || value.toString().trimmed().isEmpty())
    return doubtful("Ohne Datum gehört das Ergebnis zu keinem Schießtag.");
  const bool isText = value.typeId() == QMetaType::QString;
  if (isText && !isDate(value.toString()))
    return impossible("\"" + value.toString() +
                      "\" ist kein Datum.\r\nBitte so eingeben: 20.11.2026 oder 20.11.2026 10:41:07");
  const QDate day = (isText ? parseDate(value.toString()) : value.toDateTime()).date();
  const QString typed = day.toString("dd.MM.yyyy");
  if (day > today) return doubtful("Der " + typed + " liegt in der Zukunft.");
  if (day.year() < kFirstYear) return doubtful("Der " + typed + " liegt weit zurück.");
  return kFine;
}

}  // namespace qk
