#include "formwatcher.h"

#include <QDesignerFormEditorInterface>
#include <QDesignerFormWindowInterface>
#include <QDesignerFormWindowManagerInterface>
#include <QDesignerIntegrationInterface>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

/// In milliseconds.
const int LeastDelay = 20;
/// In milliseconds, after which what was typed is read as Designer has it.
const int TypingPause = 1000;

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
    if (IsCurrent())
        m_timer.start(int(qMax<qint64>(LeastDelay, m_duration)));
    m_isKnown = false;
}

void FormWatcher::StartTyping()
{
    m_canType = IsCurrent();
}

void FormWatcher::TakeTyped(const QObject* object, const QString& property, const QString& text)
{
    if (!m_canType || !Replace(object, property, text))
        return;
    m_isKnown = true;
    m_timer.start(TypingPause);
    emit Read();
}

/// False where the place is not there yet, or goes.
bool FormWatcher::Replace(const QObject* object, const QString& property, const QString& text)
{
    const auto typed = std::find_if(m_statements.begin(), m_statements.end(),
                                    [&](const FormStatement& statement) { return statement.IsOf(object, property); });
    if (typed == m_statements.end() || typed->text.isEmpty() || text.isEmpty())
        return false;
    QString written;
    QXmlStreamWriter(&written).writeCharacters(text);
    const TextPlace place = typed->source;
    m_content.replace(place.offset, place.length, written);
    typed->text = text;
    typed->source.length = int(written.size());
    for (FormStatement& statement : m_statements) {
        if (statement.source.offset > place.offset)
            statement.source.offset += int(written.size()) - place.length;
    }
    return true;
}

void FormWatcher::ReadForm()
{
    m_timer.stop();
    m_isKnown = false;
    QElapsedTimer time;
    time.start();
    const bool isThere = m_form && m_form->mainContainer();
    m_content = isThere ? m_form->contents() : QString();
    m_statements = isThere ? FormStatements::Read(m_form, m_content) : QVector<FormStatement>();
    m_duration = time.elapsed();
    emit Read();
}
