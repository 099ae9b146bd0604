// Generating the configuration of a large range, 500 disciplines for 3 weapons each: from the generator's
// rows to the files in the folder, against the bare writing of the same bytes to the same number of files,
// each written beside its place and renamed.
#include <QFile>
#include <QTemporaryDir>
#include <filesystem>
#include <stdexcept>

#include "benchmarks/pairs.h"
#include "targetconfig/definition_files.h"
#include "tests/targetconfig/configured_competition.h"

namespace qk::bench {
namespace {

constexpr int kDisciplines = 500;

[[noreturn]] void failBench(const QString& problem) {
  throw std::runtime_error(problem.toStdString());
}

/// A competition of that size, its rows, and a folder of files that each run replaces.
class Generator {
 public:
  Generator() : office_(failBench) {
    for (int i = 0; i < kDisciplines; ++i)
      office_.addDiscipline(
          {QString("Disziplin Nr. %1").arg(i), 10 + i % 50, i % 2 == 0, {"LG", "LP", "ZS"}});
    rows_.build(office_.database(), office_.place.files, office_.folder());
    for (int row = 1; row < rows_.table().rows(); ++row) {
      rows_.table().setText(row, DefinitionRows::DateiWaffe, "0_hwLG.def");
      rows_.table().setText(row, DefinitionRows::DateiScheibe, "0_hsLG.def");
    }
    create();
    if (office_.names().size() != 3 * kDisciplines + 1) failBench("Es fehlen Dateien");
  }

  void create() {
    office_.place.dialogs.expect("Datei(en) erstellt");
    const Workplace place = office_.place.workplace();
    DefinitionFiles files({place.clock, place.random, place.waits, files_, place.settings, place.dialogs},
                          rows_, office_.folder());
    if (!files.create(Output::IniUndDef)) failBench("Nicht erstellt");
  }

  test::ConfiguredCompetition& office() { return office_; }

 private:
  test::ConfiguredCompetition office_;
  DefinitionRows rows_;
  Files files_;  // without the journal of the test's own door
};

void house(Rounds& rounds) {
  Generator generator;
  while (rounds.next()) generator.create();
}

void bare(Rounds& rounds) {
  Generator generator;
  std::vector<std::pair<QString, QByteArray>> files;
  for (const QString& name : generator.office().names())
    files.emplace_back(generator.office().folder() + name, generator.office().content(name));
  while (rounds.next()) {
    for (const auto& [path, content] : files) {
      const QString beside = path + ".neu";
      QFile file(beside);
      if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(content) != content.size())
        failBench("Nicht geschrieben");
      file.close();
      std::filesystem::rename(beside.toStdU16String(), path.toStdU16String());
    }
  }
}

const Registered registered{Pair{.name = "1.500 def-Dateien und esa_preis.ini",
                                 .bound = 1.1,
                                 .unit = "Systemaufrufe; dieselben Bytes, blank geschrieben",
                                 .house = house,
                                 .bare = bare,
                                 .counted = 2,
                                 .calls = true}};

}  // namespace
}  // namespace qk::bench
