// Tab "Scheiben Gesamt": the numbered targets that shooters already hold.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "cash/cash_desk.h"
#include "cash/issued_targets.h"

namespace Ui {
class IssuedPanel;
}

namespace qk {

class IssuedPanel : public QWidget {
  Q_OBJECT

 public:
  explicit IssuedPanel(QWidget* parent = nullptr);
  ~IssuedPanel() override;

  /// Once, before anything else; the desk outlives the panel.
  void setDesk(CashDesk& desk);

  /// At the end of every showing of a shooter. Errors pass.
  void LoadScheibenGesamt();
  /// Menu "Alle Scheibenausgaben löschen". Errors pass.
  void loescheAlleAusgaben();
  /// The cursor closes with the window.
  void Form_Unload();

  std::vector<ReceiptTarget> belegScheiben() const;

 private:
  void versuche(const std::function<void()>& routine);

  std::unique_ptr<Ui::IssuedPanel> ui_;
  CashDesk* desk_ = nullptr;
  std::unique_ptr<IssuedTargets> issued_;
};

}  // namespace qk
