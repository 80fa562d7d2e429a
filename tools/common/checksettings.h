#ifndef CHECKSETTINGS_H
#define CHECKSETTINGS_H

#include <QScopedPointer>

#include "common/checks.h"
#include "common/jsondata.h"
#include "common/knownvariables.h"

struct ProjectFile;

/// The options that hold for the forms of one project, with the data that they refer to.
class CheckSettings
{
public:
    /// What the project file says, if \a project is the path of one. False with the reason.
    bool ReadProject(const QString& project, QString* error);
    void SetProject(const ProjectFile& file);

    void SetPackage(const QString& package) { m_options.package = package; }
    void SetDataFile(const QString& dataFile) { m_dataFile = dataFile; }
    void UseHandler() { m_options.usesHandler = true; }
    void Disable(const QSet<int>& checks) { m_options.disabled += checks; }

    /// False, with the reason, when there are data that cannot be read.
    bool ReadData(QString* error);
    /// Takes these in the place of a file's.
    void SetData(const JsonData& data);

    /// Valid as long as this object, until the next change.
    const CheckOptions& Options() const { return m_options; }
    QString DataFile() const { return m_dataFile; }

private:
    CheckOptions m_options;
    QString m_dataFile;
    JsonData m_data;
    QScopedPointer<KnownVariables> m_known;
};

#endif
