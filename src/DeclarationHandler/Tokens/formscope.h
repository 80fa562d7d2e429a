#ifndef FORMSCOPE_H
#define FORMSCOPE_H

#include <QString>

class ObjectIndex;
class QObject;
class SharedTexts;

/// For as long as this lives, the tokens that this thread reads are those of one form: they share the texts
/// of names and the form's objects by name. Tokens are recognised and turned into nodes through functions
/// that know the statement and nothing around it, so that they cannot be handed this; hence it is found by
/// the thread. Scopes nest.
class FormScope
{
public:
    /// Both stay the caller's.
    FormScope(SharedTexts* texts, ObjectIndex* objects);
    ~FormScope();

    /// A copy of the first \a length characters that shares nothing with \a text; that of the form in a scope.
    static QString StartOf(const QString& text, int length);

    /// \a text itself; in a scope, the equal one of the form.
    static QString Shared(const QString& text);

    /// As QObject::findChild(); in a scope, by the index of the form.
    static QObject* FindChild(QObject* parent, const QString& name);

private:
    Q_DISABLE_COPY(FormScope)

    SharedTexts* const m_texts;
    ObjectIndex* const m_objects;
    const FormScope* const m_outer;
};

#endif
