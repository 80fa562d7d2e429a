#ifndef WIDGETPATHS_H
#define WIDGETPATHS_H

#include <QStringList>

#include "Common/objectindex.h"

class QObject;

/// Follows widget paths of a form.
class WidgetPaths
{
public:
    /// The object at the end of the path; null where it leads nowhere. \a widget is the one that the statement is
    /// bound on; \a form may be null.
    QObject* Find(const QStringList& path, QObject* widget, QObject* form);

    /// Forgets what was searched.
    void Clear() { m_index.Clear(); }

private:
    ObjectIndex m_index;
};

#endif
