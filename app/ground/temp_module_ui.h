// The shared services that need a window.
#pragma once

#include <QString>

#include "app/ground/settings_keys.h"
#include "platform/workplace.h"

class QTableView;
class QWidget;

namespace qk {

class PanelSplitter;
class TextGrid;

/// Opens an existing file with its application. Without one the shell's open-with dialog is offered where
/// there is such a thing; elsewhere a box says so.
void MitProgrammOeffnen(const Workplace& workplace, const QString& path);

/// Shows a folder in the file manager: explorer.exe, elsewhere the desktop's own.
void ExplorerStarten(const Workplace& workplace, const QString& folder);

/// Centres a window on its screen.
void FormZentrieren(QWidget& form);

/// Keeps a window's place under its object name: left, top, width, height in pixels, and with a grid the
/// widths of its columns. A minimized window saves nothing. Never fails.
void PositionSpeichern(const Workplace& workplace, const QWidget& form, const QTableView* grid = nullptr);
/// Puts the window where it was; one without a saved place is centred. Never fails.
void PositionLaden(const Workplace& workplace, QWidget& form, QTableView* grid = nullptr);

/// The measure in pixels of a panel that is designed for so many characters. A larger font makes it larger
/// only as far as the screen has room for it: the panel in the middle takes what the others leave.
int PanelMass(const QWidget& panel, int characters);

/// Gives a splitter's panel the size kept under `key`, or `designSize` pixels where there is none, and keeps
/// the size each time a handle is let go. Never fails. The settings outlive the splitter.
void PanelGroesseMerken(const Workplace& workplace, PanelSplitter& splitter, int panel, const SettingKey& key,
                        int designSize);

/// Gives the columns of a grid the widths kept under `key` and the column's number, and keeps a width each
/// time the operator has drawn it. Columns of which none is kept stay as they are designed. Never fails.
void SpaltenbreitenMerken(const Workplace& workplace, TextGrid& grid, const QString& key);

/// Places a report window: over the whole screen, or by the four values "Main_…" + suffix, which are twips.
void AnzeigeLage(const Workplace& workplace, QWidget& form, const QString& suffix);

}  // namespace qk
