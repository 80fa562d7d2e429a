#include "DeclarationHandler/Tokens/formscope.h"

#include <QObject>

#include "Common/objectindex.h"
#include "DeclarationHandler/Tokens/sharedtexts.h"
#include "DeclarationHandler/Tokens/textview.h"

namespace {

thread_local const FormScope* innermost = nullptr;

} // namespace

FormScope::FormScope(SharedTexts* texts, ObjectIndex* objects) : m_texts(texts), m_objects(objects), m_outer(innermost)
{
    innermost = this;
}

FormScope::~FormScope()
{
    innermost = m_outer;
}

QString FormScope::StartOf(const QString& text, int length)
{
    return innermost ? innermost->m_texts->ShareStartOf(text, length) : TextView::StartOf(text, length);
}

QString FormScope::Shared(const QString& text)
{
    return innermost ? innermost->m_texts->Share(text) : text;
}

QObject* FormScope::FindChild(QObject* parent, const QString& name)
{
    return innermost ? innermost->m_objects->FindChild(parent, name) : parent->findChild<QObject*>(name);
}
