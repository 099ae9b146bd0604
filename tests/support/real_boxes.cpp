#include "tests/support/real_boxes.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPushButton>
#include <QTimer>
#include <algorithm>

#include "platform/dialog/font_convert.h"
#include "platform/dialog/key_guard.h"
#include "platform/dialog/message_boxes.h"
#include "platform/dialog/printer_setup_dialog.h"

namespace qk::test {

namespace {

QMessageBox::StandardButton standardButton(BoxAnswer answer) {
  switch (answer) {
    case BoxAnswer::Ok:
      return QMessageBox::Ok;
    case BoxAnswer::Cancel:
      return QMessageBox::Cancel;
    case BoxAnswer::Yes:
      return QMessageBox::Yes;
    case BoxAnswer::No:
      return QMessageBox::No;
    case BoxAnswer::Abort:
      return QMessageBox::Abort;
    case BoxAnswer::Retry:
      return QMessageBox::Retry;
    case BoxAnswer::Ignore:
      return QMessageBox::Ignore;
  }
  Q_UNREACHABLE();
}

/// Which set of buttons a box shows; nothing for a set that the program doesn't use.
std::optional<BoxButtons> buttonsOf(const QMessageBox& box) {
  for (const BoxButtons buttons : {BoxButtons::Ok, BoxButtons::OkCancel, BoxButtons::YesNo,
                                   BoxButtons::RetryCancel, BoxButtons::AbortRetryIgnore}) {
    QMessageBox::StandardButtons all;
    for (const BoxAnswer answer : answersOf(buttons)) all |= standardButton(answer);
    if (box.standardButtons() == all) return buttons;
  }
  return std::nullopt;
}

BoxIcon iconOf(const QMessageBox& box) {
  switch (box.icon()) {
    case QMessageBox::NoIcon:
      return BoxIcon::None;
    case QMessageBox::Information:
      return BoxIcon::Information;
    case QMessageBox::Question:
      return BoxIcon::Question;
    case QMessageBox::Warning:
      return BoxIcon::Exclamation;
    case QMessageBox::Critical:
      return BoxIcon::Critical;
  }
  Q_UNREACHABLE();
}

/// What a box that came unasked speaks of: it stands below the text, with a line about keys behind it.
std::optional<QString> aboutOf(const QMessageBox& box) {
  if (!box.findChild<KeyGuard*>()) return std::nullopt;
  const QStringList lines = box.informativeText().split(u'\n');
  return lines.size() > 1 ? lines.front() : QString();
}

void run(const std::function<void()>& meanwhile) {
  if (meanwhile) meanwhile();
}

}  // namespace

RealBoxes::RealBoxes(Complain complain) : Expectations(std::move(complain)) {
  qApp->installEventFilter(this);
}

RealBoxes::~RealBoxes() {
  qApp->removeEventFilter(this);
}

bool RealBoxes::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show)
    if (auto* dialog = qobject_cast<QDialog*>(watched); dialog && dialog->isModal())
      // Once its own loop runs: a dialog can't be closed before it is quite open.
      QTimer::singleShot(0, this, [this, waiting = QPointer<QDialog>(dialog)] {
        if (waiting && waiting->isVisible()) answer(waiting);
      });
  return false;
}

void RealBoxes::answer(QDialog* dialog) {
  const QPointer<QDialog> alive(dialog);
  if (auto* box = qobject_cast<QMessageBox*>(dialog))
    answerBox(*box);
  else if (auto* input = qobject_cast<QInputDialog*>(dialog))
    answerInput(*input);
  else if (auto* file = qobject_cast<QFileDialog*>(dialog))
    answerFile(*file);
  else if (auto* font = qobject_cast<QFontDialog*>(dialog))
    answerFont(*font);
  else if (auto* printer = qobject_cast<PrinterSetupDialog*>(dialog))
    answerPrinterSetup(*printer);
  else if (qobject_cast<QPrintDialog*>(dialog)) {
    take(Asked::Print, {}, dialog->windowTitle());
    dialog->reject();
  } else
    answerWindow(*dialog);
  if (alive && alive->isVisible()) {
    complain("still open after its answer: " + dialog->objectName() + " <" + dialog->windowTitle() + ">");
    alive->done(QDialog::Rejected);
  }
}

