// What every test pulls in.
#pragma once
#include <QtCore/QDateTime>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtCore/QVariant>
#include <QtTest/QTest>
#include <functional>
#include <memory>
#include <optional>
#include <vector>
