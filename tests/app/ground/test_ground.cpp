// Rights, booking date, number texts, files, fields, fonts, keys of the settings.
#include <QTest>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "platform/runtime/error.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

/// One row of three columns, as much of a recordset as a field read needs.
class OneRow : public dao::Recordset {
 public:
  std::vector<dao::FieldDef> fields;
  QVariantList values;

  void add(dao::FieldType type, const QVariant& value) {
    dao::FieldDef field;
    field.name = "F" + QString::number(fields.size());
    field.type = type;
    fields.push_back(field);
    values += value;
  }
  int fieldCount() const override { return static_cast<int>(fields.size()); }
  const dao::FieldDef& fieldDef(int position) const override { return fields[static_cast<size_t>(position)]; }
  int fieldPosition(const QString& name) const override {
    for (int i = 0; i < fieldCount(); ++i)
      if (fieldDef(i).name == name) return i;
    throw Error(3265);
  }
  QVariant value(int position) const override { return values[position]; }

  bool bof() const override { return false; }
  bool eof() const override { return false; }
  void moveFirst() override {}
  void moveLast() override {}
  void moveNext() override {}
  void movePrevious() override {}
  void setValue(int, const QVariant&) override {}
  void addNew() override {}
  void edit() override {}
  void update() override {}
  void cancelUpdate() override {}
  void remove() override {}
  void findFirst(const QString&) override {}
  bool noMatch() const override { return false; }
  void setIndex(const QString&) override {}
  void seek(const QString&, const QVariantList&) override {}
  QByteArray bookmark() const override { return {}; }
  void setBookmark(const QByteArray&) override {}
  int recordCount() const override { return 1; }
  void requery() override {}
};

}  // namespace

class TestGround : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void rights_data();
  void rights();
  void aDamagedPasswordIsReported();
  void theRightIsAskedFor();
  void bookingDate_data();
  void bookingDate();
  void numberTexts();
  void cutting();
  void filesAndFolders();
  void deleting();
  void temporaryNames();
  void fieldsAreNeverNull();
  void fontsGoAndCome();
  void aMissingFontIsTheCurrentOne();
  void fontsThatCantBeKept();
  void fontsThatCantBeRead();
  void keysOfTheSettings();
};

void TestGround::rights_data() {
  QTest::addColumn<QString>("stored");
  QTest::addColumn<bool>("granted");
  QTest::newRow("nothing stored") << QString() << true;
  QTest::newRow("empty") << "" << true;
  QTest::newRow("six noughts") << "000000" << false;
  QTest::newRow("six ones") << "111111" << true;
  QTest::newRow("six, the last one counts") << "000001" << true;
  QTest::newRow("seven, granted") << "0000001" << true;
  QTest::newRow("seven, refused") << "1111110" << false;
  QTest::newRow("too short") << "11111" << false;
  QTest::newRow("longer") << "11111101" << false;
  QTest::newRow("another character") << "111111x" << false;
}
void TestGround::rights() {
  QFETCH(QString, stored);
  QFETCH(bool, granted);
  TestWorkplace place;
  if (!stored.isNull()) schreibe(place.settings, keys::Oberflaeche, stored);
  const QString password = "ge\fheim";  // the lowest character that has one twelve lower
  schreibe(place.settings, keys::OberflaechePasswort, password);
  GlobalVariablen global;
  global.bErgebnisseAendern = !granted;
  BenutzerRechteLaden(place.workplace(), global);
  QCOMPARE(global.bErgebnisseAendern, granted);
  QCOMPARE(liesText(place.settings, keys::OberflaechePasswort), password);
}

