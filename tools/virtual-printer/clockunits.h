#pragma once

#include <QString>
#include <optional>

/// The clock of virtual printers counts microseconds.
namespace clockunits {

constexpr qint64 perSecond = 1'000'000;
constexpr qint64 perMillisecond = 1000;

/// Reads seconds, such as "1.5". Nothing for what is no such number, or more than 30 years.
std::optional<qint64> ofSeconds(const QString &text);

}  // namespace clockunits
