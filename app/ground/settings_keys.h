// Every value of the settings store that this program reads or writes: application, section, key, default.
//
//   if (liesFlag(workplace.settings, keys::ProtokollAktiv)) …
//
// A default that depends on folders or on a window's design is empty here; the reader supplies it.
#pragma once

#include <QString>
#include <QStringView>

#include "platform/settings/settings.h"

namespace qk {

struct SettingKey {
  QStringView application;
  QStringView section;
  QStringView key;
  QStringView preset = u"";
};

QString liesText(const Settings& settings, const SettingKey& key);
/// Whole part; where the value is missing or no number, the default, and 0 when that is none either.
int liesZahl(const Settings& settings, const SettingKey& key);
bool liesFlag(const Settings& settings, const SettingKey& key);
void schreibe(Settings& settings, const SettingKey& key, const QString& value);
/// As a number: "1" or "0".
void schreibe(Settings& settings, const SettingKey& key, bool value);
void schreibe(Settings& settings, const SettingKey& key, int value);

namespace keys {

inline constexpr QStringView kTarvex = u"Tarvex";      // this program's own values
inline constexpr QStringView kFamilie = u"Tarvex-40";  // shared with the family
inline constexpr QStringView kHaering = u"Häring";
inline constexpr QStringView kStammdaten = u"Stammdaten";
inline constexpr QStringView kDaten = u"Daten";
inline constexpr QStringView kAnzeige = u"Anzeige";
inline constexpr QStringView kAllgemein = u"Allgemein";
inline constexpr QStringView kOptik = u"OptikAufnahme";
inline constexpr QStringView kPositionen = u"Positionen";
inline constexpr QStringView kKasse = u"Kasse";
inline constexpr QStringView kServer = u"Server";

inline constexpr SettingKey Netzverzeichnis{kTarvex, kHaering, u"Netzverzeichnis",
                                            u"C:\\Programme\\ESA2002\\"};
inline constexpr SettingKey LinienAktiv{kTarvex, kHaering, u"LinienAktiv"};
inline constexpr SettingKey LetzterWettkampf{kTarvex, kHaering, u"Letzter Wettkampf"};
inline constexpr SettingKey LetzterWettkampfStammdaten{kTarvex, kStammdaten, u"Letzter Wettkampf"};
inline constexpr SettingKey BreiteStammdatenSeiten{kTarvex, kStammdaten, u"BreiteSeiten"};
inline constexpr SettingKey ProtokollAktiv{kTarvex, kHaering, u"ProtokollAktiv", u"0"};
inline constexpr SettingKey SendeProtokollAktiv{kTarvex, kHaering, u"SendeProtokollAktiv", u"0"};
inline constexpr SettingKey SchliessenSicherheitsabfrage{kTarvex, kHaering, u"SchliessenSicherheitsabfrage",
                                                         u"0"};
inline constexpr SettingKey DisziDeleteAbmelden{kTarvex, kHaering, u"DisziDeleteAbmelden", u"0"};
inline constexpr SettingKey OpenKassenfenster{kTarvex, kHaering, u"OpenKassenfenster", u"0"};
inline constexpr SettingKey ShowLinienHoehe{kTarvex, kHaering, u"ShowLinienHoehe"};
inline constexpr SettingKey ShowLinienBreite{kTarvex, kHaering, u"ShowLinienBreite"};
inline constexpr SettingKey BreiteDisziKombi{kTarvex, kHaering, u"BreiteDisziKombi"};
inline constexpr SettingKey BreiteDisziKombi2{kTarvex, kHaering, u"BreiteDisziKombi2"};
inline constexpr SettingKey BreiteSchuetzen{kTarvex, kHaering, u"BreiteSchuetzen"};

inline constexpr SettingKey SystemVerzeichnis{kFamilie, kDaten, u"SystemVerzeichnis"};
inline constexpr SettingKey Verzeichnis{kFamilie, kDaten, u"Verzeichnis"};
inline constexpr SettingKey SicherungsVerzeichnis{kFamilie, kDaten, u"SicherungsVerzeichnis"};
inline constexpr SettingKey Exportpfad{kFamilie, kDaten, u"Exportpfad"};
inline constexpr SettingKey SystemVerzeichnisUser{kFamilie, kDaten, u"SystemVerzeichnisUser"};
inline constexpr SettingKey SpeichernVortag{kFamilie, kDaten, u"SpeichernVortag", u"0"};
inline constexpr SettingKey AnzeigeScreen{kFamilie, kDaten, u"AnzeigeScreen", u"1"};
inline constexpr SettingKey Schnelldruckzusatz{kFamilie, kDaten, u"Schnelldruckzusatz", u"-1"};
inline constexpr SettingKey Oberflaeche{kFamilie, kAllgemein, u"Oberflaeche", u"1111111"};
inline constexpr SettingKey OberflaechePasswort{kFamilie, kAllgemein, u"OberflaechePasswort"};
inline constexpr SettingKey Caption{kFamilie, kHaering, u"Caption"};

inline constexpr SettingKey Spaltenbreite{kFamilie, kOptik, u"Spaltenbreite", u"743"};
inline constexpr SettingKey SpaltenbreiteGesamt{kFamilie, kOptik, u"SpaltenbreiteGesamt", u"743"};
inline constexpr SettingKey BackColorRinge{kFamilie, kOptik, u"BackColorRinge", u"16777215"};
inline constexpr SettingKey BackColorTeiler{kFamilie, kOptik, u"BackColorTeiler", u"16777215"};
inline constexpr SettingKey ForeColorRinge{kFamilie, kOptik, u"ForeColorRinge", u"0"};
inline constexpr SettingKey ForeColorTeiler{kFamilie, kOptik, u"ForeColorTeiler", u"16711935"};
inline constexpr SettingKey ForeColorSerie{kFamilie, kOptik, u"ForeColorSerie", u"16711680"};
inline constexpr SettingKey FontRinge{kFamilie, kOptik, u"FontRinge", u"Tahoma;10;0;0;0;0"};
inline constexpr SettingKey FontTeiler{kFamilie, kOptik, u"FontTeiler", u"Tahoma;10;0;0;0;0"};
inline constexpr SettingKey FontSerie{kFamilie, kOptik, u"FontSerie", u"Tahoma;10;0;0;0;0"};

// The cash desk. Fonts among them are one text; sizes and widths without a default are the design's.
inline constexpr SettingKey AutoDruckKasse{kFamilie, kAllgemein, u"AutoDruckKasse", u"0"};
inline constexpr SettingKey AutoScheibenDruckKasse{kFamilie, kAllgemein, u"AutoScheibenDruckKasse", u"0"};
inline constexpr SettingKey OffenePostenVorbelegen{kFamilie, kAllgemein, u"OffenePostenVorbelegen", u"0"};
inline constexpr SettingKey ListDisziKasseFont{kFamilie, kAllgemein, u"ListDisziKasse-Font",
                                               u"Microsoft Sans Serif;10;0;0;0;0"};
inline constexpr SettingKey ListDisziKasseForeColor{kFamilie, kAllgemein, u"ListDisziKasse-ForeColor"};
inline constexpr SettingKey BarcodePrinter{kFamilie, kAllgemein, u"BarcodePrinter"};
inline constexpr SettingKey BarcodeAuswahl{kFamilie, kAllgemein, u"BarcodeAuswahl", u"0"};
inline constexpr SettingKey BarcodeFormatAusrichtung{kFamilie, kAllgemein, u"BarcodeFormatAusrichtung", u"1"};
inline constexpr SettingKey Etikett2FormatAusrichtung2{kFamilie, kAllgemein, u"Etikett2FormatAusrichtung2",
                                                       u"1"};
inline constexpr SettingKey BarcodeX{kFamilie, kAllgemein, u"Barcode-X", u"0"};
inline constexpr SettingKey BarcodeY{kFamilie, kAllgemein, u"Barcode-Y", u"0"};
inline constexpr SettingKey BarcodeX2{kFamilie, kAllgemein, u"Barcode-X2", u"0"};
inline constexpr SettingKey BarcodeY2{kFamilie, kAllgemein, u"Barcode-Y2", u"0"};
inline constexpr SettingKey PrintTextDruck{kFamilie, kAllgemein, u"PrintTextDruck", u"0"};
inline constexpr SettingKey BarcodeDruck{kFamilie, kAllgemein, u"BarcodeDruck", u"0"};
inline constexpr SettingKey DruckTextScheibe{kFamilie, kAllgemein, u"DruckTextScheibe"};
inline constexpr SettingKey BarcodeFont{kFamilie, kAllgemein, u"BarcodeFont",
                                        u"Microsoft Sans Serif;10;0;0;0;0"};
inline constexpr SettingKey PrintScheibeFont{kFamilie, kAllgemein, u"PrintScheibeFont",
                                             u"Microsoft Sans Serif;10;0;0;0;0"};
inline constexpr SettingKey Etikett2{kFamilie, kDaten, u"Etikett2", u"0"};
inline constexpr SettingKey KasseAutoScheibenZuordnung{kFamilie, kDaten, u"KasseAutoScheibenZuordnung", u"1"};
inline constexpr SettingKey KasseManuelleScheibenNummer{kFamilie, kDaten, u"KasseManuelleScheibenNummer",
                                                        u"0"};
inline constexpr SettingKey WkKasseRegister{kFamilie, kDaten, u"WkKasseRegister", u"0"};
inline constexpr SettingKey WkKassePicDraw{kFamilie, kDaten, u"WkKassePicDraw"};
inline constexpr SettingKey WkKassePicDraw2{kFamilie, kDaten, u"WkKassePicDraw2"};
inline constexpr SettingKey LokalePCKennung{kFamilie, kDaten, u"LokalePCKennung"};
inline constexpr SettingKey SortedScheibenNummern{kFamilie, kDaten, u"SortedScheibenNummern", u"0"};
inline constexpr SettingKey Abfrage{kFamilie, kKasse, u"Abfrage", u"1"};
inline constexpr SettingKey NeuAufnahme{kFamilie, kKasse, u"NeuAufnahme", u"0"};
inline constexpr SettingKey AnzeigeWechsel{kFamilie, kKasse, u"AnzeigeWechsel", u"0"};
inline constexpr SettingKey ExportKumulieren{kFamilie, kKasse, u"ExportKumulieren", u"0"};
inline constexpr SettingKey Abfrage0Euro{kFamilie, kKasse, u"Abfrage0Euro", u"1"};

// Widths of grid columns (application Tarvex-40, section Daten): each name is followed by the column's
// number.
inline constexpr QStringView KasseFlex = u"KasseFlex";                          // purchase
inline constexpr QStringView KasseFlexAll = u"KasseFlexAll";                    // stored payments
inline constexpr QStringView KasseScheibenGrid = u"KasseScheibenGrid";          // stacks
inline constexpr QStringView KasseScheibenGridAlle = u"KasseScheibenGridAlle";  // issued targets

// Places of report windows (application Tarvex-40, section Anzeige): what ends the names of their four
// values.
inline constexpr QStringView BerichtsfensterKasse = u"Kasse";
inline constexpr QStringView BerichtsfensterKurzauswertung = u"";

// Names of fonts for SchriftLaden and SchriftSpeichern (application Tarvex, section Häring).
inline constexpr QStringView FlexFont = u"FlexFont";              // shot grid
inline constexpr QStringView FontHDisziplin = u"FontHDisziplin";  // discipline grid

}  // namespace keys
}  // namespace qk
