#ifndef EVALUATION_H
#define EVALUATION_H

#include <QByteArray>
#include <QVariant>

#include "common/diagnosis.h"

class IDataPeer;

/// A statement with its value, and with all that there is to say about it.
class Evaluation
{
public:
    Evaluation(const QString& statement, IDataPeer* dataPeer, const QString& defaultPackage);

    /// Whether the parser could make something of the whole statement, or of its front part at least.
    bool Parses() const { return m_parses; }

    /// The value and its type in one line.
    QByteArray ValueToText() const;
    /// A line for each token: its offset, kind and text.
    QByteArray TokensToText() const;
    /// Errors and warnings, with an excerpt where the place is known.
    QByteArray MessagesToText() const;
    /// Everything in one line.
    QByteArray ToJson(bool withTokens) const;

private:
    void CheckPaths();
    QString TypeName() const;

    const QString m_statement;
    const Diagnosis m_diagnosis;
    QVector<Diagnosis::Message> m_messages;
    QStringList m_printed; ///< What the library prints during the evaluation.
    QVariant m_value;
    bool m_parses;
};

#endif
