// Which programs the desktop has for the files of others.
#pragma once

#include <QString>

namespace kestrane {

bool hasProgramFor(const QString& mimeType); // some installed program says that it opens such files

} // namespace kestrane
