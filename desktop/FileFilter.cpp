#include "desktop/FileFilter.h"

#include "desktop/DesktopTexts.h"
#include "desktop/Strings.h"

namespace Desktop {
namespace {

// The names that forms give are English. The name of a single pattern is replaced by one in the user's
// language.
QString NameOf(const QString& given, const QString& pattern) {
  QString own;
  if (pattern == "*") own = ToQt(DesktopText(TextNumber::kAllFiles));
  if (pattern.startsWith("*.") && pattern.count(QChar('*')) == 1)
    own = ToQt(DesktopText(TextNumber::kFilesOfKind, {FromQt(pattern.mid(2))}));
  return own.isEmpty() ? given.section('(', 0, 0).trimmed() : own;
}

}  // namespace

QStringList NameFilters(const QString& pairs) {
  const QStringList parts = pairs.split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString pattern = parts[i + 1] == "*.*" ? "*" : parts[i + 1];
    filters << NameOf(parts[i], pattern) + " (" + pattern.replace(';', ' ') + ")";
  }
  return filters;
}

}  // namespace Desktop
