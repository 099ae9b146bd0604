// The shared services without a window: folders, rights, files, the booking date, number texts, fonts.
// Those that need a window stand in temp_module_ui.h.
#pragma once

#include <QString>

#include "app/ground/feld_wert.h"
#include "app/ground/global_variablen.h"
#include "platform/runtime/fonttext.h"
#include "platform/workplace.h"

namespace qk {

/// Determines all folders, at every start: from the settings, with defaults stored where nothing stands, made
/// where they are missing. A system folder without its side database is replaced by the program's, with a
/// box. Error 75 when the settings can't be written; a folder or copy that can't be made stays missing.
void OrdnerErmitteln(const Workplace& workplace, GlobalVariablen& global);

/// The right to edit results, from the rights string of the family.
void BenutzerRechteLaden(const Workplace& workplace, GlobalVariablen& global);
/// True with the right to edit results; without it a box says so.
bool RechtPruefen(Dialogs& dialogs, const GlobalVariablen& global);

/// True if the name isn't blank and the file can be opened for reading. Never fails.
bool DateiVorhanden(Files& files, const QString& path);
bool VerzeichnisVorhanden(Files& files, const QString& path);
/// One folder level; no error if it exists, else 75 or 76.
void VerzeichnisAnlegen(Files& files, const QString& path);
/// Deletes a file, and with `lockFile` also the lock file beside a database (last three characters "LDB").
/// False when the name is blank or the file couldn't be deleted; a missing lock file is no failure.
bool DateiLoeschen(Files& files, const QString& path, bool lockFile = false);
/// The folder of the environment variable "temp", or the system's.
QString TempVerzeichnis();
/// The name of a fresh, empty file there.
QString TempDateiName(const Workplace& workplace, const QString& prefix);

/// Now as text; with the setting SpeichernVortag the day before until 05:59.
QString Buchungsdatum(const Workplace& workplace);

/// Tolerant number reading: decimal comma, points dropped, as far as it goes.
double ZahlAusText(const QString& text);
/// The fractional part of a number with decimal comma; 0 for what isn't above 0.
double Nachkommaanteil(const QString& text);
/// Cuts to decimals towards minus infinity; doesn't round.
double Abschneiden(double x, int nStellen);

struct Schrift {
  FontSpec font;                 ///< an empty name is the window's own font
  quint32 backColor = 16777215;  ///< blue-green-red order
  quint32 foreColor = 0;
};

/// Three values of application "Tarvex", section "Häring": name + "_BackColor", "_ForeColor", "_Font".
void SchriftSpeichern(const Workplace& workplace, const QString& name, const Schrift& schrift);
/// A missing colour is white or black; without a font text the current font stays.
Schrift SchriftLaden(const Workplace& workplace, const QString& name, const Schrift& current = {});

/// The folder of the program; QK_PROGRAMM redirects it.
QString Programmverzeichnis();
/// The common documents folder of the machine; QK_DOKUMENTE redirects it.
QString Dokumentenverzeichnis();

}  // namespace qk
