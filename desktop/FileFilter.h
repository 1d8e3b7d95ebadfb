// FileFilter: the patterns of an open-file dialog.
#pragma once

#include <QStringList>

namespace Desktop {

// Pairs of a name and a pattern ("*.TVS", or several with ";"), all separated by "|", as Qt's name filters in
// the user's language. "*.*" means every file. A part without its partner is left out. Any thread.
QStringList NameFilters(const QString& pairs);

}  // namespace Desktop
