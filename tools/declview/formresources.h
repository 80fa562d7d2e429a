#ifndef FORMRESOURCES_H
#define FORMRESOURCES_H

#include <QByteArray>
#include <QVector>

class QDir;
class QString;

/// The resource files that a form includes, compiled with Qt's rcc and registered under the paths that
/// the form uses. What cannot be had is told on the debug stream.
class FormResources
{
public:
    FormResources() = default;
    ~FormResources();

    /// Those of the form with that text take the place of the ones before. \a folder is the form's.
    void Load(const QByteArray& form, const QDir& folder);

private:
    Q_DISABLE_COPY(FormResources)

    void Add(const QString& fileName);
    void Clear();

    QVector<QByteArray> m_registered; ///< The data are used in place, so they stay here.
};

#endif
