// qk-bench [--json FILE] [--only TEXT] [--gross]: prints every ratio with its bound; exit status 1 when one
// is exceeded. qk-bench --gezaehlt NAME --seite house|bare [--bereiten|--erstmals] is what it starts to count
// the instructions of a side.
#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTemporaryDir>
#include <QTextStream>
#include <exception>

#include "benchmarks/counting.h"
#include "benchmarks/made_once.h"
#include "benchmarks/pairs.h"
#include "benchmarks/timing.h"
#include "platform/runtime/program_call.h"

namespace {

using namespace qk::bench;

/// What is measured, as it goes: printed at once, and kept.
class Results {
 public:
  /// A measuring that fails has no figure; the others go on.
  template <class Measuring>
  void take(const QString& name, double bound, const QString& unit, const Measuring& measuring) {
    try {
      add(name, measuring(), bound, unit);
    } catch (const std::exception& problem) {
      good_ = false;
      QTextStream(stderr) << name << ": " << QString::fromUtf8(problem.what()) << Qt::endl;
    }
  }

  bool has(const QString& name) const { return medians_.contains(name); }
  double of(const QString& name) const { return medians_[name]; }
  const QJsonArray& rows() const { return rows_; }
  bool allGood() const { return good_; }

 private:
  void add(const QString& name, const Spread& measured, double bound, const QString& unit) {
    const bool holds = measured.median <= bound;
    good_ = good_ && holds;
    medians_[name] = measured.median;
    QJsonObject row{{"name", name}, {"ratio", measured.median}, {"bound", bound}, {"unit", unit}};
    QString quartiles;
    if (measured.quartiles) {
      row["lower"] = measured.quartiles->lower;
      row["upper"] = measured.quartiles->upper;
      quartiles = QString("  (Viertel %1 bis %2)")
                      .arg(measured.quartiles->lower, 0, 'f', 2)
                      .arg(measured.quartiles->upper, 0, 'f', 2);
    }
    rows_ << row;
    QTextStream(stdout) << QString("%1 %2  (höchstens %3)  %4%5%6\n")
                               .arg(name, -34)
                               .arg(QString::number(measured.median, 'f', 2), 8)
                               .arg(QString::number(bound, 'f', 2))
                               .arg(unit, quartiles, holds ? "" : "   ÜBERSCHRITTEN");
  }

  QMap<QString, double> medians_;
  QJsonArray rows_;
  bool good_ = true;
};

void measureAll(Results& results, const QString& only, bool large) {
  for (const Pair& pair : pairs())
    if (pair.name.contains(only) && (large || !pair.large))
      results.take(pair.name, pair.bound, pair.unit,
                   [&] { return pair.counted > 0 ? Spread(countedRatio(pair)) : timedRatio(pair); });
  for (const Quotient& quotient : quotients())
    if (results.has(quotient.over) && results.has(quotient.under))
      results.take(quotient.name, quotient.bound, quotient.unit,
                   [&] { return Spread(results.of(quotient.over) / results.of(quotient.under)); });
  for (const Figure& figure : figures())
    if (figure.name.contains(only)) results.take(figure.name, figure.bound, figure.unit, figure.measure);
}

}  // namespace

int main(int argc, char** argv) {
  countFromHere(argc, argv);
  QApplication app(argc, argv);
  QCommandLineParser parser;
  parser.addOption({"json", "Writes a list of objects name, ratio, bound, unit, lower, upper.", "FILE"});
  parser.addOption({"only", "Only benchmarks whose name holds TEXT.", "TEXT"});
  parser.addOption({"gross", "Also those of ten million rows."});
  parser.addOption({"gezaehlt", "Runs the rounds of one side of a counted benchmark.", "NAME"});
  parser.addOption({"seite", "Which: house or bare.", "SIDE"});
  parser.addOption({"bereiten", "Makes what the rounds need, and runs none."});
  parser.addOption({"erstmals", "Counts from the process's beginning."});
  if (qk::answeredCall(app.arguments().mid(1), "qk-bench", parser.helpText())) return 0;
  parser.process(app);

  if (parser.isSet("gezaehlt"))
    return runCounted(parser.value("gezaehlt"), parser.value("seite"), parser.isSet("bereiten"));

  const QTemporaryDir made;
  keepMadeIn(made.path());
  Results results;
  measureAll(results, parser.value("only"), parser.isSet("gross"));
  if (parser.isSet("json")) {
    QFile file(parser.value("json"));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(results.rows()).toJson()) < 0) {
      QTextStream(stderr) << file.errorString() << Qt::endl;
      return 2;
    }
  }
  return results.allGood() ? 0 : 1;
}
