#include "cash/label_text.h"

#include <QHash>

namespace qk {
namespace {

const QString kPosition = "#LFDNRDRUCK#";
const QString kPositionOfTotal = "#ANZSCHDRUCK#";
const QString kStamp = "#UHRGENAU#";
constexpr int kPauseBetweenSets = 1000;  // milliseconds

using Expansion = QString (*)(const LabelFields&);

const QHash<QString, Expansion>& expansions() {
  using F = const LabelFields&;
  static const QHash<QString, Expansion> all = {
      {"startnr", [](F f) { return f.startnr; }},
      {"nl", [](F) { return QString("\n"); }},
      {"verein", [](F f) { return f.verein; }},
      {"mann", [](F f) { return f.mann; }},
      {"klasse", [](F f) { return f.klasse; }},
      {"ausweis", [](F f) { return f.ausweis; }},
      {"spo", [](F f) { return f.spo; }},
      {"spokey", [](F f) { return f.spokey; }},
      {"name", [](F f) { return f.name; }},
      {"diszi", [](F f) { return f.kombination ? "K-" + f.disziplin : f.disziplin; }},
      {"disziohne", [](F f) { return f.disziplin; }},
      {"einlage", [](F f) { return f.einlage.isEmpty() ? QString() : f.einlage + u' '; }},
      {"wk", [](F f) { return f.wettkampf; }},
      {"lfdsch", [](F) { return kPosition; }},
      {"anzsch", [](F) { return kPositionOfTotal; }},
      {"datum", [](F f) { return f.zeit.toString("dd.MM.yyyy"); }},
      {"uhr", [](F f) { return f.zeit.toString("HH:mm"); }},
      {"uhrgenau", [](F) { return kStamp; }},
  };
  return all;
}

QString longTime(const QDateTime& time) {
  return time.toString("HH:mm:ss");
}

}  // namespace

QString expandLabelTemplate(const QString& sText, const LabelFields& fields) {
  QStringList tokens = sText.split(u';');
  if (tokens.last().isEmpty()) tokens.removeLast();  // the text ends in its separator
  QString text;
  for (const QString& token : tokens) {
    const Expansion expansion = expansions().value(token.trimmed().toLower());
    text += expansion ? expansion(fields) : token;
  }
  return text;
}

LabelCopies::LabelCopies(QString master, int copies, int perSet, std::function<QDateTime()> now,
                         std::function<void(int)> pause)
    : master_(std::move(master)),
      copies_(copies),
      perSet_(perSet),
      now_(std::move(now)),
      pause_(std::move(pause)),
      stamp_(longTime(now_())),
      printed_(master_) {}

QStringList LabelCopies::next() {
  ++position_;
  if (perSet_ >= 2 && position_ > perSet_) {
    ++set_;
    position_ = 1;
    pause_(kPauseBetweenSets);
    stamp_ = longTime(now_());
  }
  const int total = perSet_ < 2 ? copies_ : perSet_;
  QString working = master_;
  if (master_.contains(kPosition)) printed_ = working.replace(kPosition, QString::number(position_));
  if (master_.contains(kPositionOfTotal))
    printed_ = working.replace(kPositionOfTotal, QString("%1 von %2").arg(position_).arg(total));
  if (master_.contains(kStamp)) printed_.replace(kStamp, QString("%1 (%2)").arg(stamp_).arg(set_));
  return printed_.isEmpty() ? QStringList() : printed_.split(u'\n');
}

}  // namespace qk
