// A line without a window: keeps open shots and stored rows in memory.
#pragma once

#include <QStringList>
#include <functional>

#include "link/exchange.h"

namespace qk::test {

class PlainLine : public ShotReceiver {
 public:
  KeyedCollection<HaeringSchuss> open;
  QStringList rows;  ///< keys of the stored shots, in order
  QStringList sums;
  bool durable = true;              ///< false refuses shots
  std::function<void()> meanwhile;  ///< runs while a shot is taken

  dao::Database* wettkampf() override { return nullptr; }
  bool istNeu(const QString& sKey) override { return WennHaeringKeyNichtVorhanden(open, sKey); }
  bool uebernehmeSchuss(const std::shared_ptr<HaeringSchuss>& schuss) override {
    if (!durable) return false;
    open.add(schuss, schuss->Key);
    rows << schuss->Key;
    if (meanwhile) meanwhile();
    return true;
  }
  void summenZeile(const QString& text) override { sums << text; }
};

}  // namespace qk::test
