// Doors to reports for tests.
#pragma once

#include <functional>
#include <vector>

#include "app/ground/report_door.h"
#include "platform/runtime/error.h"
#include "tests/support/expectations.h"

namespace qk::test {

/// Nothing is to be reported.
class NoReports : public ReportDoor {
 public:
  bool run(const ReportOrder& order) override {
    failTest("an unexpected report: " + order.titel);
    return false;
  }
};

/// Notes what is asked for.
class NotedReports : public ReportDoor {
 public:
  bool run(const ReportOrder& order) override {
    orders.push_back(order);
    if (meanwhile) meanwhile(order);
    if (error != 0) throw Error(error);
    return goesOn;
  }

  std::vector<ReportOrder> orders;
  std::function<void(const ReportOrder&)> meanwhile;  ///< while it runs
  int error = 0;                                      ///< what it fails with
  bool goesOn = true;                                 ///< false: the operator gives the printing up
};

}  // namespace qk::test
