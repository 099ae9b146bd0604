#include "app/exchange_watch.h"

#include <utility>

#include "app/ground/settings_keys.h"
#include "platform/runtime/files.h"

namespace qk {

namespace {

constexpr int kLookMilliseconds = 1000;

}  // namespace

ExchangeWatch::ExchangeWatch(const Workplace& workplace, std::function<bool()> needed, QObject* parent)
    : QObject(parent), workplace_(workplace), needed_(std::move(needed)) {
  timer_.setInterval(kLookMilliseconds);
  connect(&timer_, &QTimer::timeout, this, &ExchangeWatch::look);
}

void ExchangeWatch::look() {
  const QString folder = withTrailingSeparator(liesText(workplace_.settings, keys::Netzverzeichnis));
  const bool missing = !workplace_.files.folderExists(folder);
  const bool another = std::exchange(folder_, folder) != folder;
  if (std::exchange(missing_, missing) != missing || (missing && another)) Q_EMIT changed();
  const bool goOn = missing_ || needed_();
  if (!goOn)
    timer_.stop();
  else if (!timer_.isActive())
    timer_.start();
}

}  // namespace qk
