#include "link/commands.h"

#include "link/station_commands.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

const QString lineBreak = "\r\n";

bool isSelected(const DisziplinZeile& zeile) {
  return zeile.auswahl != "0";
}

QString totalText(const DisziplinZeile& zeile, const QString& gap) {
  return "- " + zeile.name + gap + "(Gesamt: " + zeile.gesamt + " - Akt. Nachkauf: " + zeile.nachkauf + " )" +
         "       " + lineBreak;
}

QString shotsText(const DisziplinZeile& zeile) {
  return "- " + zeile.name + "    " + "(Schuss: " + zeile.schuss + ")" + "       " + lineBreak;
}

}  // namespace

QString disziplinSchluessel(int zeile) {
  return "Diszi" + QString::number(zeile);
}

QString disziplinMaske(const DisziplinZeilen& zeilen) {
  QString mask;
  for (const DisziplinZeile& zeile : zeilen) mask += isSelected(zeile) ? '1' : '-';
  return mask.leftJustified(MaskenLaenge, '-', true);
}

QString anmeldeBefehl(const QString& sStartnummer, const QString& schuetzenName, const QString& maske) {
  if (sStartnummer.isEmpty()) return {};
  const QString separator = " ; ";
  return stationCommand(Befehl::Anmelden).text() + sStartnummer + separator + schuetzenName + separator +
         sStartnummer + separator + sStartnummer + separator + maske;
}

bool hatNachkauf(const QString& nachkauf) {
  return isNumeric(nachkauf.trimmed());
}

QString nachkaufBefehl(int zeile, const QString& nachkauf) {
  const qint64 row = toInt16(zeile);
  return stationCommand(Befehl::Nachkauf).text() + numberText(row) + ";" +
         numberText(parseStrict(nachkauf.trimmed()));
}

QString disziplinAuswahlNamen(const DisziplinZeilen& zeilen, bool bNachkauf) {
  QString names;
  for (const DisziplinZeile& zeile : zeilen) {
    const bool selected = !bNachkauf && isSelected(zeile);
    if (hatNachkauf(zeile.nachkauf))
      names += totalText(zeile, selected ? QString("    ") : QString("\t"));
    else if (selected)
      names += shotsText(zeile);
  }
  return names;
}

QString frageOhneDisziplin() {
  return "Keine Disziplin für den Schützen gewählt!" + lineBreak + "Trotzdem senden?";
}

QString frageDisziplinenSenden(const QString& namen) {
  return "Disziplinen senden: " + lineBreak + lineBreak + namen + lineBreak + lineBreak +
         "HINWEIS:" + lineBreak + "Evtl. gesendete Diziplinen werden zurückgesetzt!";
}

QString frageNachkaufSenden(const QString& namen) {
  return "Nachkauf senden: " + lineBreak + namen;
}

}  // namespace qk
