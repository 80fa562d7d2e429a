#include "common/checksettings.h"

#include "common/projectfile.h"

bool CheckSettings::ReadProject(const QString& project, QString* error)
{
    if (project.isEmpty())
        return true;
    ProjectFile file;
    const bool isRead = file.Read(project, error);
    if (isRead)
        SetProject(file);
    return isRead;
}

void CheckSettings::SetProject(const ProjectFile& file)
{
    m_options.package = file.package;
    m_options.usesHandler = file.usesHandler;
    m_options.disabled = file.disabled;
    m_options.severities = file.severities;
    m_options.hostVariables = file.hostVariables;
    m_options.hostProperties = file.hostProperties;
    m_dataFile = file.data;
}

bool CheckSettings::ReadData(QString* error)
{
    JsonData data;
    if (m_dataFile.isEmpty())
        return true;
    if (!data.Read(m_dataFile, error))
        return false;
    SetData(data);
    return true;
}

void CheckSettings::SetData(const JsonData& data)
{
    m_data = data;
    m_known.reset(new KnownVariables(m_data));
    m_options.variables = m_known.data();
}
