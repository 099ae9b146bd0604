// What the menus and the toolbar of the main window do. Each routine reports its own failures under its name.
#include <QAction>
#include <QListWidget>
#include <QMenu>
#include <QProcess>
#include <QScopedValueRollback>
#include <QTimer>

#include "app/frmLindorm.h"
#include "app/ground/printing.h"
#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "app/ground/temp_module_ui.h"
#include "app/shell/competition_choice.h"
#include "app/shell/frmHilfe.h"
#include "capture/frmHaeringSchussAlle.h"
#include "cash/frmFinanz.h"
#include "evaluation/frmSchuetzeErg.h"
#include "link/exchange.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "platform/dialog/dialogs.h"
#include "platform/dialog/font_convert.h"
#include "platform/runtime/files.h"
#include "platform/settings/settings.h"
#include "platform/widgets/hourglass.h"
#include "shooters/look_ups.h"
#include "targetconfig/frmDisziKZ.h"
#include "targetconfig/frmHaeringDEF.h"
#include "targetconfig/frmHaeringEinstellungen.h"
#include "targetconfig/frmHaeringGruppenDisziplinen.h"
#include "targetconfig/frmHaeringIniPruefung.h"
#include "targetconfig/frmHaeringOutput.h"
#include "targetconfig/frmLinienSetup.h"
#include "targetconfig/frmWerbeFenster.h"
#include "targetconfig/line_choice.h"
#include "ui_frmLindorm.h"

