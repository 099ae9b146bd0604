// What a typed result, weapon or date may be.
#include <QTest>

#include "evaluation/result_check.h"

using namespace qk;

namespace {

enum Flags { Rings = 1, Teiler = 2, Tenths = 4, Only = 8, Mixed = 16, Half = 32, Extra = 64, Limited = 128 };

Disziplin discipline(int flags, int shots, double most = 0) {
  Disziplin made;
  const auto flag = [flags](int one) { return std::int16_t(flags & one ? -1 : 0); };
  made.Name = "Probe";
  made.Ringe = flag(Rings);
  made.Teiler = flag(Teiler);
  made.RingZentel = flag(Tenths);
  made.Ring0XZehntel = flag(Only);
  made.RingXXZehntel = flag(Mixed);
  made.Ring05Zehntel = flag(Half);
  made.ZusatzTeiler = flag(Extra);
  made.DSBTeilerGrenze = flag(Limited);
  made.DSBTeilerGrenzWert = 50;
  made.RingSerie = std::int16_t(shots);
  made.dblMaxSerieDSB = most;
  return made;
}

const QString kAnyway = "\r\nTrotzdem übernehmen?";

}  // namespace

class TestResultCheck : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void results_data();
  void results();
  void noResult();
  void weapons();
  void dates_data();
  void dates();
};

void TestResultCheck::results_data() {
  QTest::addColumn<int>("flags");
  QTest::addColumn<int>("shots");
  QTest::addColumn<double>("most");
  QTest::addColumn<double>("typed");
  QTest::addColumn<QString>("doubt");
  const auto row = [](const char* name, int flags, int shots, double most, double typed,
                      const QString& doubt = {}) {
    QTest::newRow(name) << flags << shots << most << typed << doubt;
  };
  row("whole rings, the least", Rings, 40, 0, 0);
  row("whole rings, the most", Rings, 40, 0, 400);
  row("whole rings, too many", Rings, 40, 0, 401, "401: Eine Serie in Probe liegt zwischen 0 und 400.");
  row("whole rings, too few", Rings, 40, 0, -1, "-1: Eine Serie in Probe liegt zwischen 0 und 400.");
  row("whole rings, a tenth", Rings, 40, 0, 98.5, "98,5: Probe zählt ganze Ringe.");
  row("tenths, the most", Rings | Tenths, 40, 0, 436);
  row("tenths, too many", Rings | Tenths, 40, 0, 436.1,
      "436,1: Eine Serie in Probe liegt zwischen 0,0 und 436,0.");
  row("tenths, a hundredth", Rings | Tenths, 10, 0, 101.25,
      "101,25: Eine Serie hat höchstens eine Nachkommastelle.");
  row("tenth digits alone, the most", Rings | Only | Tenths, 10, 0, 90);
  row("tenth digits alone, too many", Rings | Only, 10, 0, 91,
      "91: Eine Serie in Probe liegt zwischen 0 und 90.");
  row("tenth digits alone, whole", Rings | Only | Tenths, 10, 0, 8.5, "8,5: Probe zählt ganze Ringe.");
  row("rings plus tenth digits, the most", Rings | Mixed, 10, 0, 190);
  row("rings plus tenth digits, too many", Rings | Mixed, 10, 0, 191,
      "191: Eine Serie in Probe liegt zwischen 0 und 190.");
  row("the first flag decides", Rings | Only | Mixed, 10, 0, 91,
      "91: Eine Serie in Probe liegt zwischen 0 und 90.");
  row("half rings", Rings | Half, 10, 0, 98.5);
  row("the extra shot counts no rings", Rings | Extra, 11, 0, 101,
      "101: Eine Serie in Probe liegt zwischen 0 und 100.");
  row("no number of shots", Rings, 0, 0, 4000);
  row("no number of shots, too few", Rings, 0, 0, -2, "-2: Eine Serie in Probe liegt bei mindestens 0.");
  row("neither rings nor teiler", 0, 10, 0, 100);
  row("teiler, the least", Teiler, 0, 0, 0);
  row("teiler, the most", Teiler, 0, 0, 9999.9);
  row("teiler, too many", Teiler, 0, 0, 10000, "10000: Ein Teiler in Probe liegt zwischen 0,0 und 9.999,9.");
  row("teiler, below", Teiler, 0, 0, -0.1, "-0,1: Ein Teiler in Probe liegt zwischen 0,0 und 9.999,9.");
  row("teiler, a hundredth", Teiler, 0, 0, 12.34, "12,34: Ein Teiler hat höchstens eine Nachkommastelle.");
  row("ring-teiler, all tens and no teiler", Rings | Teiler, 10, 100, 0);
  row("ring-teiler, below that", Rings | Teiler, 10, 100, -1,
      "-1: Ein Ring-Teiler in Probe liegt zwischen 0,0 und 10.099,9.");
  row("ring-teiler that starts too low", Rings | Teiler, 10, 90, -10);
  row("ring-teiler, the worst", Rings | Teiler, 10, 100, 10099.9);
  row("ring-teiler with a limit", Rings | Teiler | Limited, 10, 100, 150.1,
      "150,1: Ein Ring-Teiler in Probe liegt zwischen 0,0 und 150,0.");
  row("ring-teiler, tenths", Rings | Teiler | Tenths, 10, 109, 0);
  row("ring-teiler, other flags don't count", Rings | Teiler | Only | Mixed, 10, 100, -1,
      "-1: Ein Ring-Teiler in Probe liegt zwischen 0,0 und 10.099,9.");
}

