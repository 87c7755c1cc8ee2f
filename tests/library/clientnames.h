#pragma once

#include <QStringList>

/// What a client has of its own under names of the library; kept apart, as no file can see both.
namespace clientnames {

/// What of it was used, in order.
QStringList &used();
/// Uses each once, as the client itself would.
void useAll();

}  // namespace clientnames
