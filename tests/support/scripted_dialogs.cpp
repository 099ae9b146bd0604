#include "tests/support/scripted_dialogs.h"

#include "platform/runtime/unasked.h"

namespace qk::test {

BoxAnswer ScriptedDialogs::show(const Box& box) {
  std::function<void()> meanwhile;
  const std::optional<QString> unasked = Unasked::current();
  const Unasked::Aside aside;
  const std::optional<BoxAnswer> answer = takeBox(box, presetOf(box), unasked, &meanwhile);
  if (meanwhile) meanwhile();
  return answer.value_or(escapeOf(box.buttons));
}

QString ScriptedDialogs::reply(Asked kind, const QString& text, const QString& title) {
  const std::optional<Expectation> taken = take(kind, text, title);
  if (!taken) return {};
  if (taken->meanwhile) taken->meanwhile();
  return taken->reply.value_or(QString());
}

QString ScriptedDialogs::input(const QString& prompt, const QString& title, const QString&) {
  return reply(Asked::Input, prompt, title);
}

QString ScriptedDialogs::openFile(const QString& filter, const QString&) {
  return reply(Asked::OpenFile, filter, {});
}

QString ScriptedDialogs::saveFile(const QString& filter, const QString&) {
  return reply(Asked::SaveFile, filter, {});
}

QString ScriptedDialogs::chooseFolder(const QString& prompt, const QString&) {
  return reply(Asked::Folder, prompt, {});
}

std::optional<FontChoice> ScriptedDialogs::chooseFont(const FontChoice&) {
  const std::optional<Expectation> taken = take(Asked::Font, {}, {});
  return taken ? taken->font : std::nullopt;
}

std::optional<PrinterSetup> ScriptedDialogs::printerSetup(const PrinterSetup&) {
  const std::optional<Expectation> taken = take(Asked::PrinterSetup, {}, {});
  return taken ? taken->printer : std::nullopt;
}

}  // namespace qk::test
