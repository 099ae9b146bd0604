// Work that no act of the operator called: a tick, a printer, a server. It says so for as long as it runs.
// A box that comes up meanwhile says what it speaks of, and isn't answered by keys meant for something else.
//
//   const Unasked unasked("Station 3");
//
// An event loop in between is the operator's again: who runs one puts the work aside for as long.
#pragma once

#include <QString>
#include <optional>

namespace qk {

class Unasked {
 public:
  explicit Unasked(QString about);
  ~Unasked();
  Unasked(const Unasked&) = delete;
  Unasked& operator=(const Unasked&) = delete;

  /// What the work that runs now speaks of, maybe empty; nothing while an act of the operator runs.
  static std::optional<QString> current();

  class Aside {
   public:
    Aside();
    ~Aside();
    Aside(const Aside&) = delete;
    Aside& operator=(const Aside&) = delete;

   private:
    const Unasked* kept_;
  };

 private:
  QString about_;
  const Unasked* outer_;
};

}  // namespace qk
