#include "benchmarks/made_once.h"

#include <QDir>
#include <filesystem>
#include <map>
#include <stdexcept>

namespace qk::bench {

namespace {

constexpr auto kVariable = "QK_BENCH_GEMACHTES";

std::filesystem::path native(const QString& path) {
  return path.toStdU16String();
}

}  // namespace

QString inMemory() {
  const QString memory = "/dev/shm";
  return (QDir(memory).exists() ? memory : QDir::tempPath()) + "/qk-bench-" + QString(6, 'X');
}

void keepMadeIn(const QString& folder) {
  qputenv(kVariable, folder.toUtf8());
}

OwnCopy::OwnCopy(const QString& name, const std::function<void(const QString&)>& make) : folder_(inMemory()) {
  if (!qEnvironmentVariableIsSet(kVariable)) throw std::runtime_error("nobody said where what is made stays");
  const QDir all(qEnvironmentVariable(kVariable));
  if (!all.exists(name)) {
    const QString unfinished = name + "-unfertig";
    QDir(all.filePath(unfinished)).removeRecursively();  // of a making that failed
    all.mkpath(unfinished);
    make(all.filePath(unfinished));
    std::filesystem::rename(native(all.filePath(unfinished)), native(all.filePath(name)));
  }
  std::filesystem::copy(native(all.filePath(name)), native(folder_.path()),
                        std::filesystem::copy_options::recursive);
}

QString madeStore(const QString& name, const std::function<void(const QString&)>& make) {
  static std::map<QString, OwnCopy> copies;
  const QString file = "/wettkampf.qkk";
  return copies.try_emplace(name, name, [&](const QString& folder) { make(folder + file); })
             .first->second.path() +
         file;
}

}  // namespace qk::bench
