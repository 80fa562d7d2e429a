#ifndef STATEMENTCOMPILER_H
#define STATEMENTCOMPILER_H

#include <QString>

#include <vector>

#include "DeclarationForms/compiledstatement.h"
#include "DeclarationForms/formproblem.h"
#include "DeclarationHandler/Tokens/token.h"
#include "DeclarationHandler/parser.h"
#include "DeclarationHandler/parserlistener.h"

class IDataPeer;
class WatchedVariable;
class WatchedVariables;

/// Makes trees out of statements, with a form's own nodes for their references.
class StatementCompiler : private ParserListener
{
public:
    /// Why there is no tree.
    struct Fault
    {
        FormProblem::Kind kind;
        QString reason;
        TextPlace place;
    };

    explicit StatementCompiler(WatchedVariables* variables);

    /// False, with the fault, for a statement with an error. Property references lead nowhere yet.
    bool Compile(const QString& statement, IDataPeer* peer, const QString& package, bool readOnly,
                 CompiledStatement* compiled, Fault* fault);

    /// Splits a reference with a widget path into the names of the path and that of the property.
    static void SplitReference(const QString& reference, QStringList* path, QString* property);

private:
    Q_DISABLE_COPY(StatementCompiler)

    struct ReadToken
    {
        Token::TOKEN_TYPE type;
        TextPlace place;
    };

    void OnToken(const Token& token, const TextPlace& place) override;
    IExpression* CreateReference(const VariableToken& token, const TextPlace& place, bool readOnly) override;
    void OnNode(const ParsedNode& node) override;
    void OnReport(const ParserReport& report) override;

    TextPlace PlaceOfIndex(int bracket) const;

    WatchedVariables* const m_variables;
    Parser m_parser;
    std::vector<ReadToken> m_tokens;
    std::vector<WatchedVariable*> m_found;
    std::vector<FormVariable*> m_variableNodes;
    std::vector<FormProperty*> m_propertyNodes;
    CompiledStatement* m_compiled = nullptr;
    Fault* m_fault = nullptr;
    IDataPeer* m_peer = nullptr;
    QString m_package;
    bool m_hasError = false;
    bool m_hasLeftOver = false;
};

#endif
