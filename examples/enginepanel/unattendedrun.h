#ifndef UNATTENDEDRUN_H
#define UNATTENDEDRUN_H

#include <QStringList>
#include <QVariant>
#include <QVector>

class EnginePanel;
class QWidget;

/// Stands in for the person at the panel: changes and saves settings, takes a picture, prints what
/// the bound properties hold, and tells on stderr what is wrong, problems of the binding included.
class UnattendedRun
{
public:
    /// With an empty file name there is no picture.
    explicit UnattendedRun(const QString& picture) : m_picture(picture) {}

    /// Runs the event loop that many seconds. Returns the exit code: 1 when anything was wrong.
    int Run(EnginePanel* panel, double seconds);

private:
    void CheckProblems();
    void RememberValues();
    void ChangeSettings();
    void ClickLock();
    void CheckLocked(bool locked);
    void CheckReaders();
    void CheckValuesHaveChanged();
    void SavePicture();
    void PrintValues() const;

    void Expect(const QString& what, const QVariant& value, const QVariant& expected);
    void Complain(const QString& problem);

    const QString m_picture;
    EnginePanel* m_panel = nullptr;
    QVector<QVariant> m_firstValues; ///< Of the panel's bound properties, in their order.
    QStringList m_problems;
};

#endif
