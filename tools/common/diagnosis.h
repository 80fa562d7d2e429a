#ifndef DIAGNOSIS_H
#define DIAGNOSIS_H

#include <QStringList>

#include "common/statementtree.h"

/// What the library's parser says about a statement, and where.
class Diagnosis
{
public:
    struct Message
    {
        QString text;
        QString detail; ///< What the parser's message leaves open, or empty.
        TextPlace place;
        bool isError;

        QString Whole() const { return detail.isEmpty() ? text : text + ' ' + detail; }
    };

    explicit Diagnosis(const QString& statement);

    const QString& Statement() const { return m_statement; }
    const StatementTokens& Tokens() const { return m_tree.Tokens(); }
    const StatementTree& Tree() const { return m_tree; }

    /// Whether the parser makes a node of the statement, or of its front part.
    bool HasExpression() const { return m_tree.Root() >= 0; }
    /// Whether the parser reports an error; left-over tokens alone are none.
    bool HasError() const { return m_hasError; }
    /// In the order of the parser; the first one tells most.
    const QVector<Message>& Messages() const { return m_messages; }

private:
    QString m_statement;
    StatementTree m_tree;
    bool m_hasError;
    QVector<Message> m_messages;
};

/// Two lines for a terminal: the line of \a text that holds the place, and marks under the place. Both
/// are indented. Of a long line only what surrounds the place is shown. The label stands before the first line.
QString Excerpt(const QString& text, const TextPlace& place, const QString& label = QString());

#endif
