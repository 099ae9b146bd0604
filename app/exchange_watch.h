// Watches the exchange folder while somebody needs it: a station that can't be heard looks like one that has
// nothing to say.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

#include "platform/workplace.h"

namespace qk {

class ExchangeWatch : public QObject {
  Q_OBJECT

 public:
  /// `needed` says whether any line listens to the folder now.
  ExchangeWatch(const Workplace& workplace, std::function<bool()> needed, QObject* parent = nullptr);

  /// Looks at once, then each second as long as the folder is needed or away.
  void look();
  bool isMissing() const { return missing_; }
  /// The folder of the last look, with its final separator.
  const QString& folder() const { return folder_; }

 Q_SIGNALS:
  void changed();  ///< the folder has gone, or is back

 private:
  Workplace workplace_;
  std::function<bool()> needed_;
  QTimer timer_{this};
  QString folder_;
  bool missing_ = false;
};

}  // namespace qk
