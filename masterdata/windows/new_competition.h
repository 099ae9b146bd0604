// The assistant for a new competition: what it is called, what it begins with, where it lies.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <memory>

#include "masterdata/beginning/competition_plan.h"

namespace Ui {
class NewCompetition;
}

namespace qk {

class NewCompetition : public QDialog {
  Q_OBJECT

 public:
  /// `folder`: where a new file is proposed. `earlier`: the competition that is open, offered as the earlier
  /// one; may be empty.
  NewCompetition(const Workplace& workplace, const QString& folder, const QString& earlier,
                 QWidget* parent = nullptr);
  ~NewCompetition() override;

  /// The competition that was made; empty for none.
  const QString& path() const { return path_; }
  /// Stops what runs; else closes.
  void reject() override;

 private:
  CompetitionPlan plan() const;
  void fillStarters();
  void proposePath();
  void chooseEarlier();
  void choosePath();
  void make();
  bool goesOn(const MakingStep& step);
  void showState();
  void focusOn(const QString& field);

  Workplace workplace_;
  std::unique_ptr<Ui::NewCompetition> ui_;
  QString folder_, proposed_, path_;
  bool running_ = false, stop_ = false;
  QElapsedTimer shown_;  // since the progress was shown
};

}  // namespace qk
