// The lines of the main window: building them, choosing one, what is shown of them.
#include <QCoreApplication>
#include <QLabel>

#include "app/frmLindorm.h"
#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "platform/dialog/dialogs.h"
#include "ui_frmLindorm.h"

namespace qk {

namespace {

/// More lines than this take their time: the window shows them coming, so many at a time.
constexpr qsizetype kManyLines = 100;
constexpr int kLinesAtATime = 20;

}  // namespace

UserControl1& frmLindorm::cLine(int nIndex) const {
  if (nIndex < 0 || nIndex >= lineCount()) throw Error(errors::kIndexOutOfRange);
  return *lines_[static_cast<size_t>(nIndex)];
}

void frmLindorm::Load_Settings() {
  reported(fehlerReport(workplace_.dialogs, "Fehler beiLoad_Settings_err"), [&](Steps&) {
    const LineFonts fonts{SchriftLaden(workplace_, keys::FlexFont.toString()),
                          SchriftLaden(workplace_, keys::FontHDisziplin.toString())};
    const QString LinienAktiv = liesText(workplace_.settings, keys::LinienAktiv);
    if (LinienAktiv.isEmpty())
      return workplace_.dialogs.note(
          "Bitte setzen Sie im Menü Optionen - Standeinstellungen den Intarso-Pfad und die Standbelegung",
          BoxIcon::Information);
    tree_.clear();
    clearLines();
    const int generation = generation_;
    const auto readings = std::make_shared<LineReadings>(static_cast<int>(LinienAktiv.size()));
    for (int position = 1; position <= LinienAktiv.size() && generation == generation_; ++position) {
      if (position % kLinesAtATime == 1) showLoading(position, LinienAktiv.size());
      loadLine(position, LinienAktiv.at(position - 1) == '1', fonts, readings);
    }
    statusBar()->clearMessage();
    if (watch_.isExchangeFolderDeaf()) watch_.lookAtExchangeFolder();  // perhaps another one was chosen
    if (tree_.count() > 0) showNode(1);
    showLineActions();
  });
}

/// What the lines built so far have posted is handled here too: let grow, it costs its square. The operator
/// waits until all are there.
void frmLindorm::showLoading(int position, qsizetype all) {
  if (all > kManyLines && !isVisible()) showMaximized();
  statusBar()->showMessage(QString("Linie %1 von %2 wird geladen ...").arg(position).arg(all));
  if (all > kManyLines)
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  else
    statusBar()->repaint();
}

void frmLindorm::clearLines() {
  ++generation_;
  for (UserControl1* line : lines_) {
    ui_->layoutLinien->removeWidget(line);
    line->retire();
  }
  lines_.clear();
}

UserControl1* frmLindorm::addLine(int nIndex) {
  auto* line = new UserControl1(workplace_, global_, nIndex, ui_->panelLinien);
  line->hide();
  ui_->layoutLinien->addWidget(line, 0, 0);
  lines_.push_back(line);
  marks_.watch(line);
  connect(line, &UserControl1::successSaid, this, [this](int index, const QString& text) {
    success_.say("Linie " + QString::number(cLine(index).nLinie()) + ": " + text);
  });
  for (auto event : {&UserControl1::cmdXPreisModusGestartet, &UserControl1::XPreisModusBeendetClick,
                     &UserControl1::cmdXWettkampfBeendet})
    connect(line, event, &watch_, &OfficeWatch::lookAtExchangeFolder);
  line->showExchangeFolder(watch_.isExchangeFolderDeaf());
  return line;
}

void frmLindorm::loadLine(int position, bool active, const LineFonts& fonts,
                          const std::shared_ptr<LineReadings>& readings) {
  UserControl1* line = addLine(position - 1);
  if (active) tree_.add(position);
  line->Init(sWettkampf(), readings);
  line->Set_Font_Flex(fonts.shots);
  line->Set_Font_HaeringDisziplin(fonts.disciplines);
  line->setLinie(static_cast<qint16>(position));
  line->Check_Old_Schuss(position);
  line->Fill_HaeringGruppen();
  if (active && !line->schuetzenName().isEmpty()) {
    tree_.select(GetTreeIndex(position - 1));
    Zeige_Schuetzen(position - 1);
  }
}

void frmLindorm::ShowControl(qint16 nLinie) {
  UserControl1& shown = cLine(nLinie - 1);
  for (UserControl1* line : lines_)
    if (line != &shown) line->hide();
  shown.show();
  shown.SetStandnummer(nLinie);
}

void frmLindorm::showNode(int position) {
  tree_.select(position);
  ShowControl(static_cast<qint16>(tree_.linie(position)));
}

int frmLindorm::GetTreeIndex(int nIndex) const {
  return marks_.GetTreeIndex(nIndex);
}

void frmLindorm::Zeige_Schuetzen(int nIndex) {
  if (tree_.count() == 0) return;
  if (tree_.selected() == 0) tree_.select(1);
  const int selected = tree_.selected();
  tree_.setText(selected, QString(" %1 - ").arg(tree_.linie(selected)) + cLine(nIndex).schuetzenName());
  if (liesFlag(workplace_.settings, keys::OpenKassenfenster)) ui_->mnuEditKasse->trigger();
}

QString frmLindorm::Get_AktStartnummer() const {
  const int index = Get_AktLinienNummer();
  return index < lineCount() ? cLine(index).sStartnummer() : QString();
}

qint16 frmLindorm::Get_AktLinienNummer() const {
  qint16 index = 0;
  while (index < lineCount() && cLine(index).isHidden()) ++index;
  return index;
}

void frmLindorm::forAllLines(Steps& step, const std::function<void(UserControl1&)>& call, AfterEach after) {
  const int generation = generation_;
  for (int index = 0; generation == generation_ && index < lineCount(); ++index) {
    const bool went = step([&] {
      if (generation == generation_) call(cLine(index));
    });
    if (!went) return;
    if (after == AfterEach::MessageLoop) workplace_.waits.runMessageLoop();
  }
}

void frmLindorm::stopPolling() {
  for (UserControl1* line : lines_) line->stopPolling();
}

}  // namespace qk
