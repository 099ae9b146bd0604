// The one door to message boxes, input boxes and choosers. No widget header here: logic asks through it.
#pragma once

#include <QString>
#include <optional>

#include "platform/print/printer_setup.h"
#include "platform/runtime/retry.h"

namespace qk {

enum class BoxIcon { None, Information, Question, Exclamation, Critical };
enum class BoxButtons { Ok, OkCancel, YesNo, RetryCancel, AbortRetryIgnore };
enum class BoxAnswer { Ok, Cancel, Yes, No, Abort, Retry, Ignore };

struct Box {
  QString text;  ///< plain text with its line breaks
  QString title = "Hinweis";
  BoxIcon icon = BoxIcon::None;
  BoxButtons buttons = BoxButtons::Ok;
  /// The button that Enter presses; without one the first, and Retry where there are three: it loses nothing.
  std::optional<BoxAnswer> preset = std::nullopt;
};

/// The button of a box that Enter presses.
BoxAnswer presetOf(const Box& box);

struct FontChoice {
  QString font;    ///< "name;size;bold;italic;underline;strikethrough", flags "-1" or "0"
  quint32 colour;  ///< blue-green-red order
};

/// The one door. What comes up while work runs that nobody called (platform/runtime/unasked.h) says what it
/// speaks of and takes no key that may be meant for something else.
class Dialogs {
 public:
  virtual ~Dialogs() = default;

  /// Closing a box by Esc answers Cancel, No or Abort where it has one, else Ok.
  virtual BoxAnswer show(const Box& box) = 0;
  /// Empty when cancelled.
  virtual QString input(const QString& prompt, const QString& title = {}, const QString& preset = {}) = 0;
  /// Each chooser gives the empty text when cancelled. Filters: "Text (*.txt)|*.txt|Alle Dateien (*.*)|*.*".
  virtual QString openFile(const QString& filter, const QString& start = {}) = 0;
  /// A file to be written; the dialog asks whether an existing one may be replaced.
  virtual QString saveFile(const QString& filter, const QString& start = {}) = 0;
  virtual QString chooseFolder(const QString& prompt, const QString& start = {}) = 0;
  virtual std::optional<FontChoice> chooseFont(const FontChoice& current) = 0;
  /// The printer set-up; `current` is shown first. Nothing when cancelled. What was chosen is the caller's to
  /// keep.
  virtual std::optional<PrinterSetup> printerSetup(const PrinterSetup& current) = 0;

  /// Convenience: a question with Yes and No, title "Hinweis"; true for Yes.
  bool confirm(const QString& text, BoxIcon icon = BoxIcon::Question, std::optional<BoxAnswer> preset = {});
  void note(const QString& text, BoxIcon icon = BoxIcon::None, const QString& title = "Hinweis");
};

/// The program-wide error report: exclamation box, abort/retry/ignore, title `sTitel` or "Fehler",
/// "Fehler: " + number + " - " + description + LF + `sText`.
ErrorAnswer FehlerAnzeigen(Dialogs& dialogs, const Error& error, const QString& sText,
                           const QString& sTitel = {});

/// The same as a report for reported(); `withWord` false leaves out "Fehler: " at the start.
ErrorReport fehlerReport(Dialogs& dialogs, const QString& sText, const QString& sTitel = {},
                         bool withWord = true);

/// The same report for what must not get lost: after abort or ignore it asks whether it is to be given up,
/// and shows the failure again when it isn't; once given up, it isn't asked again. `loss` says in plain words
/// what is lost by that answer; an empty text is nothing.
ErrorReport reportOfALoss(Dialogs& dialogs, ErrorReport report, std::function<QString(ErrorAnswer)> loss);

}  // namespace qk
