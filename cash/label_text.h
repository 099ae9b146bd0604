// The text block of a label: a template of tokens, expanded once a discipline, and the counters that each
// copy fills in. Lines are separated by "\n".
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>

namespace qk {

/// What the tokens of a template stand for.
struct LabelFields {
  QString startnr = {};
  QString verein = {};
  QString mann = {};
  QString klasse = {};
  QString ausweis = {};
  QString spo = {};
  QString spokey = {};
  QString name = {};
  QString disziplin = {};  ///< name of the discipline or combination
  bool kombination = false;
  QString einlage = {};  ///< the stake that pays for the label; empty when none stands for it
  QString wettkampf = {};
  QDateTime zeit = {};
};

/// The expanded template; "lfdsch", "anzsch" and "uhrgenau" leave their counter words for the copies. A token
/// counts whatever its case and outer blanks; an unknown one stands for itself.
QString expandLabelTemplate(const QString& sText, const LabelFields& fields);

/// The lines of a label's copies, one copy after the other. The total shown is that of a set, or of the whole
/// run where a set holds fewer than two.
class LabelCopies {
 public:
  /// `now` and `pause` (milliseconds) are asked at each new set: stamps have whole seconds and must differ.
  LabelCopies(QString master, int copies, int perSet, std::function<QDateTime()> now,
              std::function<void(int)> pause);

  /// Lines of the next copy; none for an empty text.
  QStringList next();

 private:
  QString master_;
  int copies_, perSet_;
  std::function<QDateTime()> now_;
  std::function<void(int)> pause_;
  QString stamp_;
  QString printed_;  // kept between copies: a text whose only counter is the stamp keeps its first stamp
  int set_ = 1;
  int position_ = 0;
};

}  // namespace qk
