// The look of what tells of trouble that lasts.
#pragma once

class QLabel;
class QPalette;

namespace qk::look {

/// Black on amber, in light and dark; the words say what the colour can't.
void setAlertColours(QPalette& colours);
void makeAlert(QLabel& label);

}  // namespace qk::look
