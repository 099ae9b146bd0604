// The look of 100 lines for what their stations report, each second, in a folder of 1,500 files: on an idle
// range, and on a busy one. Against bare look-ups of the lines' flags. Most of it is the kernel's work, so
// its calls are counted beside the instructions.
#include <fcntl.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <vector>

#include "benchmarks/bench_line.h"
#include "benchmarks/pairs.h"

namespace qk::bench {

namespace {

constexpr int kLines = 100;
constexpr int kFiles = 1500;
constexpr int kReportsASecond = 5;
constexpr int kLinesAReport = kLines / kReportsASecond;

class DeafReceiver : public ShotReceiver {
 public:
  dao::Database* wettkampf() override { return nullptr; }
  bool istNeu(const QString&) override { return false; }
  bool uebernehmeSchuss(const std::shared_ptr<HaeringSchuss>&) override { return true; }
  void summenZeile(const QString&) override {}
};

void put(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error(file.errorString().toStdString());
}

/// A range's exchange folder. Its path is as long as a usual one, but always the same: one that differs by
/// run would be hashed to another place, and found with another count of steps.
class Exchange {
 public:
  Exchange() {
    if (!QDir::setCurrent(place_.exchangeFolder()) || !QDir().mkpath(folder()))
      throw std::runtime_error("no exchange folder");
    for (int number = 0; number < kFiles; ++number) put(folder() + QString("0_hd_LG_%1.def").arg(number));
  }
  Workplace workplace() { return place_.workplace(); }
  static QString folder() { return "Netzlaufwerk/Schiessstand/Intarso/Austausch/"; }
  static QString data(int line) { return folder() + QString("HSlav%1.nrt").arg(line); }
  static QString flag(int line) { return folder() + QString("HSlav%1.ctl").arg(line); }

  /// As if nothing had happened for an hour.
  static void settle() {
    const timespec hourAgo[2] = {{time(nullptr) - 3600, 0}, {time(nullptr) - 3600, 0}};
    utimensat(AT_FDCWD, folder().toUtf8().constData(), hourAgo, 0);
  }
  /// What a station writes. It says nothing: what a shot costs is measured by itself.
  static void report(int line) {
    put(data(line));
    put(flag(line));
  }

 private:
  BenchPlace place_;
};

/// The lines 1 to kLines of the program.
class HouseLines {
 public:
  explicit HouseLines(Exchange& exchange) {
    for (int number = 1; number <= kLines; ++number) {
      lines_.push_back(std::make_unique<LineExchange>(exchange.workplace(), receiver_));
      lines_.back()->setNetzverzeichnis(exchange.folder());
      lines_.back()->setLinie(number);
    }
  }
  void tick(int number) { lines_[static_cast<size_t>(number - 1)]->tick(); }

 private:
  DeafReceiver receiver_;
  std::vector<std::unique_ptr<LineExchange>> lines_;
};

/// The same by the toolkit alone.
class BareLines {
 public:
  explicit BareLines(const Exchange& exchange) {
    for (int number = 1; number <= kLines; ++number) {
      data_ << exchange.data(number);
      flags_ << exchange.flag(number);
    }
  }
  void tick(int number) {
    const QString& flag = flags_[number - 1];
    if (!QFileInfo::exists(flag)) return;
    QFile data(data_[number - 1]);
    if (!data.open(QIODevice::ReadOnly)) throw std::runtime_error(data.errorString().toStdString());
    keep(data.readAll());
    QFile::remove(flag);
  }

 private:
  QStringList data_, flags_;
};

template <class Lines>
void idle(Rounds& rounds) {
  Exchange exchange;
  Lines lines(exchange);
  exchange.settle();
  while (rounds.next())
    for (int number = 1; number <= kLines; ++number) lines.tick(number);
}

/// The lines tick one after the other over the second, and so report the stations.
template <class Lines>
void busy(Rounds& rounds) {
  Exchange exchange;
  Lines lines(exchange);
  while (rounds.next()) {
    for (int first = 1; first <= kLines; first += kLinesAReport) {
      rounds.pause();
      exchange.report(first + kLinesAReport / 2);
      rounds.resume();
      for (int number = first; number < first + kLinesAReport; ++number) lines.tick(number);
    }
  }
}

Pair pairOf(const QString& name, double bound, const QString& unit, const Work& house, const Work& bare) {
  return {name, bound, unit, house, bare, 20};
}

Pair inCalls(Pair pair) {
  pair.calls = true;
  return pair;
}

const Registered registered[] = {
    Registered{pairOf("Takt über 100 stille Linien", 0.67, "gegen bloßes Nachsehen nach den Flaggen",
                      idle<HouseLines>, idle<BareLines>)},
    Registered{pairOf("Takt über 100 Linien, 5 melden", 1.21, "gegen bloßes Nachsehen und Lesen",
                      busy<HouseLines>, busy<BareLines>)},
    Registered{inCalls(pairOf("Systemaufrufe dabei", 2, "gegen bloßes Nachsehen und Lesen", busy<HouseLines>,
                              busy<BareLines>))}};

}  // namespace

}  // namespace qk::bench
