#include "formpreviews.h"

#include <QDesignerFormWindowInterface>

#include "formpreview.h"
#include "formwatcher.h"

FormPreviews::FormPreviews(FormWatcher* watcher) : m_watcher(watcher)
{
    connect(watcher, &FormWatcher::Read, this, &FormPreviews::Follow);
}

FormPreviews::~FormPreviews()
{
    qDeleteAll(m_previews);
}

void FormPreviews::Start()
{
    QDesignerFormWindowInterface* const form = m_watcher->Form();
    if (!form || m_previews.contains(form))
        return;
    m_watcher->ReadNow();
    auto* const preview = new FormPreview(m_watcher->FileName());
    m_previews.insert(form, preview);
    connect(form, &QObject::destroyed, preview, [this, form] { End(form); });
    connect(preview, &FormPreview::Ended, this, [this, form](const QString& reason) {
        End(form);
        if (!reason.isEmpty())
            emit Failed(reason);
    });
    preview->Start(m_watcher->Content().toUtf8());
}

void FormPreviews::Follow()
{
    if (FormPreview* const preview = m_previews.value(m_watcher->Form()))
        preview->Update(m_watcher->Content().toUtf8());
}

void FormPreviews::End(QDesignerFormWindowInterface* form)
{
    if (FormPreview* const preview = m_previews.take(form))
        preview->deleteLater();
}
