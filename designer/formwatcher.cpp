#include "formwatcher.h"

#include <QDesignerFormEditorInterface>
#include <QDesignerFormWindowInterface>
#include <QDesignerFormWindowManagerInterface>
#include <QDesignerIntegrationInterface>

namespace {

/// In milliseconds.
const int LeastDelay = 20;

} // namespace

FormWatcher::FormWatcher(QDesignerFormEditorInterface* core) : m_core(core)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &FormWatcher::ReadForm);
    const QDesignerFormWindowManagerInterface* const manager = core->formWindowManager();
    connect(manager, &QDesignerFormWindowManagerInterface::activeFormWindowChanged, this, &FormWatcher::SetForm);
    if (core->integration())
        connect(core->integration(), &QDesignerIntegrationInterface::objectNameChanged, this, &FormWatcher::ReadSoon);
    SetForm(manager->activeFormWindow());
}

QDesignerFormWindowInterface* FormWatcher::Form() const
{
    return m_form;
}

QString FormWatcher::FileName() const
{
    return m_form ? m_form->fileName() : QString();
}

void FormWatcher::ReadNow()
{
    if (m_timer.isActive())
        ReadForm();
}

void FormWatcher::SetForm(QDesignerFormWindowInterface* form)
{
    if (form == m_form)
        return;
    if (m_form)
        m_form->disconnect(this);
    m_form = form;
    if (form) {
        connect(form, &QDesignerFormWindowInterface::changed, this, &FormWatcher::ReadSoon);
        connect(form, &QDesignerFormWindowInterface::mainContainerChanged, this, &FormWatcher::ReadSoon);
        connect(form, &QDesignerFormWindowInterface::fileNameChanged, this, &FormWatcher::ReadSoon);
        // Once Designer itself has followed.
        connect(form, &QDesignerFormWindowInterface::selectionChanged, this, &FormWatcher::SelectionChanged,
                Qt::QueuedConnection);
        connect(form, &QObject::destroyed, this, &FormWatcher::ReadSoon);
    }
    ReadSoon();
}

void FormWatcher::ReadSoon()
{
    if (!m_timer.isActive())
        m_timer.start(int(qMax<qint64>(LeastDelay, m_duration)));
}

void FormWatcher::ReadForm()
{
    m_timer.stop();
    QElapsedTimer time;
    time.start();
    const bool isThere = m_form && m_form->mainContainer();
    m_content = isThere ? m_form->contents().toUtf8() : QByteArray();
    m_statements = isThere ? FormStatements::Read(m_form, m_content) : QVector<FormStatement>();
    m_duration = time.elapsed();
    emit Read();
}
