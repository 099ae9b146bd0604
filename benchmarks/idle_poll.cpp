// A tick over 100 idle lines against the bare look-ups of their flag files.
#include <fcntl.h>
#include <sys/stat.h>

#include <QFileInfo>
#include <ctime>
#include <memory>
#include <vector>

#include "benchmarks/bench_line.h"
#include "benchmarks/pairs.h"

namespace qk::bench {

namespace {

constexpr int kLines = 100;

class DeafReceiver : public ShotReceiver {
 public:
  dao::Database* wettkampf() override { return nullptr; }
  bool istNeu(const QString&) override { return false; }
  bool uebernehmeSchuss(const std::shared_ptr<HaeringSchuss>&) override { return true; }
  void summenZeile(const QString&) override {}
};

/// A folder in which nothing happened for an hour, as an idle one is.
void settle(const QString& folder) {
  const timespec hourAgo[2] = {{time(nullptr) - 3600, 0}, {time(nullptr) - 3600, 0}};
  utimensat(AT_FDCWD, folder.toUtf8().constData(), hourAgo, 0);
}

void house(Rounds& rounds) {
  BenchPlace place;
  DeafReceiver receiver;
  std::vector<std::unique_ptr<LineExchange>> lines;
  for (int n = 1; n <= kLines; ++n) {
    lines.push_back(std::make_unique<LineExchange>(place.workplace(), receiver));
    lines.back()->setNetzverzeichnis(place.exchangeFolder());
    lines.back()->setLinie(n);
  }
  settle(place.exchangeFolder());
  while (rounds.next())
    for (const auto& line : lines) line->tick();
}

void bare(Rounds& rounds) {
  BenchPlace place;
  QStringList flags;
  for (int n = 1; n <= kLines; ++n) flags << place.exchangeFolder() + QString("HSlav%1.ctl").arg(n);
  while (rounds.next())
    for (const QString& flag : flags) keep(QFileInfo::exists(flag));
}

const Registered registered{
    Pair{"Leerer Takt über 100 Linien", 3.0, "gegen bloßes Nachsehen nach den Dateien", house, bare}};

}  // namespace

}  // namespace qk::bench
