// qk-bench [--json FILE] [--only TEXT]: prints every ratio with its bound; exit status 1 when one is
// exceeded. qk-bench --gezaehlt NAME --seite house|bare is what it starts to count the instructions of a
// side.
#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTextStream>
#include <algorithm>

#include "benchmarks/counting.h"
#include "benchmarks/pairs.h"
#include "platform/runtime/program_call.h"

namespace {

using namespace qk::bench;

constexpr int kRepetitions = 9;

/// Keeps the processor time per iteration of every repetition, by benchmark name.
class Collector : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred) failed << QString::fromStdString(run.error_message);
      if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
      times[QString::fromStdString(run.run_name.function_name)]
          << run.cpu_accumulated_time / static_cast<double>(run.iterations);
    }
  }
  QMap<QString, QList<double>> times;
  QStringList failed;
};

double median(QList<double> values) {
  if (values.isEmpty()) return 0;
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void registerSide(const QString& name, const Work& work) {
  benchmark::RegisterBenchmark(name.toStdString().c_str(),
                               [work](benchmark::State& state) {
                                 Rounds rounds(state);
                                 work(rounds);
                               })
      ->Repetitions(kRepetitions)
      ->MinTime(0.05)
      ->MeasureProcessCPUTime();  // a worker thread counts too
}

QJsonObject row(const QString& name, double ratio, double bound, const QString& unit) {
  const bool good = ratio <= bound;
  QTextStream(stdout) << QString("%1 %2  (höchstens %3)  %4%5\n")
                             .arg(name, -34)
                             .arg(QString::number(ratio, 'f', 2), 8)
                             .arg(QString::number(bound, 'f', 2))
                             .arg(unit, good ? "" : "   ÜBERSCHRITTEN");
  return {{"name", name}, {"ratio", ratio}, {"bound", bound}, {"unit", unit}};
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QCommandLineParser parser;
  parser.addOption({"json", "Writes a list of objects name, ratio, bound, unit.", "FILE"});
  parser.addOption({"only", "Only benchmarks whose name holds TEXT.", "TEXT"});
  parser.addOption({"gezaehlt", "Runs the rounds of one side of a counted benchmark.", "NAME"});
  parser.addOption({"seite", "Which: house or bare.", "SIDE"});
  if (qk::answeredCall(app.arguments().mid(1), "qk-bench", parser.helpText())) return 0;
  parser.process(app);
  const auto wanted = [&](const QString& name) { return name.contains(parser.value("only")); };

  if (parser.isSet("gezaehlt")) return runCounted(parser.value("gezaehlt"), parser.value("seite"));

  bool timed = false;
  for (const Pair& pair : pairs()) {
    if (!wanted(pair.name) || pair.counted > 0) continue;
    timed = true;
    registerSide(pair.name + "|house", pair.house);
    registerSide(pair.name + "|bare", pair.bare);
  }
  int count = 2;
  char program[] = "qk-bench", interleave[] = "--benchmark_enable_random_interleaving=true";
  char* arguments[] = {program, interleave, nullptr};
  benchmark::Initialize(&count, arguments);
  Collector collector;
  if (timed) benchmark::RunSpecifiedBenchmarks(&collector);
  for (const QString& problem : collector.failed) QTextStream(stderr) << problem << Qt::endl;

  QMap<QString, double> ratios;
  QJsonArray rows;
  for (const Pair& pair : pairs()) {
    if (!wanted(pair.name)) continue;
    const double ratio = pair.counted > 0 ? countedRatio(pair)
                                          : median(collector.times[pair.name + "|house"]) /
                                                median(collector.times[pair.name + "|bare"]);
    ratios[pair.name] = ratio;
    rows << row(pair.name, ratio, pair.bound, pair.unit);
  }
  for (const Quotient& quotient : quotients())
    if (ratios.contains(quotient.over) && ratios.contains(quotient.under))
      rows << row(quotient.name, ratios[quotient.over] / ratios[quotient.under], quotient.bound,
                  quotient.unit);
  for (const Figure& figure : figures())
    if (wanted(figure.name)) rows << row(figure.name, figure.measure(), figure.bound, figure.unit);

  if (parser.isSet("json")) {
    QFile file(parser.value("json"));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(rows).toJson()) < 0) {
      QTextStream(stderr) << file.errorString() << Qt::endl;
      return 2;
    }
  }
  const bool good =
      collector.failed.isEmpty() && std::all_of(rows.begin(), rows.end(), [](const QJsonValue& value) {
        return value["ratio"].toDouble() <= value["bound"].toDouble();
      });
  return good ? 0 : 1;
}
