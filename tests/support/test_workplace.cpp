#include "tests/support/test_workplace.h"

#include <QDir>

namespace qk::test {

/// Sets environment variables and puts back what stood there.
class TestWorkplace::Environment {
 public:
  void set(const char* name, const QString& value) {
    before_.push_back({name, qgetenv(name), qEnvironmentVariableIsSet(name)});
    qputenv(name, value.toUtf8());
  }
  ~Environment() {
    for (const Variable& variable : before_) {
      if (variable.wasSet)
        qputenv(variable.name, variable.value);
      else
        qunsetenv(variable.name);
    }
  }

 private:
  struct Variable {
    const char* name;
    QByteArray value;
    bool wasSet;
  };
  std::vector<Variable> before_;
};

TestWorkplace::TestWorkplace(Complain complain)
    : folder_(QDir::tempPath() + "/qkXXXXXX"),
      environment_(std::make_unique<Environment>()),
      messages(complain),
      random(complain),
      waits(clock),
      settings(folder_.path() + "/einstellungen"),
      dialogs(complain) {
  if (!folder_.isValid() || folder_.path().contains(u'.'))
    complain("no folder without a dot: " + folder_.path());
  environment_->set("QK_EINSTELLUNGEN", settings.filePath());
  environment_->set("QK_DOKUMENTE", path("dokumente"));
  environment_->set("QK_PROGRAMM", path("programm"));
  environment_->set("temp", path("temp"));
  QDir(path()).mkdir("programm");
  QDir(path()).mkdir("temp");
}

TestWorkplace::~TestWorkplace() = default;

QString TestWorkplace::path(const QString& name) const {
  return name.isEmpty() ? folder_.path() : folder_.path() + "/" + name;
}

}  // namespace qk::test
