// Clubs or teams by what people call them: a text that somebody typed or chose, and the row that it means.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

namespace qk {

class NameList {
 public:
  /// `more`: another name for it (a short name), or whose it is (a team's club). May be empty.
  void add(qint32 id, const QString& name, const QString& more);

  /// "Schützengilde Grünau (SG Grünau)": what is shown in its place, of its own for each.
  QString shown(qint32 id) const { return shown_.value(id); }
  QStringList allShown() const;  ///< in the order of adding
  /// What is shown, or the name or the other name where only one has it, whatever the case. 0 for the empty
  /// text; nothing for an unknown one, and for one that several have.
  std::optional<qint32> idOf(const QString& text) const;
  bool isAmbiguous(const QString& text) const;
  /// One or several are called so.
  bool knows(const QString& text) const { return idOf(text) || isAmbiguous(text); }

 private:
  QHash<QString, QList<qint32>> byName_;
  QHash<QString, qint32> byShown_;
  QHash<qint32, QString> shown_;
  QStringList order_;
};

}  // namespace qk
