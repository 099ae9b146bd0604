// The quick order of German texts is the collator's own.
#include <QCollator>
#include <QRandomGenerator>
#include <QTest>

#include "platform/dao/sql/german_order.h"

using qk::dao::sql::GermanOrder;

class TestGermanOrder : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { collator.setCaseSensitivity(Qt::CaseInsensitive); }

  void comparesAsTheCollator_data() {
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    const auto row = [](const char* left, const char* right) {
      QTest::addRow("%s and %s", left, right) << QString(left) << QString(right);
    };
    row("", "");
    row("", "a");
    row("", "\x01");
    row("Müller", "müller");
    row("Muller", "Müller");
    row("Mullerx", "Müller");
    row("Müllerx", "Muller");
    row("Weiß", "Weiss");
    row("Weißa", "Weissb");
    row("Weißs", "Weisß");
    row("Schütze 9", "Schütze 10");
    row("a-b", "ab");
    row("a b", "a_b");
    row("a\tb", "ab");
    row("ab\u0308", "ac");
    row("l\u00b7", "lm");
    row("co\u0302te\u0301", "côte");
    row("Ærø", "Aero");
    row("=\u0338", "≠");
    row("Ωmega", "zeta");
    row("ä", "æ");
  }
  void comparesAsTheCollator() {
    QFETCH(QString, left);
    QFETCH(QString, right);
    QVERIFY(agrees(left, right));
    QVERIFY(agrees(right, left));
  }

  void everyTwoCharactersCompareAsTheCollator() {
    for (char16_t left = 1; left < 0x180; ++left)
      for (char16_t right = 1; right < 0x180; ++right)
        if (!agrees(QString(QChar(left)), QString(QChar(right))))
          QFAIL(qPrintable(QString("%1 and %2").arg(uint(left), 4, 16).arg(uint(right), 4, 16)));
  }

  void anyTextsCompareAsTheCollator_data() {
    QTest::addColumn<QString>("letters");
    QTest::newRow("names") << "aAäÄbsSßuüzZ-, 019";
    QTest::newRow("all marks") << "aàáâãäåcçeèéêëiìíîïnñoòóôõöøuùúûüyýÿæðþß";
    QTest::newRow("signs") << "a!\"#$%&'()*+,-./:;<=>?@[]^_`{|}~ \t\x01\u0308\u0338·";
    QTest::newRow("anything") << "aäßſK€Ωωǆẞ\u0301\u0308😀l·L";
  }
  void anyTextsCompareAsTheCollator() {
    QFETCH(QString, letters);
    QRandomGenerator random(7);
    const auto text = [&](const QString& beginning) {
      QString made = beginning;
      for (int length = random.bounded(5); length > 0; --length)
        made += letters[random.bounded(letters.size())];
      return QString::fromUtf8(made.toUtf8());
    };
    for (int i = 0; i < 100'000; ++i) {
      const QString shared = text({});
      const QString left = text(shared), right = text(shared);
      if (!agrees(left, right)) QFAIL(qPrintable(left + " and " + right));
    }
  }

 private:
  static int sign(int number) { return (number > 0) - (number < 0); }
  bool agrees(const QString& left, const QString& right) {
    return sign(order.compare(left.toUtf8(), right.toUtf8())) == sign(collator.compare(left, right));
  }

  GermanOrder order;
  QCollator collator{QLocale(QLocale::German, QLocale::Germany)};
};

QTEST_GUILESS_MAIN(TestGermanOrder)
#include "test_german_order.moc"
