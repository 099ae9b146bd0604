// A competition, an exchange folder and firing lines for a benchmark. Everything lies in a memory file system
// where there is one: syncing costs nothing there, for the house and for the bare way alike.
#pragma once

#include <QTemporaryDir>
#include <memory>

#include "app/ground/global_variablen.h"
#include "link/exchange.h"
#include "link/linecontrol/usercontrol1.h"
#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/files.h"
#include "platform/settings/settings.h"

namespace qk::bench {

/// Any box ends the benchmark: what is measured must not fail.
class NoDialogs : public Dialogs {
 public:
  BoxAnswer show(const Box& box) override;
  QString input(const QString&, const QString&, const QString&) override { return {}; }
  QString openFile(const QString&, const QString&) override { return {}; }
  QString saveFile(const QString&, const QString&) override { return {}; }
  QString chooseFolder(const QString&, const QString&) override { return {}; }
  std::optional<FontChoice> chooseFont(const FontChoice&) override { return std::nullopt; }
  std::optional<PrinterSetup> printerSetup(const PrinterSetup&) override { return std::nullopt; }
};

struct InFolder {
  QString folder;
  int rows = 0;
};
struct OnFolder {
  QString folder;
};

class BenchPlace {
 public:
  /// A competition with the program's own tables, and `rows` booked shots in Haering_Daten.
  explicit BenchPlace(int rows = 0);
  /// The same in a folder that stays.
  explicit BenchPlace(const InFolder& place);
  /// On what an earlier process left in a folder, there or where it has been copied from; nothing is made.
  explicit BenchPlace(const OnFolder& place);

  Workplace workplace() { return {clock_, random_, waits_, files_, settings_, dialogs_}; }
  GlobalVariablen& global() { return global_; }
  QString exchangeFolder() const { return path_ + "/austausch/"; }
  QString competition() const { return path_ + "/wettkampf.qkk"; }
  Files& files() { return files_; }

 private:
  BenchPlace(std::unique_ptr<QTemporaryDir> folder, const QString& path);
  void make(int rows);

  std::unique_ptr<QTemporaryDir> folder_;
  QString path_;
  SystemClock clock_;
  SystemRandom random_;
  EventLoopWaits waits_;
  Files files_;
  Settings settings_;
  NoDialogs dialogs_;
  GlobalVariablen global_;
};

inline constexpr int kMillion = 1'000'000, kTenMillion = 10 * kMillion;

/// A place with so many booked shots that all benchmarks of a process share: making a million rows takes
/// longer than measuring on them.
BenchPlace& sharedPlace(int rows);

/// Record line number n of line 1, as a station writes it.
QString record(int n);
/// The number n of the record that a row of Haering_Daten came from.
int shotOf(const dao::Recordset& row);
/// The pair of files with which a station reports the line.
void report(const QString& exchangeFolder, const QString& line);
/// Fires the control's timer once.
void tick(UserControl1& line);

}  // namespace qk::bench
