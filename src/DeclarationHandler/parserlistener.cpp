#include "DeclarationHandler/parserlistener.h"

ParserListener::~ParserListener() {}

void ParserListener::OnToken(const Token&, const TextPlace&) {}

IExpression* ParserListener::CreateReference(const VariableToken&, const TextPlace&, bool)
{
    return nullptr;
}

void ParserListener::OnNode(const ParsedNode&) {}

void ParserListener::OnReport(const ParserReport&) {}
