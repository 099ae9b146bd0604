// The look of a label that tells of trouble that lasts.
#pragma once

class QLabel;

namespace qk::look {

/// Black on amber, in light and dark; the words say what the colour can't.
void makeAlert(QLabel& label);

}  // namespace qk::look
