#ifndef STATEMENTPARTS_H
#define STATEMENTPARTS_H

#include <QString>
#include <QVariant>
#include <QVector>

class IDataPeer;
class QObject;

/// A part of a statement that has a value, and that value at present.
struct StatementPart
{
    int level; ///< How many parts it lies in.
    QString text;
    QVariant value;
    QString problem; ///< Why there is no value, where an index or key is to blame; else empty.
};

/// The statement and what it is made of, each part before those in it; literals and parentheses are left out, and
/// what comes after the first 200. Nothing when it cannot be read. \a object is whose property is bound,
/// \a form where widget paths start, \a data where the variables live, null for nowhere.
QVector<StatementPart> EvaluateParts(const QString& statement, QObject* object, QObject* form,
                                     const QString& defaultPackage, IDataPeer* data);

#endif
