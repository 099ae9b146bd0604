// What stands on the screen when there is no competition to open: a file of one's own, or something to try.
#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmStart;
}

namespace qk {

class frmStart : public QDialog {
  Q_OBJECT

 public:
  enum class Choice { End, Open, New, Demo };

  /// `missing` is the competition that was to be opened, empty for none. `demoFolder` is where the demo
  /// competition lies or will lie.
  /// `offersNew`: this program can make a competition.
  frmStart(const QString& missing, const QString& demoFolder, bool offersNew, QWidget* parent = nullptr);
  ~frmStart() override;

  /// Esc and the window's own button end.
  Choice choice() const { return choice_; }

 private:
  std::unique_ptr<Ui::frmStart> ui_;
  Choice choice_ = Choice::End;
};

}  // namespace qk
