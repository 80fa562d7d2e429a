#ifndef STATEMENTHIGHLIGHTER_H
#define STATEMENTHIGHLIGHTER_H

#include <QSyntaxHighlighter>

#include "common/statementtokens.h"

/// Colours a document that holds one statement.
class StatementHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

    /// The colours are legible on a dark background.
    void SetDark(bool isDark);
    /// Those of the document as it is now.
    const StatementTokens& Tokens();

protected:
    void highlightBlock(const QString& text) override;

private:
    QTextCharFormat FormatOf(const StatementToken& token) const;

    bool m_isDark = false;
    QString m_text; ///< What the tokens are of.
    StatementTokens m_tokens;
};

#endif
