#include "app/shell/frmStart.h"

#include <QPushButton>

#include "ui_frmStart.h"

namespace qk {

frmStart::frmStart(const QString& missing, const QString& demoFolder, bool offersNew, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmStart>()) {
  ui_->setupUi(this);
  QFont heading = font();
  heading.setPointSizeF(1.5 * heading.pointSizeF());
  heading.setBold(true);
  ui_->lblTitel->setFont(heading);
  ui_->lblGrund->setText(missing.isEmpty() ? "Es ist noch kein Wettkampf gewählt."
                                           : "Diesen Wettkampf gibt es nicht (mehr):\n" + missing);
  ui_->lblDemo->setText(ui_->lblDemo->text().arg(demoFolder));
  ui_->cmdNeu->setVisible(offersNew);
  ui_->lblNeu->setVisible(offersNew);
  if (offersNew)
    ui_->lblOeffnen->setText(
        "Ein Wettkampf ist eine Datei mit der Endung qkk; im Netz ist sie die Serverdatei des Wettkampfs.");
  const auto choose = [this](QPushButton* button, Choice choice) {
    connect(button, &QPushButton::clicked, this, [this, choice] {
      choice_ = choice;
      accept();
    });
  };
  choose(ui_->cmdOeffnen, Choice::Open);
  choose(ui_->cmdNeu, Choice::New);
  choose(ui_->cmdDemo, Choice::Demo);
  connect(ui_->cmdBeenden, &QPushButton::clicked, this, &QDialog::reject);
}

frmStart::~frmStart() = default;

}  // namespace qk
