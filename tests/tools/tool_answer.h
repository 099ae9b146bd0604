// The competition tool called as from a console.
#pragma once

#include <QStringList>
#include <QTextStream>

#include "tools/wettkampf/commands.h"

namespace qk::test {

struct ToolAnswer {
  int status = -1;
  QString out, errors;
};

inline ToolAnswer callTool(const QStringList& arguments) {
  ToolAnswer answer;
  QTextStream out(&answer.out), errors(&answer.errors);
  answer.status = runCompetitionTool(arguments, out, errors);
  return answer;
}

}  // namespace qk::test
