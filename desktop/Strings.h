// Strings: the system's texts as Qt's, and back. Both are UTF-16, so the code units are copied as they are.
#pragma once

#include <QString>

#include "platform/Text.h"

namespace Desktop {

inline QString ToQt(Platform::StringView text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

inline Platform::String FromQt(const QString& text) {
  return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

}  // namespace Desktop
