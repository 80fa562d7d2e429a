#ifndef PARSER_H
#define PARSER_H

#include <QPair>
#include <QSet>
#include <QString>
#include <QVector>

#include "DeclarationHandler/Tokens/token.h"
#include "DeclarationHandler/iparser.h"
#include "DeclarationHandler/parsingresult.h"

/// The parser of the statement language, by recursive descent with operator precedence. The source
/// file starts with the grammar.
///
/// A tree may be 1,000 levels high, the root being the first; a statement that needs more is refused
/// with the error "Expression is nested too deeply.", so that no text can exhaust the stack.
class DECLARATIONHANDLER_EXPORT Parser : public IParser
{
public:
    Parser();
    ~Parser() override;

    IParser* NewParser() const override;
    IParsingResult* CopyResult() const override;
    void Reset() override;
    void Tokenize(const QString& statement) override;
    IExpression* Parse(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* widget, QObject* topWidget,
                       const QString& defaultPackage, bool readOnly) override;

    /// The properties of other objects that the statement last given to Parse() reads, each once.
    virtual QSet<QPair<QObject*, QString>> GetReferencedProperties() const;

private:
    Q_DISABLE_COPY(Parser)

    static Token* GetToken(const QString& text);

    // Each reads one production of the grammar from the token at the position on. On success it moves
    // the position past what it read and returns a new node, owned by the caller.
    IExpression* CreateExpression(int* position, int minPrecedence, const QString& defaultPackage, bool readOnly);
    IExpression* CreateOperand(int* position, int minPrecedence, const QString& defaultPackage, bool readOnly);
    IExpression* CreateBinOpExpression(int* position, int precedence, const QString& defaultPackage, bool readOnly,
                                       IExpression* left);
    IExpression* CreateAtomicExpression(int* position, const QString& defaultPackage, bool readOnly);
    IExpression* CreateParenthesisedExpression(int* position, const QString& defaultPackage, bool readOnly);
    IExpression* CreateExistenceExpression(int* position, int minPrecedence, const QString& defaultPackage);
    IExpression* CreateNegatedExpression(int* position, int minPrecedence, const QString& defaultPackage,
                                         bool readOnly);
    IExpression* CreatePrefixOperand(int* position, Token::TOKEN_TYPE prefix, int minPrecedence,
                                     const QString& defaultPackage, bool readOnly);
    IExpression* CreateVariableExpression(int* position, const QString& defaultPackage, bool readOnly,
                                          IExpression* left);
    IExpression* CreateArrayExpression(int* position, const QString& defaultPackage, bool readOnly, IExpression* left);
    IExpression* CreateIndex(int* position, const QString& defaultPackage, bool readOnly);
    IExpression* CreatePropertyExpression(int* position, const QString& defaultPackage, bool readOnly,
                                          IExpression* left);

    void NoteReference(const IExpression* node);
    bool HasTokens(int position, int count) const;
    bool IsAt(int position, Token::TOKEN_TYPE type) const;
    bool ExpectClosing(int position, Token::TOKEN_TYPE type, const char* text, const char* operation);
    bool SetLevels(int levels);
    void RefuseDepth();
    void ReportError(const QString& operation, int line, const QString& message);

    QVector<Token*> m_tokens;
    IDataPeer* m_dataPeer;
    IDataObserver* m_dataObserver;
    QObject* m_widget;
    QObject* m_topWidget;
    QSet<QPair<QObject*, QString>> m_referencedProperties;
    ParsingResult m_result;
    int m_nesting;  ///< Calls of CreateExpression() that are running.
    int m_levels;   ///< Height of the tree that was finished last.
    bool m_tooDeep; ///< The statement is refused for its depth.
    int m_failedIndexes;
};

#endif