namespace qk {

namespace {

void sendAdvert(UserControl1& line, const QString& text) {
  line.command([&](LineCommands& commands) { return commands.Set_Linie_Werbefenster_EIN(text); });
}

}  // namespace

ErrorReport frmLindorm::clickReport(const QString& routine) const {
  return fehlerReport(workplace_.dialogs, "Fehler beim Klick " + routine + "_err!");
}

void frmLindorm::on(QAction* action, Routine routine) {
  onInSteps(action, [routine = std::move(routine)](Steps&) { routine(); });
}

void frmLindorm::onInSteps(QAction* action, SteppedRoutine routine) {
  connect(action, &QAction::triggered, this, [this, action, routine = std::move(routine)] {
    reported(clickReport(action->objectName() + "_Click"), routine);
  });
}

void frmLindorm::onCurrent(QAction* action, Command command) {
  on(action, [this, command] { currentLine().command(command); });
}

bool frmLindorm::asked(const QString& question, std::optional<BoxAnswer> preset) const {
  return workplace_.dialogs.confirm(question, BoxIcon::Question, preset);
}

void frmLindorm::connectMenus() {
  connectFileMenus();
  connectOptions();
  connectAllLines();
  connectCurrentLine();
  connectToolbar();
  on(ui_->mnuHilfe, [this] { frmHilfe::showBeside(workplace_, *this, {}); });
}

void frmLindorm::connectFileMenus() {
  onInSteps(ui_->mnuDateiWettkampfOpen, [this](Steps& step) { mnuDateiWettkampfOpen_Click(step); });
  on(ui_->mnuDateiPrinterSetup, [this] {
    CurrentPrinter printer = currentPrinter(workplace_);
    if (const auto chosen = workplace_.dialogs.printerSetup(printer.setup())) printer.keep(*chosen);
  });
  on(ui_->mnuDateiKurzauswertungPreview, [this] { Kurzauswertung(0); });
  on(ui_->mnuDateiKurzauswertungPrint, [this] { Kurzauswertung(1); });
  on(ui_->mnuExit, [this] { close(); });
  on(ui_->mnuEditSchussAlle, [this] {
    frmHaeringSchussAlle browser(workplace_, this);
    browser.setWettkampf(sWettkampf());
    browser.exec();
  });
  on(ui_->mnuEditSchussbilder, [this] { mnuEditSchussbilder_Click(); });
  connect(ui_->mnuEditErgebnisse, &QAction::triggered, this, [this] {
    reported(fehlerReport(workplace_.dialogs, "Fehler beim Bearbeiten des Ergebnisses!"),
             [this](Steps&) { mnuEditErgebnisse_Click(); });
  });
  on(ui_->mnuEditKasse, [this] { mnuEditKasse_Click(); });
}

void frmLindorm::connectOptions() {
  on(ui_->mnuOptEinstellungen, [this] { mnuOptEinstellungen_Click(); });
  on(ui_->mnuOptHaeringNetzPfad, [this] { mnuOptHaeringNetzPfad_Click(); });
  on(ui_->mnuStandeinstellungen, [this] { mnuStandeinstellungen_Click(); });
  on(ui_->mnuDisziplinenSPOWettkampf, [this] {
    if (!DateiVorhanden(workplace_.files, sWettkampf()))
      return workplace_.dialogs.note("Bitte öffnen Sie einen Wettkampf.");
    showDisziplinenSchluessel(sWettkampf());
  });
  on(ui_->mnuDisziplinenSPOStandard,
     [this] { showDisziplinenSchluessel(global_.SystemVerzeichnis + "LeerSA.mdb"); });
  on(ui_->mnuOptFontHaeringDisziplin,
     [this] { chooseFont(keys::FontHDisziplin.toString(), &UserControl1::Set_Font_HaeringDisziplin); });
  on(ui_->mnuOptFontHaeringSchuss,
     [this] { chooseFont(keys::FlexFont.toString(), &UserControl1::Set_Font_Flex); });
  const auto protocolSwitch = [this](QAction* action, const SettingKey& key) {
    on(action, [this, action, &key] { schreibe(workplace_.settings, key, action->isChecked()); });
    // The mark says what holds, also when it couldn't be stored.
    connect(action, &QAction::triggered, this,
            [this, action, &key] { action->setChecked(liesFlag(workplace_.settings, key)); });
  };
  protocolSwitch(ui_->mnuOptHaeringProtokoll, keys::ProtokollAktiv);
  protocolSwitch(ui_->mnuHaeringSendeProtokoll, keys::SendeProtokollAktiv);
  on(ui_->mnuOptOpenProtokolldatei,
     [this] { MitProgrammOeffnen(workplace_, global_.Verzeichnis + "InputIntarsoProtokoll.txt"); });
  on(ui_->mnuHaeringSendeProtokollOpen,
     [this] { MitProgrammOeffnen(workplace_, global_.Verzeichnis + "OutputIntarsoProtokoll.txt"); });
  on(ui_->mnuOptLoadTestDaten, [this] { mnuOptLoadTestDaten_Click(); });
  on(ui_->mnuEditHaeringOutput, [this] {
    frmHaeringOutput dialog(workplace_, global_, this);
    dialog.setLinie(currentLine().nLinie());
    dialog.exec();
  });
  on(ui_->mnuHaeringEsaPreisIniCheck, [this] { frmHaeringIniPruefung(workplace_, this).exec(); });
  onInSteps(ui_->mnuHaeringGruppenDisziplinen,
            [this](Steps& step) { mnuHaeringGruppenDisziplinen_Click(step); });
  on(ui_->mnuHaeringTransferClear, [this] { mnuHaeringTransferClear_Click(); });
  on(ui_->mnuHaeringEsaPreisIni, [this] { mnuHaeringEsaPreisIni_Click(); });
}

// A repeated statement sends again; it doesn't ask again. What takes a station away from its shooter isn't
// done by an Enter too many.
void frmLindorm::connectAllLines() {
  const auto send = [this](Steps& step, Command command, AfterEach after) {
    forAllLines(
        step, [command](UserControl1& line) { line.command(command); }, after);
  };
  const auto all = [this, send](QAction* action, Command command, AfterEach after = AfterEach::Nothing) {
    onInSteps(action, [send, command, after](Steps& step) { send(step, command, after); });
  };
  const auto askAll = [this, send](QAction* action, const QString& question, Command command) {
    onInSteps(action, [this, send, question, command](Steps& step) {
      if (asked(question, BoxAnswer::No)) send(step, command, AfterEach::Nothing);
    });
  };
  all(ui_->mnuHaeringAllePreismodusON, &LineCommands::Set_Linie_PreisModus_ON, AfterEach::MessageLoop);
  all(ui_->mnuHaeringAllePreismodusOFF, &LineCommands::Set_Linie_PreisModus_OFF, AfterEach::MessageLoop);
  all(ui_->mnuHaeringAlleSchuetzenOFF, &LineCommands::Set_Abmelden_Schuetze);
  all(ui_->mnuHaerinAlleWerbeAUS, &LineCommands::Set_Linie_Werbefenster_AUS);
  onInSteps(ui_->mnuHaerinAlleWerbeEIN, [this](Steps& step) { mnuHaerinAlleWerbeEIN_Click(step); });
  askAll(ui_->mnuHaeringAlleWindows, "Sollen wirklich alle Linienrechner zurück zu Windows gesetzt werden?",
         &LineCommands::Set_Linie_ZurueckWindows);
  askAll(ui_->mnuHaeringAlleShutDown, "Sollen wirklich alle Linienrechner heruntergefahren werden?",
         &LineCommands::Set_Linie_ShutDown);
  onInSteps(ui_->mnuHaeringAlleSchuetzeON, [this](Steps& step) {
    if (asked("Sollen alle Disziplinen aller Schützen gesendet werden?"))
      forAllLines(step, [](UserControl1& line) {
        line.command([](LineCommands& commands) { return commands.Set_Anmelden_SchuetzeDisziplinen(false); });
      });
  });
}

void frmLindorm::connectCurrentLine() {
  const auto ask = [this](QAction* action, const QString& question, Command command) {
    onInSteps(action, [this, question, command](Steps& step) {
      if (asked(question, BoxAnswer::No)) step([this, command] { currentLine().command(command); });
    });
  };
  onInSteps(ui_->mnuHaeringAktLinieWerbeEIN, [this](Steps& step) { mnuHaeringAktLinieWerbeEIN_Click(step); });
  onCurrent(ui_->mnuHaeringAktLinieWerbeAUS, &LineCommands::Set_Linie_Werbefenster_AUS);
  ask(ui_->mnuHaeringAktWindows,
      "Sollen wirklich der Rechner an der aktuellen Linie zurück zu Windows wechseln?",
      &LineCommands::Set_Linie_ZurueckWindows);
  ask(ui_->mnuHaeringAktShutDown,
      "Sollen wirklich der Rechner an der aktuellen Linie heruntergefahren werden?",
      &LineCommands::Set_Linie_ShutDown);
  on(ui_->mnuSchussAktWettbewerb, [this] { currentLine().HaeringSchussWettbewerbAnwaehlen(); });
  on(ui_->mnuSchussAlle, [this] { currentLine().HaeringSchussAnAbwaehlen(true); });
  on(ui_->mnuSchussKeinen, [this] { currentLine().HaeringSchussAnAbwaehlen(false); });
}

void frmLindorm::connectToolbar() {
  const auto as = [this](QAction* button, QAction* entry) {
    connect(button, &QAction::triggered, entry, &QAction::trigger);
  };
  as(ui_->exit, ui_->mnuExit);
  as(ui_->prsetup, ui_->mnuDateiPrinterSetup);
  as(ui_->Print1, ui_->mnuDateiKurzauswertungPrint);
  as(ui_->vorschau, ui_->mnuDateiKurzauswertungPreview);
  as(ui_->ErgEdit, ui_->mnuEditErgebnisse);
  as(ui_->schussbild, ui_->mnuEditSchussbilder);
  as(ui_->euro, ui_->mnuEditKasse);
  as(ui_->einstellungen, ui_->mnuOptEinstellungen);
  as(ui_->linienstopAll, ui_->mnuHaeringAllePreismodusON);
  as(ui_->anmeldenAll, ui_->mnuHaeringAlleSchuetzeON);
  as(ui_->abmeldenAll, ui_->mnuHaeringAlleSchuetzenOFF);
  as(ui_->linienfreiAll, ui_->mnuHaeringAllePreismodusOFF);
  on(ui_->Speichern, [this] { currentLine().SpeichernInDatenbank(true); });
  on(ui_->Löschen, [this] { currentLine().HaeringSchussVerwerfenAlle(); });
  onCurrent(ui_->linienstop, &LineCommands::Set_Linie_PreisModus_ON);
  on(ui_->anmelden, [this] {
    currentLine().command([](LineCommands& line) { return line.Set_Anmelden_SchuetzeDisziplinen(); });
  });
  onCurrent(ui_->abmelden, &LineCommands::Set_Abmelden_Schuetze);
  onCurrent(ui_->linienfrei, &LineCommands::Set_Linie_PreisModus_OFF);
  // Served for a toolbar that has these buttons; this one has none.
  onCurrent(ui_->wkvorbereiten, &LineCommands::Wettkampf_Vorbereiten);
  onCurrent(ui_->wkstarten, &LineCommands::Wettkampf_Starten);
  onCurrent(ui_->wkstop, &LineCommands::Wettkampf_Stoppen);
}

void frmLindorm::connectInfoList() {
  // Selecting lays the whole list out: once for all lines of a file, when they are in.
  auto* selectLast = new QTimer(this);
  selectLast->setSingleShot(true);
  connect(selectLast, &QTimer::timeout, this,
          [this] { ui_->lstInfo->setCurrentRow(ui_->lstInfo->count() - 1); });
  connect(&marks_, &LineMarks::sumLine, this, [this, selectLast](int nIndex, const QString& text) {
    const int nLinie = cLine(nIndex).nLinie();
    auto* entry = new QListWidgetItem("L" + QString::number(nLinie) + " - " + text, ui_->lstInfo);
    entry->setData(Qt::UserRole, nLinie);
    selectLast->start(0);
  });
  connect(ui_->lstInfo, &QListWidget::itemClicked, this, [this](QListWidgetItem* entry) {
    const int position = tree_.positionOf(entry->data(Qt::UserRole).toInt());
    if (position > 0) tree_.select(position);
  });
  connect(ui_->lstInfo, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
    auto* popup = new QMenu(this);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    popup->addActions({ui_->mnuLstInfoLeeren, ui_->mnuLstInfoAktEintragLoeschen});
    popup->popup(ui_->lstInfo->viewport()->mapToGlobal(at));
  });
  on(ui_->mnuLstInfoLeeren, [this] { ui_->lstInfo->clear(); });
  on(ui_->mnuLstInfoAktEintragLoeschen,
     [this] { delete ui_->lstInfo->takeItem(ui_->lstInfo->currentRow()); });
}