void TestGround::aDamagedPasswordIsReported() {
  const QString text =
      "Fehler: 5 - Ungültiger Prozeduraufruf oder ungültiges Argument\nFehler beim Ermitteln der "
      "Oberflächenfreigabe";
  TestWorkplace place;
  schreibe(place.settings, keys::OberflaechePasswort, QString("\t\t"));
  GlobalVariablen global;
  place.dialogs.expect(text, BoxAnswer::Abort).titled("Fehler").with(BoxButtons::AbortRetryIgnore);
  BenutzerRechteLaden(place.workplace(), global);
  QVERIFY(!global.bErgebnisseAendern);
  place.dialogs.expect(text, BoxAnswer::Retry);
  place.dialogs.expect(text, BoxAnswer::Ignore);
  BenutzerRechteLaden(place.workplace(), global);
  QVERIFY(global.bErgebnisseAendern);
}

void TestGround::theRightIsAskedFor() {
  TestWorkplace place;
  GlobalVariablen global;
  global.bErgebnisseAendern = true;
  QVERIFY(RechtPruefen(place.dialogs, global));
  global.bErgebnisseAendern = false;
  place.dialogs
      .expect(
          "Sie besitzen nicht das erforderliche Recht\r\num Ergebnisse zu löschen oder nachträglich zu "
          "ändern!")
      .titled("Hinweis")
      .with(BoxButtons::Ok)
      .showing(BoxIcon::Critical);
  QVERIFY(!RechtPruefen(place.dialogs, global));
}

void TestGround::bookingDate_data() {
  QTest::addColumn<QString>("now");
  QTest::addColumn<QString>("setting");
  QTest::addColumn<QString>("booked");
  QTest::newRow("05:59") << "20.11.2026 05:59:59"
                         << "1"
                         << "19.11.2026 05:59:59";
  QTest::newRow("06:00") << "20.11.2026 06:00:00"
                         << "1"
                         << "20.11.2026 06:00:00";
  QTest::newRow("midnight") << "01.01.2027"
                            << "-1"
                            << "31.12.2026";
  QTest::newRow("evening") << "20.11.2026 23:59:00"
                           << "1"
                           << "20.11.2026 23:59:00";
  QTest::newRow("switched off") << "20.11.2026 05:59:00"
                                << "0"
                                << "20.11.2026 05:59:00";
  QTest::newRow("never set") << "20.11.2026 05:59:00" << QString() << "20.11.2026 05:59:00";
}
void TestGround::bookingDate() {
  QFETCH(QString, now);
  QFETCH(QString, setting);
  QFETCH(QString, booked);
  TestWorkplace place;
  place.clock.set(now);
  if (!setting.isNull()) schreibe(place.settings, keys::SpeichernVortag, setting);
  QCOMPARE(Buchungsdatum(place.workplace()), booked);
}

void TestGround::numberTexts() {
  QCOMPARE(ZahlAusText("9,7"), 9.7);
  QCOMPARE(ZahlAusText("1.234,5"), 1234.5);
  QCOMPARE(ZahlAusText("12.50"), 1250.0);
  QCOMPARE(ZahlAusText(""), 0.0);
  QVERIFY(qAbs(Nachkommaanteil("10,9") - 0.9) < 1e-9);
  QCOMPARE(Nachkommaanteil("10"), 0.0);
  QCOMPARE(Nachkommaanteil("0"), 0.0);
  QCOMPARE(Nachkommaanteil("-3,5"), 0.0);
  QCOMPARE(Nachkommaanteil("abc"), 0.0);
}

void TestGround::cutting() {
  QCOMPARE(Abschneiden(123.47, 1), 123.4);
  QCOMPARE(Abschneiden(0, 1), 0.0);
  QCOMPARE(Abschneiden(-1.25, 1), -1.3);
  QCOMPARE(Abschneiden(12.999, 2), 12.99);
  QCOMPARE(Abschneiden(12.999, 0), 12.0);
}

void TestGround::filesAndFolders() {
  TestWorkplace place;
  QVERIFY(!DateiVorhanden(place.files, place.path("a")));
  QVERIFY(!DateiVorhanden(place.files, "  "));
  place.files.write(place.path("a"), "");
  QVERIFY(DateiVorhanden(place.files, place.path("a")));
  VerzeichnisAnlegen(place.files, place.path("ordner"));
  VerzeichnisAnlegen(place.files, place.path("ordner"));
  QVERIFY(VerzeichnisVorhanden(place.files, place.path("ordner")));
  QVERIFY(!VerzeichnisVorhanden(place.files, place.path("fehlt")));
  QVERIFY_THROWS_EXCEPTION(Error, VerzeichnisAnlegen(place.files, place.path("fehlt/tief")));
}

