#include "targetconfig/line_output.h"

#include "platform/runtime/clock.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/textcodec.h"

namespace qk {

LineOutput::LineOutput(Files& files, const Clock& clock, const QString& folder, int nLinie)
    : files_(files),
      clock_(clock),
      folder_(folder),
      dataFile_(folder + "HServ" + QString::number(nLinie) + ".nrt"),
      flagFile_(folder + "HServ" + QString::number(nLinie) + ".ctl"),
      nLinie_(nLinie) {
  takeOver();
}

void LineOutput::send(const QString& command) {
  state_ = OutputState::NotSent;
  command_ = command;
  sent_ = clock_.now();
  files_.write(dataFile_, quotedLine(command));
  files_.write(flagFile_, quotedLine({}));
  state_ = OutputState::Waiting;
}

void LineOutput::look() {
  if (state_ == OutputState::Unreachable) return takeOver();
  const bool flag = files_.exists(flagFile_);
  if (flag == (state_ == OutputState::Waiting)) return;
  if (flag) {
    // Somebody else has sent, or what failed half way is there after all.
    command_ = readCommand();
    sent_ = clock_.now();
    state_ = OutputState::Waiting;
  } else {
    // A flag in a folder that is gone was taken by nobody.
    state_ = files_.folderExists(folder_) ? OutputState::Taken : OutputState::Unreachable;
  }
}

void LineOutput::takeOver() {
  if (!files_.folderExists(folder_)) return;
  if (files_.exists(flagFile_))
    state_ = OutputState::Waiting;
  else
    state_ = files_.exists(dataFile_) ? OutputState::Taken : OutputState::Nothing;
  if (state_ != OutputState::Nothing) command_ = readCommand();
}

QString LineOutput::readCommand() {
  try {
    const QStringList lines = splitLines(fromWindows1252(files_.read(dataFile_)));
    QString command = lines.value(0);
    if (command.startsWith('"')) command.remove(0, 1);
    if (command.endsWith('"')) command.chop(1);
    return command;
  } catch (const Error&) {
    return {};  // it is only shown
  }
}

}  // namespace qk
