// What nearly every file without a window pulls in anyway.
#pragma once
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <vector>
