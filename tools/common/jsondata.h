#ifndef JSONDATA_H
#define JSONDATA_H

#include <QHash>
#include <QString>
#include <QVariant>
#include <QVector>

#include <optional>

#include "DataLayer/variableidentifier.h"
#include "common/valuegenerator.h"

class IDataPeer;
class QJsonValue;

/// A data variable with its value.
struct Variable
{
    QString package;
    QString name;
    QVariant value;                            ///< Invalid for JSON's null.
    std::optional<ValueGenerator> generator{}; ///< What moves it; \a value is what it starts with.
};

/// The variables of a DATA.json: an object of packages, each an object of names with their values.
///
///     { "Engine": { "rpm": 900, "names": ["red", "green"], "mode": { "ordered": true } } }
///
/// Whole numbers become int, or qlonglong where an int is too small, other numbers double, lists
/// QVariantList and objects QVariantMap. The variables keep the order of the file. In the place of a value a
/// generator may stand.
class JsonData
{
public:
    /// Takes the variables of a file in the place of those held. False, with nothing changed and the
    /// reason in \a error, when the file cannot be read or is no such data.
    bool Read(const QString& fileName, QString* error);
    /// Writes all variables. False, with the file as it was, when that cannot be done.
    bool Write(const QString& fileName, QString* error) const;

    /// As Read(), from a text; \a source names it in the error.
    bool Parse(const QByteArray& text, const QString& source, QString* error);
    /// What Write() writes.
    QByteArray ToJson() const;

    /// Sets one variable from «[PACKAGE:]NAME=JSON»; without a package it is \a defaultPackage. A text
    /// stands in quotes, as JSON wants it.
    bool Assign(const QString& assignment, const QString& defaultPackage, QString* error);

    /// Sets the variable, which comes last when it is new.
    void Set(const Variable& variable);
    /// Null when there is none; valid until the next change.
    const Variable* Find(const QString& package, const QString& name) const;
    const QVector<Variable>& Variables() const { return m_variables; }

    /// Writes all variables into the data layer, for the statements to read.
    void Publish(IDataPeer* dataPeer) const;

    /// A value in one line of JSON; "null" for what is invalid.
    static QByteArray ValueToJson(const QVariant& value);
    /// The value of a text in JSON, of any kind. False, with the reason in \a error, when it is none.
    static bool ValueFromJson(const QByteArray& text, QVariant* value, QString* error);
    /// The value of a part of a document, with the types of the variables.
    static QVariant ValueFromJson(const QJsonValue& value);

private:
    QVector<Variable> m_variables;
    QHash<VariableIdentifier, int> m_index; ///< Positions in m_variables.
};

#endif
