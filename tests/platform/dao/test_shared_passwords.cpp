// The passwords of a run: asked once a server and user, again after a wrong one, and never in another thread.
#include <QtTest>
#include <thread>

#include "platform/dao/shared_passwords.h"

using namespace qk::dao;

namespace {

using Password = std::optional<QString>;

const ServerAddress kPokal{{{"standserver"}}, "pokal", "buero"};
const ServerAddress kLiga{{{"standserver"}}, "liga", "buero"};

}  // namespace

class TestSharedPasswords : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { asked_.clear(); }

  void withoutOneNobodyIsAsked() { QVERIFY(!SharedPasswords::supplied({}).askPassword); }

  void oneAnswerServesEveryConnection() {
    const SharedPasswords passwords(question());
    for (int connection = 0; connection < 7; ++connection)
      QCOMPARE(SharedPasswords::supplied({}).askPassword(kPokal, false), Password("pokal1"));
    QCOMPARE(SharedPasswords::supplied({}).askPassword(kLiga, false), Password("liga2"));
    QCOMPARE(asked_, (QStringList{"pokal", "liga"}));
  }

  void aWrongOneIsAskedAgainAndForgotten() {
    const SharedPasswords passwords(question());
    const auto ask = SharedPasswords::supplied({}).askPassword;
    QCOMPARE(ask(kPokal, false), Password("pokal1"));
    QCOMPARE(ask(kPokal, true), Password("pokal2"));
    QCOMPARE(ask(kPokal, false), Password("pokal2"));
    QCOMPARE(asked_, (QStringList{"pokal", "pokal wieder"}));
  }

  void givingUpIsNotRemembered() {
    const SharedPasswords passwords([this](const ServerAddress& address, bool) {
      asked_ << address.database;
      return Password();
    });
    const auto ask = SharedPasswords::supplied({}).askPassword;
    QCOMPARE(ask(kPokal, false), Password());
    QCOMPARE(ask(kPokal, false), Password());
    QCOMPARE(asked_.size(), 2);
  }

  void anotherThreadGetsWhatIsKnownAndAsksNobody() {
    const SharedPasswords passwords(question());
    const auto ask = SharedPasswords::supplied({}).askPassword;
    ask(kPokal, false);
    Password known, unknown;
    std::thread([&] {
      known = ask(kPokal, false);
      unknown = ask(kLiga, false);
    }).join();
    QCOMPARE(known, Password("pokal1"));
    QCOMPARE(unknown, Password());
    QCOMPARE(asked_, QStringList{"pokal"});
  }

  void aQuestionOfItsOwnComesFirst() {
    const SharedPasswords passwords(question());
    OpenOptions options;
    options.askPassword = [](const ServerAddress&, bool) { return Password("eigenes"); };
    QCOMPARE(SharedPasswords::supplied(options).askPassword(kPokal, false), Password("eigenes"));
    QVERIFY(asked_.isEmpty());
  }

  void itEndsWithItsObject() {
    std::function<Password(const ServerAddress&, bool)> left;
    {
      const SharedPasswords passwords(question());
      left = SharedPasswords::supplied({}).askPassword;
      left(kPokal, false);
    }
    QCOMPARE(left(kPokal, false), Password());
    QVERIFY(!SharedPasswords::supplied({}).askPassword);
  }

 private:
  /// Answers with the database's name and the count of questions so far.
  SharedPasswords::Ask question() {
    return [this](const ServerAddress& address, bool again) {
      asked_ << address.database + (again ? " wieder" : "");
      return Password(address.database + QString::number(asked_.size()));
    };
  }
  QStringList asked_;
};

QTEST_GUILESS_MAIN(TestSharedPasswords)
#include "test_shared_passwords.moc"