void TestResultCheck::results() {
  QFETCH(int, flags);
  QFETCH(int, shots);
  QFETCH(double, most);
  QFETCH(double, typed);
  QFETCH(QString, doubt);
  const CellCheck check = checkErgebnis(discipline(flags, shots, most), typed);
  QCOMPARE(check.text, doubt.isEmpty() ? QString() : doubt + kAnyway);
  QCOMPARE(check.verdict, doubt.isEmpty() ? CellCheck::Verdict::Fine : CellCheck::Verdict::Doubtful);
}

void TestResultCheck::noResult() {
  const CellCheck check = checkErgebnis(discipline(Teiler, 0), QVariant());
  QCOMPARE(check.verdict, CellCheck::Verdict::Impossible);
  QCOMPARE(check.text,
           "Ein Ergebnis ohne Zahl gibt es nicht.\r\nBitte eine Zahl eingeben oder die Zeile löschen.");
}

void TestResultCheck::weapons() {
  Disziplin probe = discipline(Rings, 10);
  QCOMPARE(checkWaffe(probe, "XY").verdict, CellCheck::Verdict::Fine);  // it names none
  for (const char* kz : {"LG", "LP"}) {
    auto weapon = std::make_shared<Waffenklasse>();
    weapon->Kurzbezeichnung = kz;
    probe.Waffen.add(weapon, kz);
  }
  QCOMPARE(checkWaffe(probe, "lp").verdict, CellCheck::Verdict::Fine);
  for (const char* wrong : {"L", "", "KK"}) {
    const CellCheck check = checkWaffe(probe, wrong);
    QCOMPARE(check.verdict, CellCheck::Verdict::Doubtful);
    QCOMPARE(check.text, QString("Waffe \"%1\": In Probe wird mit LG, LP geschossen.").arg(wrong) + kAnyway);
  }
}

void TestResultCheck::dates_data() {
  QTest::addColumn<QVariant>("typed");
  QTest::addColumn<int>("verdict");
  QTest::addColumn<QString>("text");
  const auto row = [](const char* name, const QVariant& typed, CellCheck::Verdict verdict,
                      const QString& text = {}) { QTest::newRow(name) << typed << int(verdict) << text; };
  using V = CellCheck::Verdict;
  const QString none = "Ohne Datum gehört das Ergebnis zu keinem Schießtag." + kAnyway;
  const QString how = "\" ist kein Datum.\r\nBitte so eingeben: 20.11.2026 oder 20.11.2026 10:41:07";
  row("with a time", "20.11.2026 10:41:07", V::Fine);
  row("today", "22.11.2026 23:59:59", V::Fine);
  row("two digits", "1.2.26", V::Fine);
  row("a date of the store", QDateTime(QDate(2026, 11, 20), QTime(10, 0)), V::Fine);
  row("tomorrow", "23.11.2026", V::Doubtful, "Der 23.11.2026 liegt in der Zukunft." + kAnyway);
  row("a slip of the year", "20.11.2062 10:41:07", V::Doubtful,
      "Der 20.11.2062 liegt in der Zukunft." + kAnyway);
  row("long ago", "31.12.1989", V::Doubtful, "Der 31.12.1989 liegt weit zurück." + kAnyway);
  row("not so long ago", "01.01.1990", V::Fine);
  row("a time alone", "10:41", V::Doubtful, "Der 30.12.1899 liegt weit zurück." + kAnyway);
  row("none", QVariant(), V::Doubtful, none);
  row("blank", " ", V::Doubtful, none);
  row("no such day", "31.02.2026", V::Impossible, "\"31.02.2026" + how);
  row("a word", "gestern", V::Impossible, "\"gestern" + how);
}

void TestResultCheck::dates() {
  QFETCH(QVariant, typed);
  QFETCH(int, verdict);
  QFETCH(QString, text);
  const CellCheck check = checkDatum(typed, QDate(2026, 11, 22));
  QCOMPARE(int(check.verdict), verdict);
  QCOMPARE(check.text, text);
}

QTEST_APPLESS_MAIN(TestResultCheck)
#include "test_result_check.moc"
