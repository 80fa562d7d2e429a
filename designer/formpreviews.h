#ifndef FORMPREVIEWS_H
#define FORMPREVIEWS_H

#include <QHash>
#include <QObject>

class FormPreview;
class FormWatcher;
class QDesignerFormWindowInterface;

/// The previews of all forms, one of each at most. They follow the edits, and go with their forms.
class FormPreviews : public QObject
{
    Q_OBJECT

public:
    explicit FormPreviews(FormWatcher* watcher);
    ~FormPreviews() override;

    /// Of the form that is edited.
    void Start();

signals:
    void Failed(const QString& reason);

private:
    void Follow();
    void End(QDesignerFormWindowInterface* form);

    FormWatcher* const m_watcher;
    QHash<QDesignerFormWindowInterface*, FormPreview*> m_previews;
};

#endif
