#ifndef EVALUATION_H
#define EVALUATION_H

#include <QByteArray>
#include <QVariant>

#include "common/checks.h"
#include "common/diagnosis.h"

class IDataPeer;

/// A line for a terminal, which control characters would change.
QString Escaped(const QString& text);

/// A statement with its value, and with all that there is to say about it.
class Evaluation
{
public:
    /// Whose names and checks \a options are. \a line is the number of the statement's line in the input, or 0.
    Evaluation(const QString& statement, IDataPeer* dataPeer, const CheckOptions& options, int line = 0);

    /// Whether the parser could make something of the whole statement, or of its front part at least.
    bool Parses() const { return m_parses; }

    /// The value and its type in one line.
    QByteArray ValueToText() const;
    /// A line for each token: its offset, kind and text.
    QByteArray TokensToText() const;
    /// Errors, warnings and what the checker knows of traps, with an excerpt where the place is known.
    QByteArray MessagesToText() const;
    /// Everything in one line.
    QByteArray ToJson(bool withTokens) const;

private:
    void CheckPaths();
    void FindTraps(const CheckOptions& options);
    QString TypeName() const;

    const QString m_statement;
    const Diagnosis m_diagnosis;
    QVector<Diagnosis::Message> m_messages;
    QVector<StatementFinding> m_traps;
    const int m_line;
    QStringList m_printed; ///< What the library prints during the evaluation.
    QVariant m_value;
    bool m_parses;
};

#endif
