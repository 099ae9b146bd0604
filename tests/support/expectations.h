// What a test expects to be asked, in order, and what it answers: one language for scripted and for real
// boxes.
//
//   boxes.expect("Soll gelöscht werden?", BoxAnswer::Yes).titled("Hinweis").with(BoxButtons::YesNo);
//   boxes.expectInput("Name:", "Müller");
//
// A box out of turn, with another text, or without the button that the answer needs fails the test, and so
// does an expectation that nothing used. A failing box is answered as by Esc, so that the test can't hang.
#pragma once

#include <QString>
#include <QStringList>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "platform/dialog/dialogs.h"

class QWidget;

namespace qk::test {

/// Where complaints go; a test of the test aids collects them instead of failing.
using Complain = std::function<void(const QString& complaint)>;
/// Fails the running test.
void failTest(const QString& complaint);

enum class Asked { Box, Input, OpenFile, SaveFile, Folder, Font, PrinterSetup, Print, Window };

struct Expectation {
  Asked kind = Asked::Box;
  QString text;  ///< text, prompt, filter or object name of a window
  BoxAnswer answer = BoxAnswer::Ok;
  std::optional<QString> reply;  ///< of an input or chooser; without one it is cancelled
  std::optional<FontChoice> font;
  std::optional<PrinterSetup> printer;
  std::optional<QString> title;
  std::optional<BoxButtons> buttons;
  std::optional<BoxIcon> icon;
  std::optional<BoxAnswer> preset;
  std::optional<QString> about;         ///< of a box that comes unasked
  std::function<void()> meanwhile;      ///< runs while the box is open, before it is answered
  std::function<void(QWidget&)> drive;  ///< of a window: works it and closes it

  Expectation& titled(const QString& value) { return title = value, *this; }
  Expectation& with(BoxButtons value) { return buttons = value, *this; }
  Expectation& showing(BoxIcon value) { return icon = value, *this; }
  Expectation& presetting(BoxAnswer value) { return preset = value, *this; }
  /// The box says that it came unasked, and what it speaks of.
  Expectation& unasked(const QString& value) { return about = value, *this; }
  Expectation& during(std::function<void()> value) { return meanwhile = std::move(value), *this; }
};

class Expectations {
 public:
  explicit Expectations(Complain complain = failTest) : complain_(std::move(complain)) {}
  ~Expectations() { finish(); }
  Expectations(const Expectations&) = delete;
  Expectations& operator=(const Expectations&) = delete;

  Expectation& expect(const QString& text, BoxAnswer answer = BoxAnswer::Ok);
  Expectation& expectInput(const QString& prompt, const std::optional<QString>& reply);
  Expectation& expectOpenFile(const QString& filter, const std::optional<QString>& reply);
  Expectation& expectSaveFile(const QString& filter, const std::optional<QString>& reply);
  Expectation& expectFolder(const QString& prompt, const std::optional<QString>& reply);
  Expectation& expectFont(const std::optional<FontChoice>& reply);
  Expectation& expectPrinterSetup(const std::optional<PrinterSetup>& reply);
  /// The question on which printer to print; cancelled. Real boxes only.
  Expectation& expectPrint();
  /// A modal window of the program (or any other dialog) by object name or class; real boxes only.
  Expectation& expectWindow(const QString& name, std::function<void(QWidget&)> drive);

  /// Complains about what is left over and forgets it.
  void finish();
  /// All expected boxes have come.
  bool done() const { return queue_.empty(); }
  /// The texts of everything that was asked, in order.
  const QStringList& asked() const { return asked_; }

  /// For the shapes: the text expected next, empty when nothing is.
  QString nextText() const { return queue_.empty() ? QString() : queue_.front().text; }
  /// For the shapes: the expectation that a box of this kind and text meets; nothing (and a complaint)
  /// otherwise.
  std::optional<Expectation> take(Asked kind, const QString& text, const QString& title);
  /// The same for a box, with all that it says.
  std::optional<BoxAnswer> takeBox(const Box& box, BoxAnswer shownPreset, const std::optional<QString>& about,
                                   std::function<void()>* meanwhile);
  void complain(const QString& complaint) const { complain_(complaint); }

 private:
  Expectation& add(Expectation expectation);

  Complain complain_;
  std::deque<Expectation> queue_;
  QStringList asked_;
};

QString nameOf(BoxAnswer answer);
QString nameOf(BoxButtons buttons);
QString nameOf(BoxIcon icon);
std::vector<BoxAnswer> answersOf(BoxButtons buttons);
/// What Esc answers.
BoxAnswer escapeOf(BoxButtons buttons);

}  // namespace qk::test
