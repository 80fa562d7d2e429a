#ifndef PARSERLISTENER_H
#define PARSERLISTENER_H

#include <QString>

#include "Common/textplace.h"
#include "DeclarationHandler/declarationhandler_export.h"

class IExpression;
class Token;
class VariableToken;

/// A node that the parser has built.
struct ParsedNode
{
    /// What it is made of.
    enum Kind
    {
        Operand,     ///< A literal or reference.
        Binary,      ///< Left and right are the operands.
        Prefix,      ///< Left is the operand.
        Parentheses, ///< Left is what they enclose.
        Subscript,   ///< Left is the collection, right the index.
        Member       ///< Left is the object, right the member.
    };

    Kind kind; ///< What it is made of.
    int token; ///< The operand's own, the operator or the opening bracket; counted from 0 as they were told.
    const IExpression* node;  ///< The parser's or its parent's.
    const IExpression* left;  ///< Null for operands.
    const IExpression* right; ///< Null where there is one child or none.
};

/// What the parser puts into its record, and where.
struct ParserReport
{
    /// Why it is reported.
    enum Cause
    {
        UnrecognisedText, ///< No token starts there.
        MissingClosing,   ///< The statement ends where a bracket should close.
        WrongClosing,     ///< Something else stands where a bracket should close.
        TooDeep,          ///< The statement as a whole.
        EmptyStatement,   ///< It has no tokens.
        OperandWanted,    ///< What stands there starts no operand.
        OperatorWanted,   ///< What stands there cannot follow an operand.
        UnknownObject,    ///< The widget path leads to no object.
        Consequence,      ///< There is no tree for a reason that was told before.
        LeftOver          ///< What stands there is behind a complete expression.
    };

    Cause cause;     ///< Why it is reported.
    bool isError;    ///< Else a warning.
    QString message; ///< As in the record.
    TextPlace place; ///< Of length 0 at the end of the statement.
};

/// Told by a Parser what it reads, builds and reports, while it does so. Must not call the parser.
class DECLARATIONHANDLER_EXPORT ParserListener
{
public:
    virtual ~ParserListener();

    /// A token, in the order of the statement. It stays the parser's, until the next Tokenize().
    virtual void OnToken(const Token& token, const TextPlace& place);

    /// Makes the node of a reference in the place of Token::CreateExpression(); the parser owns it. A node
    /// made with \a readOnly must refuse to be written. Null, which this answers, leaves it to the token.
    virtual IExpression* CreateReference(const VariableToken& token, const TextPlace& place, bool readOnly);

    /// A node, after its children. Nodes that have been told may be deleted again without a word, and a
    /// later node may have their address; the tree is what the root reaches in the end.
    virtual void OnNode(const ParsedNode& node);

    /// A message, in the order of the record.
    virtual void OnReport(const ParserReport& report);
};

#endif