void TestGround::deleting() {
  TestWorkplace place;
  QVERIFY(!DateiLoeschen(place.files, " "));
  QVERIFY(!DateiLoeschen(place.files, place.path("fehlt.mdb"), true));
  place.files.write(place.path("a.mdb"), "");
  place.files.write(place.path("a.ldb"), "");
  QVERIFY(DateiLoeschen(place.files, place.path("a.mdb")));
  QVERIFY(place.files.exists(place.path("a.ldb")));
  place.files.write(place.path("a.mdb"), "");
  QVERIFY(DateiLoeschen(place.files, place.path("a.mdb"), true));
  QVERIFY(!place.files.exists(place.path("a.ldb")));
  place.files.write(place.path("a.mdb"), "");
  QVERIFY(DateiLoeschen(place.files, place.path("a.mdb"), true));
  place.files.write(place.path("a.mdb"), "");
  place.files.fail(FileStep::Remove, "a.mdb", 70);
  QVERIFY(!DateiLoeschen(place.files, place.path("a.mdb"), true));
}

void TestGround::temporaryNames() {
  TestWorkplace place;
  place.random.give({0.5, 0.5, 0.25});
  const QString first = TempDateiName(place.workplace(), "ZVA");
  const QString second = TempDateiName(place.workplace(), "ZVA");
  QVERIFY(first.startsWith(place.path("temp") + "/ZVA"));
  QVERIFY(first != second);
  QVERIFY(place.files.exists(first));
  QVERIFY(place.files.exists(second));
  QVERIFY(place.random.isEmpty());
}

void TestGround::fieldsAreNeverNull() {
  using dao::FieldType;
  OneRow row;
  for (const FieldType type : {FieldType::Boolean, FieldType::Byte, FieldType::Integer, FieldType::Long,
                               FieldType::Currency, FieldType::Single, FieldType::Double, FieldType::Date})
    row.add(type, {});
  for (int i = 0; i < row.fieldCount(); ++i) QCOMPARE(FeldWert(row, i), QVariant(0));
  for (const FieldType type : {FieldType::Text, FieldType::Memo, FieldType::LongBinary}) {
    OneRow text;
    text.add(type, {});
    QCOMPARE(FeldWert(text, "F0"), QVariant(QString("")));
  }
  OneRow full;
  full.add(FieldType::Text, QString("Jörg"));
  full.add(FieldType::Text, QString(3, QChar(0)));
  full.add(FieldType::Text, QString("a") + QChar(0));
  full.add(FieldType::Long, 7);
  full.add(FieldType::Text, QString(""));
  QCOMPARE(FeldWert(full, 0).toString(), "Jörg");
  QCOMPARE(FeldWert(full, 1).toString(), "");
  QCOMPARE(FeldWert(full, 2).toString().size(), 2);
  QCOMPARE(FeldWert(full, 3).toInt(), 7);
  QCOMPARE(FeldWert(full, 4).toString(), "");
  QVERIFY_THROWS_EXCEPTION(Error, FeldWert(full, "fehlt"));
}

void TestGround::fontsGoAndCome() {
  TestWorkplace place;
  const Schrift schrift{{"Tahoma", 10, true, false, false, true}, 65280, 255};
  SchriftSpeichern(place.workplace(), "FlexFont", schrift);
  QCOMPARE(place.settings.value("Tarvex", "Häring", "FlexFont_BackColor"), "65280");
  QCOMPARE(place.settings.value("Tarvex", "Häring", "FlexFont_ForeColor"), "255");
  QCOMPARE(place.settings.value("Tarvex", "Häring", "FlexFont_Font"), "Tahoma;10;-1;0;0;-1");
  const Schrift read = SchriftLaden(place.workplace(), "FlexFont");
  QCOMPARE(read.font, schrift.font);
  QCOMPARE(read.backColor, 65280u);
  QCOMPARE(read.foreColor, 255u);
}