void frmLindorm::mnuDateiWettkampfOpen_Click(Steps& step) {
  if (isEvaluating("Ein anderer Wettkampf")) return;
  if (const QString path = chosenCompetition(workplace_, sWettkampf()); !path.isEmpty())
    openChosen(step, path);
}

void frmLindorm::openChosen(Steps& step, const QString& path) {
  step([&] { schreibe(workplace_.settings, keys::LetzterWettkampf, path); });
  if (!setWettkampf(path)) return;
  Load_Settings();
  global_.sWettkampf = sWettkampf();
}

void frmLindorm::offerCompetition(Steps& step) {
  if (const QString path = offeredCompetition(workplace_, global_, sWettkampf()); !path.isEmpty())
    openChosen(step, path);
}

void frmLindorm::mnuEditSchussbilder_Click() {
  const QString program = Programmverzeichnis() + "QK-Grafik.exe";
  if (!workplace_.files.exists(program))
    return workplace_.dialogs.note("QK-Grafik.exe nicht im aktuellen Verzeichnis: " + sWettkampf(),
                                   BoxIcon::None, "Fehler");
  const QString argument = sWettkampf() + ";" + currentLine().sStartnummer();
  QProcess viewer;
  viewer.setProgram(workplace_.files.resolve(program));
#ifdef Q_OS_WIN
  viewer.setNativeArguments(argument);  // as it stands, whatever blanks are in it
#else
  viewer.setArguments({argument});
#endif
  if (!viewer.startDetached())
    workplace_.dialogs.note("QK-Grafik.exe lässt sich nicht starten: " + program, BoxIcon::Exclamation,
                            "Fehler");
}

