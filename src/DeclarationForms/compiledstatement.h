#ifndef COMPILEDSTATEMENT_H
#define COMPILEDSTATEMENT_H

#include <memory>
#include <utility>
#include <vector>

#include "Common/textplace.h"
#include "DeclarationHandler/iexpression.h"

class FormProperty;
class FormVariable;

/// A statement's tree, and the nodes in it that others ask for.
struct CompiledStatement
{
    std::unique_ptr<IExpression> tree;
    std::vector<FormProperty*> properties;
    std::vector<FormVariable*> variables;
    std::vector<std::pair<const IExpression*, TextPlace>> subscripts; ///< With the place of each index.
};

#endif
