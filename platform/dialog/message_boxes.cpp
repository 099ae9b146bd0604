#include "platform/dialog/message_boxes.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QFontDialog>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include "platform/dialog/font_convert.h"
#include "platform/dialog/key_guard.h"
#include "platform/dialog/printer_setup_dialog.h"
#include "platform/print/current_printer.h"
#include "platform/runtime/files.h"
#include "platform/runtime/unasked.h"
#include "platform/widgets/hourglass.h"

namespace qk {

namespace {

struct ButtonSet {
  QMessageBox::StandardButtons buttons;
  BoxAnswer escape;
};

ButtonSet buttonSet(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::Ok:
      return {QMessageBox::Ok, BoxAnswer::Ok};
    case BoxButtons::OkCancel:
      return {QMessageBox::Ok | QMessageBox::Cancel, BoxAnswer::Cancel};
    case BoxButtons::YesNo:
      return {QMessageBox::Yes | QMessageBox::No, BoxAnswer::No};
    case BoxButtons::RetryCancel:
      return {QMessageBox::Retry | QMessageBox::Cancel, BoxAnswer::Cancel};
    case BoxButtons::AbortRetryIgnore:
      return {QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore, BoxAnswer::Abort};
  }
  Q_UNREACHABLE();
}

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

QMessageBox::Icon messageIcon(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::None:
      return QMessageBox::NoIcon;
    case BoxIcon::Information:
      return QMessageBox::Information;
    case BoxIcon::Question:
      return QMessageBox::Question;
    case BoxIcon::Exclamation:
      return QMessageBox::Warning;
    case BoxIcon::Critical:
      return QMessageBox::Critical;
  }
  Q_UNREACHABLE();
}

/// Owns a dialog that its parent window may take along while it is open.
template <class Dialog>
class Modal {
 public:
  template <class... Arguments>
  explicit Modal(Arguments... arguments) : dialog_(new Dialog(arguments...)) {}
  ~Modal() { delete dialog_.data(); }
  Modal(const Modal&) = delete;
  Modal& operator=(const Modal&) = delete;

  Dialog* operator->() const { return dialog_.data(); }
  Dialog* get() const { return dialog_.data(); }
  /// The dialog's result; nothing when it went with its parent.
  std::optional<int> exec() {
    const PlainCursor plain;  // whoever asks waits for the operator
    const int result = dialog_->exec();
    return dialog_ ? std::optional(result) : std::nullopt;
  }

 private:
  QPointer<Dialog> dialog_;
};

bool offscreen() {
  return QGuiApplication::platformName() == "offscreen";
}

const char* const kWhenKeysCount = "Tasten gelten hier erst, wenn eine Sekunde lang keine kam.";
/// Of a title bar beside the title, in heights of its text: icon, buttons and some air.
constexpr int kTitleBarExtras = 8;

/// How wide a window must be for its title to stand there whole.
int widthForTitle(const QWidget& window) {
  const QFontMetrics text(QApplication::font("QMdiSubWindowTitleBar"));
  return text.horizontalAdvance(window.windowTitle()) + kTitleBarExtras * text.height();
}

/// A box sizes itself by its grid alone: what it must be wide enough for goes in there.
void makeRoomForTitle(QMessageBox& box) {
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (!grid) return;
  grid->addItem(new QSpacerItem(widthForTitle(box), 0), grid->rowCount(), 0, 1, grid->columnCount());
}

/// What a box that came unasked adds below its text: what it speaks of, and why it takes no key yet.
void sayUnasked(QMessageBox& box, const QString& about) {
  box.setInformativeText(about.isEmpty() ? kWhenKeysCount : about + "\n" + kWhenKeysCount);
  if (auto* label = box.findChild<QLabel*>("qt_msgbox_informativelabel")) label->setTextFormat(Qt::PlainText);
}

/// The whole prompt above the dialog: its title bar holds one line of it at most.
void showPrompt(QFileDialog& dialog, const QString& prompt) {
  dialog.setWindowTitle(prompt.section(u'\n', 0, 0).trimmed());
  auto* label = new QLabel(prompt, &dialog);
  label->setObjectName("lblPrompt");
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setContentsMargins(dialog.layout()->contentsMargins());
  dialog.layout()->setMenuBar(label);  // the place above everything else of a layout
}

/// Tells files by what they are called. The toolkit's own looks into them, from a thread of its own; but
/// opening and closing a file drops the locks that a database connection has on it (held_files.h).
class IconsByName : public QFileIconProvider {
 public:
  using QFileIconProvider::icon;
  QIcon icon(const QFileInfo& info) const override { return icon(info.isDir() ? Folder : File); }
  QString type(const QFileInfo& info) const override { return info.isDir() ? QString() : info.suffix(); }
};

/// Runs a file dialog; the chosen path in the platform's spelling, empty when cancelled.
QString chosenPath(Modal<QFileDialog>& dialog, const QString& start) {
  // The toolkit's own dialog can be driven by a test; without a screen there is no other.
  if (offscreen()) dialog->setOption(QFileDialog::DontUseNativeDialog);
  const QFileInfo info(start);
  const bool proposed = !start.isEmpty() && !isForeignPath(start);
  if (proposed && info.isDir()) {
    dialog->setDirectory(start);
  } else if (proposed && info.dir().exists()) {
    dialog->setDirectory(info.dir());
    dialog->selectFile(info.fileName());
  }
  if (dialog.exec() != QDialog::Accepted) return {};
  return QDir::toNativeSeparators(dialog->selectedFiles().value(0));
}

}  // namespace

QWidget* MessageBoxes::parentWindow() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return QApplication::activeWindow();
}

