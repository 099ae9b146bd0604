// Which advertising picture goes to which line: the pictures of the exchange folder beside the lines, and the
// pictures themselves. Sends nothing; what was chosen is sBildName (targetconfig/line_choice.h).
#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "platform/workplace.h"

class QListWidgetItem;
namespace Ui {
class frmWerbeFenster;
}

namespace qk {

class PictureLoader;
struct SmallPicture;

class frmWerbeFenster : public QDialog {
  Q_OBJECT

 public:
  explicit frmWerbeFenster(const Workplace& workplace, QWidget* parent = nullptr);
  ~frmWerbeFenster() override;

  /// One line only, and its number: to be set before the window is shown.
  void setEinzel(bool bEinzel) { bEinzel_ = bEinzel; }
  bool bEinzel() const { return bEinzel_; }
  void setAktLinie(qint16 AktLinie) { aktLinie_ = AktLinie; }
  qint16 AktLinie() const { return aktLinie_; }

  bool bOK() const { return bOK_; }
  /// An entry a chosen line, in the order of the list; for one line only its number is 0.
  const QString& sBildName() const { return sBildName_; }

  void setVisible(bool visible) override;
  void reject() override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Form_Load();
  void cmdOK_Click();
  /// The picture that a line gets. Error 9 for a random one of none.
  QString nextPicture();
  void loadVisibleIcons();
  QPixmap blankIcon() const;
  void showIcon(int row, const SmallPicture& picture);
  void showPreview();
  QString pathOf(const QListWidgetItem& entry) const;

  Workplace workplace_;
  std::unique_ptr<Ui::frmWerbeFenster> ui_;
  PictureLoader* icons_;
  PictureLoader* preview_;
  QTimer sight_;         // fires when the list has its place: what is in sight may be another
  QList<int> iconRows_;  // of the list, in the order of what icons_ reads
  QString folder_;
  QString sBildName_;
  qint16 aktLinie_ = 0;
  bool bEinzel_ = false;
  bool bOK_ = false;
};

}  // namespace qk