void TestGround::aMissingFontIsTheCurrentOne() {
  TestWorkplace place;
  const Schrift current{{"Arial", 12}, 1, 2};
  const Schrift read = SchriftLaden(place.workplace(), "FontHDisziplin", current);
  QCOMPARE(read.font, current.font);
  QCOMPARE(read.backColor, 16777215u);
  QCOMPARE(read.foreColor, 0u);
  place.settings.setValue("Tarvex", "Häring", "FontHDisziplin_ForeColor", "-2147483640");
  QCOMPARE(SchriftLaden(place.workplace(), "FontHDisziplin", current).foreColor, 0x80000008u);
}

void TestGround::fontsThatCantBeKept() {
  TestWorkplace place;
  place.files.write(place.path("datei"), "");
  Settings blocked(place.path("datei/einstellungen"));
  const Workplace all = place.workplace();
  const Workplace workplace{all.clock, all.random, all.waits, all.files, blocked, all.dialogs};
  place.dialogs
      .expect("Fehler: 75 - Fehler beim Zugriff auf Pfad/Datei: " + place.path("datei/einstellungen") +
                  "\nFehler beim Speichern der Schriftarten!",
              BoxAnswer::Abort)
      .titled("Fehler");
  SchriftSpeichern(workplace, "FlexFont", {});
}

void TestGround::fontsThatCantBeRead() {
  TestWorkplace place;
  place.settings.setValue("Tarvex", "Häring", "FlexFont_BackColor", "weiß");
  place.settings.setValue("Tarvex", "Häring", "FlexFont_ForeColor", "99999999999");
  place.settings.setValue("Tarvex", "Häring", "FlexFont_Font", "Arial;9;0;0;0;0");
  place.dialogs.expect("Fehler: 13 - Typen unverträglich\nFehler beim Laden der Schriftarten!",
                       BoxAnswer::Ignore);
  place.dialogs.expect("Fehler: 6 - Überlauf\nFehler beim Laden der Schriftarten!", BoxAnswer::Ignore);
  const Schrift read = SchriftLaden(place.workplace(), "FlexFont", {{"Tahoma", 10}, 3, 4});
  QCOMPARE(read.backColor, 3u);
  QCOMPARE(read.foreColor, 4u);
  QCOMPARE(read.font, (FontSpec{"Arial", 9}));
}

void TestGround::keysOfTheSettings() {
  TestWorkplace place;
  QCOMPARE(liesText(place.settings, keys::Netzverzeichnis), "C:\\Programme\\ESA2002\\");
  QCOMPARE(liesText(place.settings, keys::LinienAktiv), "");
  QVERIFY(liesFlag(place.settings, keys::AnzeigeScreen));
  QVERIFY(!liesFlag(place.settings, keys::ProtokollAktiv));
  QCOMPARE(liesZahl(place.settings, keys::ForeColorTeiler), 16711935);
  schreibe(place.settings, keys::ProtokollAktiv, true);
  QVERIFY(liesFlag(place.settings, keys::ProtokollAktiv));
  QCOMPARE(place.settings.value("Tarvex", "Häring", "ProtokollAktiv"), "1");
  schreibe(place.settings, keys::ShowLinienHoehe, 120);
  QCOMPARE(liesZahl(place.settings, keys::ShowLinienHoehe), 120);
  schreibe(place.settings, keys::LetzterWettkampf, QString("/tmp/a b.qkk"));
  QCOMPARE(place.settings.value("Tarvex", "Häring", "Letzter Wettkampf"), "/tmp/a b.qkk");
  schreibe(place.settings, keys::Caption, QString("QK-Intarso x"));
  QCOMPARE(place.settings.value("Tarvex-40", "Häring", "Caption"), "QK-Intarso x");
}

QTEST_GUILESS_MAIN(TestGround)
#include "test_ground.moc"
