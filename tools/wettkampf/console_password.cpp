#include "tools/wettkampf/console_password.h"

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <termios.h>
#include <unistd.h>
#endif

namespace qk {

namespace {

#ifdef Q_OS_WIN

bool isTerminal() {
  return _isatty(_fileno(stdin)) != 0;
}

/// The terminal shows nothing of what is typed while one lives.
class Silence {
 public:
  Silence() {
    GetConsoleMode(input_, &before_);
    SetConsoleMode(input_, before_ & ~static_cast<DWORD>(ENABLE_ECHO_INPUT));
  }
  ~Silence() { SetConsoleMode(input_, before_); }

 private:
  HANDLE input_ = GetStdHandle(STD_INPUT_HANDLE);
  DWORD before_ = 0;
};

#else

bool isTerminal() {
  return isatty(STDIN_FILENO) != 0;
}

/// The terminal shows nothing of what is typed while one lives.
class Silence {
 public:
  Silence() {
    tcgetattr(STDIN_FILENO, &before_);
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
  }
  ~Silence() { tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_); }

 private:
  termios before_{};
};

#endif

}  // namespace

dao::SharedPasswords::Ask passwordOnTerminal(QTextStream& out) {
  return [&out](const dao::ServerAddress& address, bool again) -> std::optional<QString> {
    if (!isTerminal()) return std::nullopt;
    out << (again ? "Das Passwort war falsch.\n" : "") << "Passwort von " << address.user << " für "
        << placeOf(address) << ": " << Qt::flush;
    QString answer;
    {
      const Silence silence;
      answer = QTextStream(stdin).readLine();
    }
    out << Qt::endl;
    return answer.isEmpty() ? std::nullopt : std::optional(answer);
  };
}

}  // namespace qk
