#ifndef RANDOMSTATEMENT_H
#define RANDOMSTATEMENT_H

#include <QString>

class Random;

/// The variables of random statements bear the numbers from 0 to VariableCount - 1; each reads or
/// writes "v0", "v1" and so on, the last one in a package of its own.
const int VariableCount = 8;

/// A statement of the language, one in twenty of them broken.
QString RandomStatement(Random& random);

#endif
