#include "app/ground/control_door.h"

#include "app/ground/temp_module_ui.h"

namespace qk {

bool ControlDoor::run(const ReportOrder& order) {
  report::Order shown;
  shown.reportFile = order.reportFile;
  shown.dataFile = order.dataFile;
  shown.subreport = order.unterbericht;
  shown.subreportFile = order.unterberichtDatei;
  shown.windowTitle = order.titel;
  shown.place = [this](QWidget& window) { AnzeigeLage(workplace_, window, sLage_); };
  shown.zoom = order.zoom;
  shown.destination = order.ziel == ReportOrder::Ziel::Drucker ? report::Order::Destination::Printer
                                                               : report::Order::Destination::Window;
  shown.parameter = order.parameter;
  return control_.run(shown);
}

}  // namespace qk
