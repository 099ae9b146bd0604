// A store that appears under its name only when it is whole.
#pragma once

#include <QString>
#include <functional>

#include "masterdata/making/move.h"

namespace qk {

struct DraftPlace {
  QString path;        ///< a file to make, or one that names an empty store on a server
  bool again = false;  ///< as MoveRequest::again
};

/// Fills a file beside the path, and renames it when it is whole; a store on a server is filled by a move,
/// which `watch` sees. What `fill` or `watch` throws passes, and nothing is left. A kill leaves a draft
/// beside the path, which the next making removes, or a server's store with its mark. 3204 when the path
/// names a store with something in it.
void makeWhole(const DraftPlace& place, const std::function<void(dao::Database&)>& fill,
               const std::function<void(const MoveStep&)>& watch);

/// Removes a file that wasn't finished, with whatever an engine left beside it.
void removeDraft(const QString& path);

}  // namespace qk
