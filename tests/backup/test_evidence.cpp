// The evidence of a copy as a text, and which copies a folder keeps.
#include <QTemporaryDir>
#include <QtTest>

#include "backup/copy_folder.h"
#include "platform/runtime/files.h"

using namespace qk;

namespace {

Evidence someEvidence() {
  return {"/home/büro/pokal 2026.qkk",
          QDateTime(QDate(2026, 11, 22), QTime(15, 10, 7)),
          17,
          "pokal 2026 2026-11-22 15-10-07.qkk",
          1597440,
          QByteArray(32, '\x9f'),
          0xfedcba9876543210,
          {{"Haering_Daten", 1204, 0x7c211433f0207159}, {"Schützen Daten", 0, 0}}};
}

QStringList momentsOf(const std::vector<ProvenCopy>& copies) {
  QStringList found;
  for (const ProvenCopy& copy : copies) found.append(copy.evidence.moment.toString("dd. HH:mm"));
  return found;
}

std::vector<ProvenCopy> copiesAt(const QStringList& moments) {
  std::vector<ProvenCopy> copies;
  for (const QString& text : moments) {
    Evidence evidence = someEvidence();
    evidence.moment = QDateTime::fromString("2026-11-" + text, "yyyy-MM-dd HH:mm");
    copies.push_back({"/x/" + text + ".qkk", evidence});
  }
  return copies;
}

}  // namespace

class TestEvidence : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void readsWhatItWrites() {
    const Evidence wanted = someEvidence();
    const auto found = evidenceIn(evidenceText(wanted));
    QVERIFY(found.has_value());
    QCOMPARE(found->source, wanted.source);
    QCOMPARE(found->moment, wanted.moment);
    QCOMPARE(found->sequence, wanted.sequence);
    QCOMPARE(found->file, wanted.file);
    QCOMPARE(found->size, wanted.size);
    QCOMPARE(found->sha256, wanted.sha256);
    QCOMPARE(found->structure, wanted.structure);
    QVERIFY(found->tables == wanted.tables);
    QCOMPARE(found->rows(), 1204);
  }

  void takesNoOtherText() {
    const QByteArray text = evidenceText(someEvidence());
    QVERIFY(evidenceIn(text));
    for (qsizetype at = 0; at < text.size(); ++at) {
      QByteArray changed = text;
      changed[at] = static_cast<char>(changed[at] ^ 1);
      QVERIFY2(!evidenceIn(changed), qPrintable(QString::number(at)));
      QVERIFY2(!evidenceIn(text.left(at)), qPrintable(QString::number(at)));
    }
    QVERIFY(!evidenceIn(text + "\n"));
    QVERIFY(!evidenceIn({}));
  }

  void contentsAreMoreThanRows() {
    const Evidence one = someEvidence();
    Evidence other = one;
    other.moment = other.moment.addSecs(60);
    other.sha256.clear();
    QVERIFY(one.isOfSameContents(other));
    other.tables[0].digest += 1;
    QVERIFY(!one.isOfSameContents(other));
    other = one;
    other.structure += 1;
    QVERIFY(!one.isOfSameContents(other));
  }

  void namesSayOfWhatAndWhen() {
    const QDateTime moment(QDate(2026, 11, 22), QTime(15, 10, 7));
    QCOMPARE(copyStemOf("/s", "/daten/pokal2026.qkk", moment), QString("/s/pokal2026 2026-11-22 15-10-07"));
    QCOMPARE(copyStemOf("/s/", "/daten/pokal.v2.qkk", moment), QString("/s/pokal_v2 2026-11-22 15-10-07"));
    // One works on with a copy: its own copies don't bear both times.
    QCOMPARE(copyStemOf("/s", "/s/pokal 2026-11-21 09-00-00.qkk", moment),
             QString("/s/pokal 2026-11-22 15-10-07"));
    QCOMPARE(evidencePathOf("/s/pokal 2026-11-22 15-10-07.qkk"),
             QString("/s/pokal 2026-11-22 15-10-07.beleg"));
  }

  void keepsTheLastNineAndOneADay() {
    const QStringList old = {"18 09:00", "18 18:00", "19 10:00", "20 09:00", "20 11:00", "20 17:00"};
    QStringList last;
    for (int i = 0; i < kKeptCopies; ++i) last.append(QString("22 1%1:00").arg(i));
    QCOMPARE(momentsOf(superfluous(copiesAt(old + last))),
             QStringList({"18. 09:00", "20. 09:00", "20. 11:00"}));
    QCOMPARE(momentsOf(superfluous(copiesAt(QStringList{"22 08:00"} + last))), QStringList({"22. 08:00"}));
    QCOMPARE(momentsOf(superfluous(copiesAt(last))), QStringList());
    QCOMPARE(momentsOf(superfluous(copiesAt(old))), QStringList());
    QCOMPARE(momentsOf(superfluous({})), QStringList());
  }
};

QTEST_GUILESS_MAIN(TestEvidence)
#include "test_evidence.moc"