void frmLindorm::mnuEditErgebnisse_Click() {
  const QString number = Get_AktStartnummer();
  if (number.isEmpty()) return workplace_.dialogs.note("Kein Schütze gewählt!");
  frmSchuetzeErg editor(workplace_, global_, {papers_.current, papers_.asking}, this);
  connect(&editor, &frmSchuetzeErg::helpWanted, this,
          [this, &editor] { frmHilfe::showBeside(workplace_, editor, "ergebnisse.html"); });
  editor.setStartnummer(number);
  editor.setWettkampf(sWettkampf());
  if (editor.LoadSchuetzen() && editor.LoadErgebnisse()) editor.exec();
}

void frmLindorm::mnuEditKasse_Click() {
  const QString number = Get_AktStartnummer();
  if (number.isEmpty()) return workplace_.dialogs.note("Bitte wählen Sie einen Schützen.");
  dao::Database& db = *global_.Datenbank;
  const auto title = db.openRecordset("Select * from Wettkampf");
  const auto shooter =
      db.openRecordset("Select * from Schützen where Startnummer = " + dao::sql::quoted(number));
  const auto titleText = [&](const QString& column) {
    return title->eof() ? QString() : FeldWert(*title, column).toString();
  };
  const auto id = [&](const QString& column) {
    return shooter->eof() ? 0 : FeldWert(*shooter, column).toInt();
  };
  frmFinanz desk(workplace_, global_, reports_, this);
  desk.setOhneScheibenNummern(true);
  desk.setBez1(titleText("Bezeichnung"));
  desk.setBez2(titleText("Bezeichnung2"));
  desk.setOrt(titleText("Ort"));
  desk.UpdateStartNr(number, ErmittleVereinsKurzname(db, workplace_.dialogs, id("VereinsID")),
                     ErmittleMannschaftsName(db, workplace_.dialogs, id("lMannID")));
  if (desk.istOffen()) desk.exec();
}

