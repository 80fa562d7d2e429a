#include "installedprogram.h"

#include <QStandardPaths>

QString InstalledProgram::Find(const QString& name)
{
    const QString beside = QStandardPaths::findExecutable(name, {DECLARATIONDESIGNER_PROGRAMS});
    return beside.isEmpty() ? QStandardPaths::findExecutable(name) : beside;
}