BoxAnswer MessageBoxes::show(const Box& box) {
  const ButtonSet set = buttonSet(box.buttons);
  const std::optional<QString> unasked = Unasked::current();
  const Unasked::Aside aside;
  Modal<QMessageBox> message(parentWindow());
  message->setIcon(messageIcon(box.icon));
  message->setWindowTitle(box.title);
  message->setTextFormat(Qt::PlainText);  // a name with "<" in it stays a name
  message->setText(box.text);
  message->setStandardButtons(set.buttons);
  message->setDefaultButton(standardButton(presetOf(box)));
  message->setEscapeButton(standardButton(set.escape));
  if (unasked) {
    sayUnasked(*message.get(), *unasked);
    new KeyGuard(*message.get(), clock_);
  }
  makeRoomForTitle(*message.get());
  const std::optional<int> pressed = message.exec();
  if (pressed)
    for (const BoxAnswer answer : {BoxAnswer::Ok, BoxAnswer::Cancel, BoxAnswer::Yes, BoxAnswer::No,
                                   BoxAnswer::Abort, BoxAnswer::Retry, BoxAnswer::Ignore})
      if (standardButton(answer) == *pressed) return answer;
  return set.escape;
}

QString MessageBoxes::input(const QString& prompt, const QString& title, const QString& preset) {
  return inputText(prompt, title, preset, false);
}

QString MessageBoxes::password(const QString& prompt, const QString& title) {
  return inputText(prompt, title, {}, true);
}

QString MessageBoxes::inputText(const QString& prompt, const QString& title, const QString& preset,
                                bool masked) {
  const bool unasked = Unasked::current().has_value();
  const Unasked::Aside aside;
  Modal<QInputDialog> dialog(parentWindow());
  if (unasked) new KeyGuard(*dialog.get(), clock_);
  dialog->setInputMode(QInputDialog::TextInput);
  dialog->setWindowTitle(title.isEmpty() ? QGuiApplication::applicationDisplayName() : title);
  dialog->setLabelText(prompt);
  for (QLabel* label : dialog->findChildren<QLabel*>()) {
    label->setTextFormat(Qt::PlainText);
    label->setMinimumWidth(widthForTitle(*dialog.get()));  // the dialog itself is as wide as what is in it
  }
  dialog->setTextEchoMode(masked ? QLineEdit::Password : QLineEdit::Normal);
  dialog->setTextValue(preset);
  if (auto* edit = dialog->findChild<QLineEdit*>()) edit->setObjectName("inputText");
  return dialog.exec() == QDialog::Accepted ? dialog->textValue() : QString();
}

QString MessageBoxes::openFile(const QString& filter, const QString& start) {
  IconsByName icons;  // outlives the dialog, whose thread uses it
  Modal<QFileDialog> dialog(parentWindow());
  dialog->setIconProvider(&icons);
  dialog->setAcceptMode(QFileDialog::AcceptOpen);
  dialog->setFileMode(QFileDialog::ExistingFile);
  dialog->setOption(QFileDialog::HideNameFilterDetails);
  dialog->setNameFilters(nameFilters(filter));
  return chosenPath(dialog, start);
}

QString MessageBoxes::saveFile(const QString& filter, const QString& start) {
  Modal<QFileDialog> dialog(parentWindow());
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  dialog->setOption(QFileDialog::HideNameFilterDetails);
  dialog->setNameFilters(nameFilters(filter));
  dialog->setDefaultSuffix(QFileInfo(start).suffix());
  return chosenPath(dialog, start);
}

QString MessageBoxes::chooseFolder(const QString& prompt, const QString& start) {
  IconsByName icons;  // outlives the dialog, whose thread uses it
  Modal<QFileDialog> dialog(parentWindow());
  dialog->setIconProvider(&icons);
#ifdef Q_OS_WIN
  dialog->setWindowTitle(prompt.simplified());  // the system's own dialog has no other place for it
#else
  dialog->setOption(QFileDialog::DontUseNativeDialog);
  showPrompt(*dialog.get(), prompt);
#endif
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly);
  return chosenPath(dialog, start);
}

std::optional<FontChoice> MessageBoxes::chooseFont(const FontChoice& current) {
  Modal<QFontDialog> dialog(parentWindow());
  QColor colour = toColour(current.colour);
  dialog->setOption(QFontDialog::DontUseNativeDialog);  // the only one that takes a button for the colour
  dialog->setCurrentFont(toFont(parseFontText(current.font)));
  if (auto* buttons = dialog->findChild<QDialogButtonBox*>()) {
    QPushButton* choose = buttons->addButton("Farbe...", QDialogButtonBox::ActionRole);
    choose->setObjectName("cmdFarbe");
    QObject::connect(choose, &QPushButton::clicked, dialog.get(), [&colour, parent = dialog.get()] {
      const auto options =
          offscreen() ? QColorDialog::DontUseNativeDialog : QColorDialog::ColorDialogOptions();
      const QColor chosen = QColorDialog::getColor(colour, parent, {}, options);
      if (chosen.isValid()) colour = chosen;
    });
  }
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return FontChoice{fontText(fromFont(dialog->selectedFont())), fromColour(colour)};
}

std::optional<PrinterSetup> MessageBoxes::printerSetup(const PrinterSetup& current) {
  Modal<PrinterSetupDialog> dialog(installedPrinters(), current, parentWindow());
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog->setup();
}

QStringList nameFilters(const QString& filter) {
  const QStringList parts = filter.split(u'|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QStringList patterns = parts[i + 1].split(u';', Qt::SkipEmptyParts);
    for (QString& pattern : patterns) {
      pattern = pattern.trimmed();
      if (pattern == "*.*") pattern = "*";  // every file, also one without a dot
    }
    filters += parts[i] + " (" + patterns.join(u' ') + ")";
  }
  return filters;
}

}  // namespace qk
