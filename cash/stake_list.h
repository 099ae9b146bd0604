// The list of stakes on sale: a double click or Enter on one takes it, once, however long it is held.
#pragma once

#include <functional>

class QListWidget;

namespace qk {

/// A single click takes none, though a desktop may open whatever is clicked once.
void connectStakes(QListWidget& list, const std::function<void()>& take);

}  // namespace qk
