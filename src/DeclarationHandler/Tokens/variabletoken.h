#ifndef VARIABLETOKEN_H
#define VARIABLETOKEN_H

#include <QStringList>

#include "DeclarationHandler/Tokens/token.h"

/// A reference: a name, with an optional prefix. A prefix whose path starts with "Widget",
/// "TopWidget" or "ParentWidget" makes it a reference to a property of an object; any other names
/// the package of a data variable.
class DECLARATIONHANDLER_EXPORT VariableToken : public Token
{
public:
    /// Takes ownership of the prefix, which may be null, and of the name. \a lexeme covers both.
    VariableToken(const QString& lexeme, Token* package, Token* identifier);
    ~VariableToken() override;

    /// Null also for a prefix without a name behind it.
    static Token* Parse(const QString& text);

    /// The words that a widget path starts with.
    static QStringList GetPathStarts();

    /// The name, without the prefix.
    QString GetVariableName() const;
    /// The text between "@" and ":"; \a defaultPackage when there is no prefix.
    QString GetPackage(const QString& defaultPackage) const;
    /// Whether the reference has a prefix.
    bool HasPackage() const;

    /// The object that a widget path starts from; null when the first element of \a path is none of
    /// the three words. "ParentWidget" is \a topWidget for an object without a parent.
    virtual QObject* GetTopObject(QObject* widget, QObject* topWidget, const QStringList& path) const;
    /// The first object below \a parent, at any depth, that bears the name at \a index; null when there
    /// is none. Advances \a index by one, unless \a parent is null.
    virtual QObject* GetChildObject(QObject* parent, const QStringList& path, int* index) const;
    /// The object that the prefix leads to as a widget path, or null.
    virtual QObject* GetObjectFromPackage(QObject* widget, QObject* topWidget) const;

    /// A node for the data variable or the object's property, which the caller owns. A widget path
    /// that leads to no object gives null and a line on the debug stream.
    IExpression* CreateExpression(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* widget, QObject* topWidget,
                                  const QString& defaultPackage, bool readOnly) const override;

private:
    /// A name without a prefix.
    explicit VariableToken(const QString& name);

    Token* m_package;
    Token* m_identifier; ///< Null also for a name without a prefix, which is the lexeme.
    QString m_name;
    QStringList m_path; ///< The names in the prefix.
};

#endif
