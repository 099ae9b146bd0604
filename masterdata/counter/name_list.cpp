#include "masterdata/counter/name_list.h"

namespace qk {

namespace {

QString folded(const QString& text) {
  return text.normalized(QString::NormalizationForm_C).simplified().toCaseFolded();
}

}  // namespace

void NameList::add(qint32 id, const QString& name, const QString& more) {
  QString shown = name.simplified();
  if (!more.trimmed().isEmpty()) shown += " (" + more.simplified() + ")";
  if (byShown_.contains(folded(shown))) shown += QString(" [%1]").arg(id);
  byShown_.insert(folded(shown), id);
  shown_.insert(id, shown);
  order_.append(shown);
  for (const QString& one : {folded(name), folded(more)})
    if (QList<qint32>& ids = byName_[one]; !ids.contains(id)) ids.append(id);
}

QStringList NameList::allShown() const {
  return order_;
}

std::optional<qint32> NameList::idOf(const QString& text) const {
  const QString wanted = folded(text);
  if (wanted.isEmpty()) return 0;
  if (const auto found = byShown_.find(wanted); found != byShown_.end()) return *found;
  const QList<qint32> ids = byName_.value(wanted);
  if (ids.size() != 1) return {};
  return ids.front();
}

bool NameList::isAmbiguous(const QString& text) const {
  const QString wanted = folded(text);
  return !wanted.isEmpty() && !byShown_.contains(wanted) && byName_.value(wanted).size() > 1;
}

}  // namespace qk
