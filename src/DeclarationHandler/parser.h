#ifndef PARSER_H
#define PARSER_H

#include <QPair>
#include <QScopedPointer>
#include <QSet>
#include <QString>

#include "DeclarationHandler/Tokens/token.h"
#include "DeclarationHandler/iparser.h"
#include "DeclarationHandler/parsingresult.h"

class ParserListener;
class ParserPrivate;

/// The parser of the statement language, by recursive descent with operator precedence. The source
/// file starts with the grammar.
///
/// A tree may be 1,000 levels high, the root being the first; a statement that needs more is refused
/// with the error "Expression is nested too deeply.", so that no text can exhaust the stack. So is one in
/// which more than 1,000 indexes are read in vain, so that none can exhaust the time.
class DECLARATIONHANDLER_EXPORT Parser : public IParser
{
public:
    Parser();
    ~Parser() override;

    /// The new parser has no listener.
    IParser* NewParser() const override;
    IParsingResult* CopyResult() const override;
    void Reset() override;
    void Tokenize(const QString& statement) override;
    IExpression* Parse(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* widget, QObject* topWidget,
                       const QString& defaultPackage, bool readOnly) override;

    /// The properties of other objects that the statement last given to Parse() reads, each once. Nodes that
    /// a listener made do not count.
    virtual QSet<QPair<QObject*, QString>> GetReferencedProperties() const;

    /// Whom to tell what is read, built and reported from the next Tokenize() on; null for nobody. It stays
    /// the caller's and must outlive its use.
    void SetListener(ParserListener* listener);

private:
    Q_DISABLE_COPY(Parser)

    QScopedPointer<ParserPrivate> d;
};

#endif