void RealBoxes::answerBox(QMessageBox& box) {
  const QPointer<QMessageBox> alive(&box);
  if (box.textFormat() != Qt::PlainText) complain("box <" + box.text() + "> shows rich text");
  const std::optional<BoxButtons> buttons = buttonsOf(box);
  if (!buttons) {
    take(Asked::Box, box.text(), box.windowTitle());
    complain("box <" + box.text() + "> has a strange set of buttons");
    box.done(QDialog::Rejected);
    return;
  }
  BoxAnswer preset = answersOf(*buttons).front();
  for (const BoxAnswer answer : answersOf(*buttons))
    if (box.defaultButton() == box.button(standardButton(answer))) preset = answer;
  std::function<void()> meanwhile;
  const Box shown{box.text(), box.windowTitle(), iconOf(box), *buttons, std::nullopt};
  const BoxAnswer answer = takeBox(shown, preset, aboutOf(box), &meanwhile).value_or(escapeOf(*buttons));
  run(meanwhile);
  if (alive && alive->isVisible()) box.button(standardButton(answer))->click();
}

void RealBoxes::answerInput(QInputDialog& dialog) {
  const std::optional<Expectation> taken = take(Asked::Input, dialog.labelText(), dialog.windowTitle());
  if (!taken) return dialog.reject();
  run(taken->meanwhile);
  if (!taken->reply) return dialog.reject();
  dialog.setTextValue(*taken->reply);
  dialog.accept();
}

void RealBoxes::answerFile(QFileDialog& dialog) {
  const bool folder = dialog.fileMode() == QFileDialog::Directory;
  // The real dialog carries its filters in the toolkit's form.
  const auto carried = [folder](const QString& text) {
    return folder ? QStringList(text) : nameFilters(text);
  };
  auto* prompt = dialog.findChild<QLabel*>("lblPrompt");
  const QStringList shown = !folder  ? dialog.nameFilters()
                            : prompt ? QStringList(prompt->text())
                                     : QStringList(dialog.windowTitle());
  const QString expected = nextText();
  const QString text = carried(expected) == shown ? expected : shown.join(u'|');
  const Asked kind = folder                                           ? Asked::Folder
                     : dialog.acceptMode() == QFileDialog::AcceptSave ? Asked::SaveFile
                                                                      : Asked::OpenFile;
  const std::optional<Expectation> taken = take(kind, text, dialog.windowTitle());
  if (!taken) return dialog.reject();
  run(taken->meanwhile);
  if (!taken->reply) return dialog.reject();
  auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
  if (!name) return complain("a native file dialog can't be answered");
  name->setText(QDir::fromNativeSeparators(*taken->reply));
  QMetaObject::invokeMethod(&dialog, "accept");
}

void RealBoxes::answerFont(QFontDialog& dialog) {
  const std::optional<Expectation> taken = take(Asked::Font, {}, dialog.windowTitle());
  if (!taken) return dialog.reject();
  run(taken->meanwhile);
  if (!taken->font) return dialog.reject();
  dialog.setCurrentFont(toFont(parseFontText(taken->font->font)));
  dialog.accept();
}

void RealBoxes::answerPrinterSetup(PrinterSetupDialog& dialog) {
  const std::optional<Expectation> taken = take(Asked::PrinterSetup, {}, dialog.windowTitle());
  if (!taken) return dialog.reject();
  run(taken->meanwhile);
  if (!taken->printer) return dialog.reject();
  dialog.setSetup(*taken->printer);
  dialog.accept();
}

void RealBoxes::answerWindow(QDialog& dialog) {
  const QString name = dialog.objectName().isEmpty() ? dialog.metaObject()->className() : dialog.objectName();
  const std::optional<Expectation> taken = take(Asked::Window, name, dialog.windowTitle());
  if (!taken) return dialog.reject();
  run(taken->meanwhile);
  taken->drive(dialog);
}

}  // namespace qk::test
