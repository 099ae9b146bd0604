// The door to reports that leads to the report control: receipts and lists as windows and on paper.
#pragma once

#include "app/ground/report_door.h"
#include "platform/report/report_control.h"
#include "platform/workplace.h"

namespace qk {

class ControlDoor : public ReportDoor {
 public:
  /// All of them outlive the door. Windows open where the settings of report windows say; `sLage` ends the
  /// names of those settings, for each room keeps a place of its own.
  ControlDoor(const Workplace& workplace, ReportControl::Papers papers, QString sLage)
      : workplace_(workplace), control_(workplace, papers), sLage_(std::move(sLage)) {}

  bool run(const ReportOrder& order) override;

 private:
  Workplace workplace_;
  ReportControl control_;
  QString sLage_;
};

}  // namespace qk
