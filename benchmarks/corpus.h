#ifndef CORPUS_H
#define CORPUS_H

#include <QVariant>
#include <vector>

class QObject;

/// A statement in the library's language and in JavaScript.
struct Statement
{
    QString own;
    QString script;
    QVariant value;
    int tokens = 0; ///< How many it has in the library's language.
    int reads = 0;  ///< Of ReadingStatement(): how many variables it reads.
};

/// A variable that statements read.
struct Variable
{
    QString name;
    QString package;
    QString script; ///< Its name in JavaScript: a global one, or "object.member".
    QVariant value;
};

using Variables = std::vector<Variable>;

/// Twelve statements as forms have them, from a single name to 32 tokens, and the variables that they read.
const std::vector<Statement>& TypicalStatements();
Variables TypicalVariables();
/// The top of their widget paths.
QObject* TypicalForm();

/// A statement that reads 1, 3 or 8 variables, and these.
Statement ReadingStatement(int reads);
Variables ReadingVariables(int reads);

/// Variables by their global JavaScript names, members gathered into maps.
QVariantMap ScriptGlobals(const Variables& variables);

#endif
