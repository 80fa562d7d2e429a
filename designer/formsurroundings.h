#ifndef FORMSURROUNDINGS_H
#define FORMSURROUNDINGS_H

#include <QDateTime>
#include <QPointer>

#include "common/jsondata.h"
#include "edit/statementsurroundings.h"

class FormWatcher;

/// What a statement of the form that is edited can read: its objects, and the variables of the project's data.
class FormSurroundings : public StatementSurroundings
{
public:
    /// The watcher outlives this.
    explicit FormSurroundings(const FormWatcher* watcher) : m_watcher(watcher) {}

    /// Whose statement it is.
    void SetObject(QObject* object) { m_object = object; }

    QStringList Paths() const override;
    QStringList Properties(const QString& path) const override;
    QStringList Variables() const override;
    QString Describe(const Reference& reference) const override;

private:
    QObject* Find(const QStringList& path) const;
    void ReadData() const;

    const FormWatcher* const m_watcher;
    QPointer<QObject> m_object;

    mutable QString m_package;
    mutable QString m_dataFile;
    mutable QDateTime m_dataTime; ///< Of the data that were read.
    mutable JsonData m_data;
};

#endif
