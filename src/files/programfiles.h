#pragma once
// The files that come with the program, found both where it is installed and in its build folder.
#include <QString>

namespace zq::files {

// The user guide (guide.md): in the documents folder of the installation the program runs from, else
// in the source tree of the build it comes from. Empty when neither is there.
QString UserGuidePath();

// The same search from a program folder, given the installed guide's path relative to it and the
// source tree's guide.
QString UserGuidePathFrom(const QString& programDir, const QString& installedRelative,
                          const QString& sourceGuide);

} // namespace zq::files
