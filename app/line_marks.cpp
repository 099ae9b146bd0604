#include "app/line_marks.h"

#include "app/ground/settings_keys.h"
#include "platform/dialog/dialogs.h"

namespace qk {

LineMarks::LineMarks(const Workplace& workplace, LineTree& tree, std::function<UserControl1*(int)> lineOf)
    : workplace_(workplace), tree_(tree), lineOf_(std::move(lineOf)) {}

void LineMarks::follow(UserControl1* line, void (UserControl1::*raised)(int), Handler handler,
                       const QString& name) {
  connect(line, raised, this, [this, handler, name](int nIndex) {
    reported(fehlerReport(workplace_.dialogs, "Fehler beim Klick cline_" + name + "!"),
             [&](Steps&) { (this->*handler)(nIndex); });
  });
}

void LineMarks::watch(UserControl1* line) {
  follow(line, &UserControl1::cmdXPreisModusGestartet, &LineMarks::preisModusGestartet,
         "cmdXPreisModusGestartet");
  follow(line, &UserControl1::XPreisModusBeendetClick, &LineMarks::preisModusBeendet,
         "XPreisModusBeendetClick");
  follow(line, &UserControl1::cmdXSchuetzeGesendet, &LineMarks::schuetzeGesendet, "cmdXSchuetzeGesendet");
  follow(line, &UserControl1::XFreiClick, &LineMarks::frei, "XFreiClick");
  follow(line, &UserControl1::cmdXWettkampfBeendet, &LineMarks::frei, "cmdXWettkampfBeendet");
  follow(line, &UserControl1::XGruenClick, &LineMarks::gruen, "XGruenClick");
  follow(line, &UserControl1::cmdXStopClick, &LineMarks::stop, "cmdXStopClick");
  follow(line, &UserControl1::cmdXSchutzenlisteClick, &LineMarks::shooterChosen, "cmdXSchutzenlisteClick");
  follow(line, &UserControl1::cmdXSucheStartnummerClick, &LineMarks::shooterChosen,
         "cmdXSucheStartnummerClick");
  follow(line, &UserControl1::txtXStartNummerValidate, &LineMarks::shooterChosen, "txtXStartNummerValidate");
  connect(line, &UserControl1::SummenZeile, this, &LineMarks::sumLine);
  connect(line, &UserControl1::workChanged, this, &LineMarks::work);
}

int LineMarks::GetTreeIndex(int nIndex) const {
  const UserControl1* line = lineOf_(nIndex);
  return line ? tree_.positionOf(line->nLinie()) : -1;
}

void LineMarks::setByLine(int nIndex, const QString& image, const QString& tag) {
  const int position = GetTreeIndex(nIndex);
  if (position < 0) return;
  tree_.setImage(position, image);
  tree_.setTag(position, tag);
}

void LineMarks::preisModusGestartet(int nIndex) {
  const int position = GetTreeIndex(nIndex);
  if (position > 0 && tree_.image(position) != mark::Gruen) setByLine(nIndex, mark::Go, tag::PreismodusOn);
}

void LineMarks::preisModusBeendet(int nIndex) {
  setByLine(nIndex, mark::Pfeil, tag::PreismodusOff);
}

void LineMarks::schuetzeGesendet(int nIndex) {
  if (const int position = GetTreeIndex(nIndex); position > 0) tree_.setImage(position, mark::Gruen);
}

void LineMarks::frei(int nIndex) {
  if (const int selected = tree_.selected(); selected > 0) {
    tree_.setImage(selected, tree_.tag(selected) == tag::PreismodusOn ? mark::Go : mark::Pfeil);
    tree_.setText(selected, QString::number(tree_.linie(selected)));
  }
  UserControl1* line = lineOf_(nIndex);
  if (!line) return;
  line->setStartnummer(QString());
  if (liesFlag(workplace_.settings, keys::DisziDeleteAbmelden)) line->cmdWahlKeine_Click();
}

void LineMarks::gruen(int nIndex) {
  const int position = GetTreeIndex(nIndex);
  if (position < 0) return;
  tree_.setImage(position, mark::Gruen);
  tree_.setText(position, tree_.key(position));
  if (UserControl1* line = lineOf_(nIndex)) line->setStartnummer(QString());
}

void LineMarks::work(int nIndex) {
  const UserControl1* line = lineOf_(nIndex);
  if (const int position = GetTreeIndex(nIndex); position > 0)
    tree_.setWork(position, line->nOffeneSchuss(), line->commandWaits());
}

void LineMarks::stop(int nIndex) {
  const int position = GetTreeIndex(nIndex);
  if (position < 0) return;
  tree_.setImage(position, mark::Stop);
  if (const int selected = tree_.selected(); selected > 0) tree_.setText(position, tree_.key(selected));
  if (UserControl1* line = lineOf_(nIndex)) line->setStartnummer(QString());
}

}  // namespace qk
