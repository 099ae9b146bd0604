#include "masterdata/people/birth_date.h"

#include <QRegularExpression>
#include <optional>

#include "shooters/class_rule.h"

namespace qk {

namespace {

constexpr int kOldest = 130;

struct Parts {
  QString day, month, year;
};

QString trouble(const QString& typed, const QString& what) {
  return QString("»%1« %2").arg(typed.size() > 40 ? typed.left(40) + "…" : typed, what);
}

bool meansUnknown(const QString& text) {
  static const QRegularExpression nothing("^([-?0./ ]*|unbekannt|unbek\\.?|k\\.? ?a\\.?)$",
                                          QRegularExpression::CaseInsensitiveOption);
  return nothing.match(text).hasMatch();
}

/// By name or its first three letters; empty for none.
QString monthNumber(const QString& name) {
  static const QStringList beginnings = {"jan", "feb", "mär", "apr", "mai", "jun",
                                         "jul", "aug", "sep", "okt", "nov", "dez"};
  static const QStringList names = {"januar", "februar", "märz",      "april",   "mai",      "juni",
                                    "juli",   "august",  "september", "oktober", "november", "dezember"};
  QString plain = name.toLower();
  if (plain.endsWith('.')) plain.chop(1);
  if (plain == "jänner") return "1";
  if (plain == "maerz" || plain == "mrz") return "3";
  if (plain == "sept") return "9";
  const qsizetype found = beginnings.indexOf(plain.left(3));
  if (found < 0 || (plain.size() > 3 && plain != names[found])) return {};
  return QString::number(found + 1);
}

std::optional<Parts> writtenOut(const QString& text) {
  static const QRegularExpression form("^(\\d{1,2})\\.? ?(\\p{L}+\\.?) ?(\\d{4}|\\d{2})$");
  const auto match = form.match(text);
  if (!match.hasMatch()) return {};
  const QString month = monthNumber(match.captured(2));
  if (month.isEmpty()) return {};
  return Parts{match.captured(1), month, match.captured(3)};
}

QDate dateOf(const Parts& parts, const QDate& refDatum) {
  const QString text = parts.day + "." + parts.month + "." + parts.year;
  if (!isKnownBirthDate(text)) return {};
  if (parts.year.size() == 4) return QDate(parts.year.toInt(), parts.month.toInt(), parts.day.toInt());
  return birthDateOf(text, refDatum);
}

bool isTooOld(const QDate& date, const QDate& refDatum) {
  return date.year() < refDatum.year() - kOldest;
}

/// Six or eight digits without anything between them: day first, or as a computer writes it.
QDate digitsOnly(const QString& text, const QDate& refDatum) {
  const QDate german = dateOf({text.left(2), text.mid(2, 2), text.mid(4)}, refDatum);
  if (text.size() == 6 || (german.isValid() && !isTooOld(german, refDatum))) return german;
  const QDate technical = dateOf({text.mid(6), text.mid(4, 2), text.left(4)}, refDatum);
  return technical.isValid() ? technical : german;
}

QDate readAny(const QString& text, const QDate& refDatum) {
  static const QRegularExpression german("^(\\d{1,2}) ?[.,/\\- ] ?(\\d{1,2}) ?[.,/\\- ] ?(\\d{4}|\\d{2})$");
  static const QRegularExpression technical("^(\\d{4})[-/.](\\d{1,2})[-/.](\\d{1,2})$");
  static const QRegularExpression digits("^(\\d{6}|\\d{8})$");
  if (const auto match = german.match(text); match.hasMatch())
    return dateOf({match.captured(1), match.captured(2), match.captured(3)}, refDatum);
  if (const auto match = technical.match(text); match.hasMatch())
    return dateOf({match.captured(3), match.captured(2), match.captured(1)}, refDatum);
  if (digits.match(text).hasMatch()) return digitsOnly(text, refDatum);
  if (const auto parts = writtenOut(text)) return dateOf(*parts, refDatum);
  return {};
}

QString withoutTime(QString text) {
  static const QRegularExpression time("[T ]\\d{1,2}:\\d{2}(:\\d{2}(\\.\\d+)?)?( ?Uhr)?$");
  return text.remove(time);
}

}  // namespace

BirthDate readBirthDate(const QString& typed, const QDate& refDatum) {
  const QString text = withoutTime(typed.simplified());
  if (meansUnknown(text)) return {kUnknownBirthDate.toString(), {}};
  static const QRegularExpression year("^\\d{4}$");
  if (year.match(text).hasMatch())
    return {{}, trouble(typed, "ist nur ein Jahr; gebraucht werden auch Tag und Monat.")};
  const QDate date = readAny(text, refDatum);
  if (!date.isValid()) return {{}, trouble(typed, "ist kein Geburtsdatum (TT.MM.JJJJ).")};
  if (date.year() > refDatum.year())
    return {{}, trouble(typed, QString("liegt hinter dem Jahr des Stichtags, %1.").arg(refDatum.year()))};
  if (isTooOld(date, refDatum))
    return {{}, trouble(typed, QString("ergibt ein Alter über %1 Jahren.").arg(kOldest))};
  return {date.toString("dd.MM.yyyy"), {}};
}

}  // namespace qk
