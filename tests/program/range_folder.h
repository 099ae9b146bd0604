// The folder of a range (tools/rundgang/range.h) for one test: no dot stands in its path, and the competition
// that the range makes in it comes to stand on the engine of the run.
#pragma once

#include <QDir>
#include <QTemporaryDir>

#include "tests/support/test_store.h"

namespace qk::test {

class RangeFolder {
 public:
  RangeFolder() : folder_(QDir::tempPath() + "/qk-programm-XXXXXX") { prepareStore(path() + "/demo.qkk"); }
  QString path() const { return folder_.path(); }

 private:
  QTemporaryDir folder_;
};

}  // namespace qk::test
