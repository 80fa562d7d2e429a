#ifndef INSTALLEDPROGRAM_H
#define INSTALLEDPROGRAM_H

#include <QString>

/// The programs that come with the plugin.
namespace InstalledProgram {

/// The path of the one that was installed with this, or else of any; empty when there is none.
QString Find(const QString& name);

} // namespace InstalledProgram

#endif
