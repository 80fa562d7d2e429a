#ifndef CORPUS_H
#define CORPUS_H

#include "variables.h"

/// A statement in the library's language and in JavaScript.
struct Statement
{
    QString own;
    QString script;
    QVariant value;
    int tokens = 0; ///< How many it has in the library's language.
    int reads = 0;  ///< Of ReadingStatement(): how many variables it reads.
};

/// Twelve statements as forms have them, from a single name to thirty-two tokens.
const std::vector<Statement>& TypicalStatements();

/// The variables that they read. "okButton" is the child of that name of TypicalForm().
const Variables& TypicalVariables();

/// The top of their widget paths.
QObject* TypicalForm();

/// A statement that reads the first 1, 3 or 8 of ReadingVariables().
Statement ReadingStatement(int reads);
Variables ReadingVariables(int reads);

/// Variables by their global JavaScript names, members gathered into maps.
QVariantMap ScriptGlobals(const Variables& variables);

#endif
