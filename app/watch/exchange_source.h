// The exchange folder: a station that can't be heard looks like one that has nothing to say, and a folder
// that answers slowly makes every line wait.
#pragma once

#include <deque>
#include <functional>
#include <memory>

#include "app/watch/watch_source.h"
#include "platform/runtime/storage.h"

namespace qk {

class ExchangeSource : public WatchSource {
 public:
  /// Of whatever is found here. Grave means that no station is heard.
  static inline const QString Key = "austausch";
  /// Each line looks into the folder once a second and waits for the answer.
  static constexpr std::chrono::milliseconds kSlow{1000};
  /// What a folder that was slow has to come down to.
  static constexpr std::chrono::milliseconds kQuick{500};
  /// The median of so many listings counts, so that a single hiccup says nothing.
  static constexpr size_t kListings = 5;
  /// Looks from one listing to the next; those between only see whether the folder is there.
  static constexpr int kLooksAListing = 5;

  /// `folder` is asked in the look's thread.
  ExchangeSource(std::shared_ptr<Storage> storage, std::function<QString()> folder);

  std::vector<Threat> look(const QDateTime& now) override;
  std::chrono::seconds interval() const override { return std::chrono::seconds(1); }
  Threat silence(const QDateTime& since) const override;

 private:
  bool isThere();
  void forget();
  std::chrono::milliseconds median() const;

  std::shared_ptr<Storage> storage_;
  std::function<QString()> folder_;
  QString lookedAt_;
  std::deque<std::chrono::milliseconds> times_;
  int looks_ = 0;
  bool slow_ = false;
};

}  // namespace qk
