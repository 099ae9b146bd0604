#include "platform/look/alert.h"

#include <QLabel>

namespace qk::look {

void setAlertColours(QPalette& colours) {
  colours.setColor(QPalette::Window, QColor(0xffc000));
  colours.setColor(QPalette::WindowText, Qt::black);
}

void makeAlert(QLabel& label) {
  QPalette colours = label.palette();
  setAlertColours(colours);
  label.setPalette(colours);
  label.setAutoFillBackground(true);
  label.setMargin(3);
}

}  // namespace qk::look
