// Dialogs without windows, for tests of logic: every question is answered from the expectations.
#pragma once

#include "tests/support/expectations.h"

namespace qk::test {

class ScriptedDialogs : public Dialogs, public Expectations {
 public:
  using Expectations::Expectations;

  BoxAnswer show(const Box& box) override;
  QString input(const QString& prompt, const QString& title, const QString& preset) override;
  QString openFile(const QString& filter, const QString& start) override;
  QString saveFile(const QString& filter, const QString& start) override;
  QString chooseFolder(const QString& prompt, const QString& start) override;
  std::optional<FontChoice> chooseFont(const FontChoice& current) override;
  std::optional<PrinterSetup> printerSetup(const PrinterSetup& current) override;

 private:
  QString reply(Asked kind, const QString& text, const QString& title);
};

}  // namespace qk::test
