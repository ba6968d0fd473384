// Tells which kinds of files the desktop has a program for.
#pragma once

#include <QString>

namespace kestrane {

bool hasProgramFor(const QString& mimeType); // whether an installed program says that it opens such files

} // namespace kestrane
