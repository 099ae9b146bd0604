// The door to reports that leads to the report control: receipts and lists as windows and on paper.
#pragma once

#include "cash/report_door.h"
#include "platform/report/report_control.h"
#include "platform/workplace.h"

namespace qk {

class ControlDoor : public ReportDoor {
 public:
  /// All of them outlive the door. Windows open where the settings of report windows say.
  ControlDoor(const Workplace& workplace, ReportControl::Papers papers)
      : workplace_(workplace), control_(workplace, papers) {}

  void run(const ReportOrder& order) override;

 private:
  Workplace workplace_;
  ReportControl control_;
};

}  // namespace qk