void frmLindorm::mnuOptEinstellungen_Click() {
  const QString before = liesText(workplace_.settings, keys::Netzverzeichnis);
  frmHaeringEinstellungen dialog(workplace_, this);
  dialog.exec();
  if (dialog.bOK() && liesText(workplace_.settings, keys::Netzverzeichnis) != before) Load_Settings();
}

void frmLindorm::mnuOptHaeringNetzPfad_Click() {
  const QString folder =
      NetzverzeichnisWaehlen(workplace_, liesText(workplace_.settings, keys::Netzverzeichnis));
  if (folder.isEmpty()) return;
  schreibe(workplace_.settings, keys::Netzverzeichnis, folder);
  Load_Settings();
}

void frmLindorm::mnuStandeinstellungen_Click() {
  frmLinienSetup dialog(workplace_, this);
  dialog.exec();
  if (dialog.bOK()) Load_Settings();
}

void frmLindorm::showDisziplinenSchluessel(const QString& sDataBase) {
  frmDisziKZ dialog(workplace_, global_, this);
  dialog.setDataBase(sDataBase);
  dialog.setAuswahl(false);
  dialog.exec();
}

void frmLindorm::mnuOptLoadTestDaten_Click() {
  const QString file = workplace_.dialogs.openFile("Intarso-Logdateien (*.txt)|*.txt|Alle Dateien (*.*)|*.*");
  if (!file.isEmpty()) currentLine().Fill_Testdaten(file);
}

void frmLindorm::mnuHaerinAlleWerbeEIN_Click(Steps& step) {
  frmWerbeFenster dialog(workplace_, this);
  dialog.setEinzel(false);
  dialog.exec();
  if (!dialog.bOK()) return;
  const std::map<int, QString> pictures = bilderJeLinie(dialog.sBildName());
  forAllLines(step, [&pictures](UserControl1& line) {
    if (const auto chosen = pictures.find(line.nLinie()); chosen != pictures.end())
      sendAdvert(line, chosen->second);
  });
}

/// The station of a single line gets the whole choice, where the entry for all lines sends the bare file
/// name.
void frmLindorm::mnuHaeringAktLinieWerbeEIN_Click(Steps& step) {
  frmWerbeFenster dialog(workplace_, this);
  dialog.setEinzel(true);
  dialog.setAktLinie(static_cast<qint16>(Get_AktLinienNummer() + 1));
  dialog.exec();
  if (dialog.bOK()) step([&] { sendAdvert(currentLine(), dialog.sBildName()); });
}

void frmLindorm::mnuHaeringTransferClear_Click() {
  const Hourglass hourglass;
  const QScopedValueRollback clearing(global_.bLeertAustauschordner, true);
  const QString folder = workplace_.settings.value("Tarvex", "Häring", "Netzverzeichnis");
  if (loescheOffeneLinienbefehle(workplace_, folder, clickReport("mnuHaeringTransferClear_Click")) &&
      istAustauschordnerLeer(workplace_.files, folder))
    success_.say("Der Austauschordner ist geleert.");
}

void frmLindorm::mnuHaeringEsaPreisIni_Click() {
  frmHaeringDEF dialog(workplace_, *global_.Datenbank, this);
  dialog.setDataBaseName(sWettkampf());
  dialog.exec();
  if (asked("Sollen die Settings neu eingelesen werden?")) Load_Settings();
}

/// The groups at the lines follow what was changed here.
void frmLindorm::mnuHaeringGruppenDisziplinen_Click(Steps& step) {
  frmHaeringGruppenDisziplinen(workplace_, *global_.Datenbank, this).exec();
  forAllLines(step, std::mem_fn(&UserControl1::Fill_HaeringGruppen));
}

void frmLindorm::chooseFont(const QString& setting, void (UserControl1::*apply)(const Schrift&)) {
  Schrift schrift = SchriftLaden(workplace_, setting, {fromFont(font())});
  const auto choice = workplace_.dialogs.chooseFont({fontText(schrift.font), schrift.foreColor});
  if (!choice) return;
  schrift.font = parseFontText(choice->font);
  schrift.foreColor = choice->colour;
  SchriftSpeichern(workplace_, setting, schrift);
  for (UserControl1* line : lines_) (line->*apply)(schrift);
}

}  // namespace qk
