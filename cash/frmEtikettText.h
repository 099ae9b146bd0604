// Help with the text of a label: what can stand in the template, and what comes of it.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/grid/text_table.h"

namespace Ui {
class frmEtikettText;
}

namespace qk {

class frmEtikettText : public QDialog {
  Q_OBJECT

 public:
  explicit frmEtikettText(QWidget* parent = nullptr);
  ~frmEtikettText() override;

  /// The template; after OK the changed one.
  void setSText(const QString& sText);
  QString sText() const;

 private:
  void insertToken(int row);
  void showPreview();

  std::unique_ptr<Ui::frmEtikettText> ui_;
};

}  // namespace qk
