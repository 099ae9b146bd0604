// The menu bar of the main window, read from top to bottom.
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

namespace {

/// The menu bar as it reads, a line an entry, indented by its depth.
const char* const kOutline = R"(&Datei
  Wettkampf öffnen...
  Druckereinrichtung...
  Kurzauswertung Vorschau...
  Kurzauswertung Drucken
  &Beenden
&Bearbeiten
  Alle Intarso-Schuss einsehen...
  Ergebnisse anzeigen...
  Schussbilder anzeigen...
  Kasse...
  &Warnungen anzeigen...
&Optionen
  Einstellungen
  Intarso &Netzwerkpfad
  &Schießstände
  Disziplinen-Schlüssel
    Wettkampf...
    Standard...
  Schriftart
    Intarso Disziplin
    Intarso-Schuss
  Intarsodaten protokollieren
  Protokolldatei öffnen
  Sendedaten an Intarso protokollieren
  Sende-Protokolldatei öffnen
  Testdaten laden...
  Intarso - Output...
Intarso
  Alle Linien
    Auf Preismodus umschalten
    Preismodus beenden
    Schütze/Disziplinen senden
    Schützen abmelden
    Linien zurück zu Windows
    Rechner herunterfahren
    Werbefenster einblenden
    Werbefenster ausblenden
  Aktuelle Linie
    Werbefenster einblenden
    Werbefenster ausblenden
    Linie zurück zu Windows
    Rechner herunterfahren
  Schuss
    Akt. Wettbewerb wählen
    Alle wählen
    Keinen wählen
  Offene Linienbefehle löschen
  Prüfen:    esa_preis.ini + def-Dateien
  Erstellen: esa_preis.ini + def-Dateien
  Gruppen - Disziplinen
Hilfe...
)";

QString outline(const QList<QAction*>& actions, int depth = 0) {
  QString text;
  for (const QAction* action : actions) {
    if (action->isSeparator()) continue;
    text += QString(2 * depth, ' ') + action->text() + '\n';
    if (action->menu()) text += outline(action->menu()->actions(), depth + 1);
  }
  return text;
}

}  // namespace

class TestMenuOrder : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void menusInTheirOrder();
};

void TestMenuOrder::menusInTheirOrder() {
  RangeOffice office;
  office.markForTestImport();
  QVERIFY(office.open());
  QCOMPARE(outline(office.window().menuBar()->actions()), QString(kOutline));
}

QTEST_MAIN(TestMenuOrder)
#include "test_menu_order.moc"
