#include "desktop/FileFilter.h"

namespace Desktop {

QStringList NameFilters(const QString& pairs) {
  const QStringList parts = pairs.split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString name = parts[i].section('(', 0, 0).trimmed();
    QString pattern = parts[i + 1];
    if (pattern == QLatin1String("*.*")) pattern = "*";
    filters << name + " (" + pattern.replace(';', ' ') + ")";
  }
  return filters;
}

}  // namespace Desktop
