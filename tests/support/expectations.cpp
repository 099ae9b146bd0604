#include "tests/support/expectations.h"

#include <QTest>
#include <algorithm>

namespace qk::test {

namespace {

QString nameOf(Asked kind) {
  switch (kind) {
    case Asked::Box:
      return "box";
    case Asked::Input:
      return "input box";
    case Asked::OpenFile:
      return "file dialog";
    case Asked::SaveFile:
      return "dialog of a file to be written";
    case Asked::Folder:
      return "folder dialog";
    case Asked::Font:
      return "font dialog";
    case Asked::PrinterSetup:
      return "printer set-up";
    case Asked::Print:
      return "print dialog";
    case Asked::Window:
      return "window";
  }
  Q_UNREACHABLE();
}

QString described(Asked kind, const QString& text) {
  return nameOf(kind) + " <" + text + ">";
}

}  // namespace

void failTest(const QString& complaint) {
  QTest::qFail(qPrintable(complaint), __FILE__, __LINE__);
}

QString nameOf(BoxAnswer answer) {
  switch (answer) {
    case BoxAnswer::Ok:
      return "Ok";
    case BoxAnswer::Cancel:
      return "Cancel";
    case BoxAnswer::Yes:
      return "Yes";
    case BoxAnswer::No:
      return "No";
    case BoxAnswer::Abort:
      return "Abort";
    case BoxAnswer::Retry:
      return "Retry";
    case BoxAnswer::Ignore:
      return "Ignore";
  }
  Q_UNREACHABLE();
}

QString nameOf(BoxButtons buttons) {
  QStringList names;
  for (const BoxAnswer answer : answersOf(buttons)) names += nameOf(answer);
  return names.join('/');
}

QString nameOf(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::None:
      return "none";
    case BoxIcon::Information:
      return "information";
    case BoxIcon::Question:
      return "question";
    case BoxIcon::Exclamation:
      return "exclamation";
    case BoxIcon::Critical:
      return "critical";
  }
  Q_UNREACHABLE();
}

std::vector<BoxAnswer> answersOf(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::Ok:
      return {BoxAnswer::Ok};
    case BoxButtons::OkCancel:
      return {BoxAnswer::Ok, BoxAnswer::Cancel};
    case BoxButtons::YesNo:
      return {BoxAnswer::Yes, BoxAnswer::No};
    case BoxButtons::RetryCancel:
      return {BoxAnswer::Retry, BoxAnswer::Cancel};
    case BoxButtons::AbortRetryIgnore:
      return {BoxAnswer::Abort, BoxAnswer::Retry, BoxAnswer::Ignore};
  }
  Q_UNREACHABLE();
}

BoxAnswer escapeOf(BoxButtons buttons) {
  return buttons == BoxButtons::AbortRetryIgnore ? BoxAnswer::Abort : answersOf(buttons).back();
}

Expectation& Expectations::add(Expectation expectation) {
  queue_.push_back(std::move(expectation));
  return queue_.back();
}

Expectation& Expectations::expect(const QString& text, BoxAnswer answer) {
  Expectation expectation;
  expectation.text = text;
  expectation.answer = answer;
  return add(std::move(expectation));
}

Expectation& Expectations::expectInput(const QString& prompt, const std::optional<QString>& reply) {
  Expectation expectation;
  expectation.kind = Asked::Input;
  expectation.text = prompt;
  expectation.reply = reply;
  return add(std::move(expectation));
}

Expectation& Expectations::expectOpenFile(const QString& filter, const std::optional<QString>& reply) {
  Expectation& expectation = expectInput(filter, reply);
  expectation.kind = Asked::OpenFile;
  return expectation;
}

Expectation& Expectations::expectSaveFile(const QString& filter, const std::optional<QString>& reply) {
  Expectation& expectation = expectInput(filter, reply);
  expectation.kind = Asked::SaveFile;
  return expectation;
}

Expectation& Expectations::expectFolder(const QString& prompt, const std::optional<QString>& reply) {
  Expectation& expectation = expectInput(prompt, reply);
  expectation.kind = Asked::Folder;
  return expectation;
}

Expectation& Expectations::expectFont(const std::optional<FontChoice>& reply) {
  Expectation& expectation = expect({});
  expectation.kind = Asked::Font;
  expectation.font = reply;
  return expectation;
}

Expectation& Expectations::expectPrinterSetup(const std::optional<PrinterSetup>& reply) {
  Expectation& expectation = expect({});
  expectation.kind = Asked::PrinterSetup;
  expectation.printer = reply;
  return expectation;
}

Expectation& Expectations::expectPrint() {
  Expectation& expectation = expect({});
  expectation.kind = Asked::Print;
  return expectation;
}

Expectation& Expectations::expectWindow(const QString& name, std::function<void(QWidget&)> drive) {
  Expectation& expectation = expect(name);
  expectation.kind = Asked::Window;
  expectation.drive = std::move(drive);
  return expectation;
}

void Expectations::finish() {
  for (const Expectation& left : queue_) complain_("never came: " + described(left.kind, left.text));
  queue_.clear();
}

std::optional<Expectation> Expectations::take(Asked kind, const QString& text, const QString& title) {
  asked_ += text;
  if (queue_.empty()) {
    complain_("unexpected " + described(kind, text));
    return std::nullopt;
  }
  const Expectation& next = queue_.front();
  if (next.kind != kind || next.text != text) {
    complain_("unexpected " + described(kind, text) + ", expected " + described(next.kind, next.text));
    return std::nullopt;
  }
  Expectation taken = std::move(queue_.front());
  queue_.pop_front();
  if (taken.title && *taken.title != title)
    complain_(described(kind, text) + " has the title <" + title + ">, expected <" + *taken.title + ">");
  return taken;
}

std::optional<BoxAnswer> Expectations::takeBox(const Box& box, BoxAnswer shownPreset,
                                               const std::optional<QString>& about,
                                               std::function<void()>* meanwhile) {
  std::optional<Expectation> taken = take(Asked::Box, box.text, box.title);
  if (!taken) return std::nullopt;
  const QString which = described(Asked::Box, box.text);
  if (taken->buttons && *taken->buttons != box.buttons)
    complain_(which + " has the buttons " + nameOf(box.buttons) + ", expected " + nameOf(*taken->buttons));
  if (taken->icon && *taken->icon != box.icon)
    complain_(which + " has the icon " + nameOf(box.icon) + ", expected " + nameOf(*taken->icon));
  if (taken->preset && *taken->preset != shownPreset)
    complain_(which + " presets " + nameOf(shownPreset) + ", expected " + nameOf(*taken->preset));
  if (taken->about && taken->about != about)
    complain_(which + (about ? " speaks of <" + *about + ">" : QString(" was asked for")) +
              ", expected unasked, of <" + *taken->about + ">");
  *meanwhile = std::move(taken->meanwhile);
  const std::vector<BoxAnswer> possible = answersOf(box.buttons);
  if (std::find(possible.begin(), possible.end(), taken->answer) == possible.end()) {
    complain_(which + " has no button for the answer " + nameOf(taken->answer));
    return std::nullopt;
  }
  return taken->answer;
}

}  // namespace qk::test
