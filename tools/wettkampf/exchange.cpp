#include "tools/wettkampf/exchange.h"

#include <array>

#include "platform/runtime/files.h"
#include "targetconfig/station_files.h"

namespace qk {

namespace {

struct Offer {
  const char* title;  ///< a discipline or combination of data/schema/Demo.txt
  const char* weapon;
  const char* key;
  int shots;
  const char* scoring;  ///< "10" ring + teiler, "11" tenths + teiler
};

const std::array<Offer, 14> Offers = {{
    {"LG Meister", "LG", "1.10", 40, "10"},
    {"LG Meister Zehntel", "LG", "1.10", 40, "11"},
    {"LG Serie 20", "LG", "1.10", 20, "10"},
    {"LG Serie 10", "LG", "1.10", 10, "11"},
    {"LG Teiler", "LG", "1.10", 10, "10"},
    {"LG Glück", "LG", "1.10", 10, "11"},
    {"LG Ring-Teiler", "LG", "1.10", 10, "10"},
    {"LG 20 mit Zusatz", "LG", "1.10", 20, "10"},
    {"LG Auflage", "LG", "1.11", 30, "11"},
    {"LP Meister", "LP", "2.10", 40, "10"},
    {"LP Teiler", "LP", "2.10", 10, "10"},
    {"KK liegend", "KK", "1.80", 30, "11"},
    {"ZS Meister", "ZS", "1.30", 30, "10"},
    {"Großes Paket", "LG", "1.10", 40, "11"},
}};

QString definitionFile(const Offer& offer) {
  return QString("0_hd_%1_%2.def").arg(offer.weapon, QString(offer.title).replace(' ', '_'));
}
QString weaponFile(const QString& weapon) {
  return "0_hw_" + weapon + ".def";
}
QString targetFile(const QString& weapon) {
  return "0_hs_" + weapon + ".def";
}

Definition definitionOf(const Offer& offer) {
  Definition definition;
  definition.bezeichnung = offer.title;
  definition.kennNummer = "0";
  definition.regelNummer = offer.key;
  definition.wertungsRadius = "225";
  definition.maximalDurchmesser = "450";
  definition.minimalDurchmesser = "450";
  definition.schusszahl = QString::number(offer.shots);
  definition.probeSchuesse = "-1";
  definition.schiessZeit = "999 min";
  definition.probeZeit = "999 min";
  definition.wertung = offer.scoring;
  definition.schiessPosition = "stehend";
  definition.serienLaenge = "10";
  definition.dateiWaffe = weaponFile(offer.weapon);
  definition.dateiScheibe = targetFile(offer.weapon);
  definition.zeitenAnzahl = "1";
  definition.zeit = "60 min";
  definition.schussAnzahl = "1";
  definition.schussZahl = "10";
  definition.positionsAnzahl = "1";
  definition.position = "1-Position";
  definition.serienAnzahl = "1";
  definition.serien = "10";
  definition.dateiName = definitionFile(offer);
  return definition;
}

}  // namespace

void writeExchangeFolder(Files& files, const QString& folder) {
  files.makeFolder(folder);
  const QString base = withTrailingSeparator(folder);
  std::vector<StationDiscipline> disciplines;
  for (const Offer& offer : Offers) {
    disciplines.push_back({offer.title, definitionFile(offer)});
    writeDefinition(files, base + definitionFile(offer), definitionOf(offer));
    files.write(base + weaponFile(offer.weapon), QByteArray("\">Waffe\"\r\n\"") + offer.weapon + "\"\r\n");
    files.write(base + targetFile(offer.weapon), QByteArray("\">Scheibe\"\r\n\"") + offer.weapon + "\"\r\n");
  }
  writeStationDisciplines(files, base, disciplines);
}

}  // namespace qk
