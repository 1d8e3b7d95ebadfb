// FileFilter: the patterns of an open-file dialog.
#pragma once

#include <QStringList>

namespace Desktop {

// Pairs of a name and a pattern, all separated by "|", as Qt's name filters. "*.*" means every file.
QStringList NameFilters(const QString& pairs);

}  // namespace Desktop
