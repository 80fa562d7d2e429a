#ifndef OPERATORS_H
#define OPERATORS_H

#include <QStringList>

#include "DeclarationHandler/Tokens/language.h"

/// The operators between two operands, as the language has them.
inline QStringList BinaryOperators()
{
    QStringList operators;
    for (int i = 0; i < Language::GetRowCount(); ++i) {
        if (Language::GetRow(i).IsBinary())
            operators << Language::GetRow(i).text;
    }
    return operators;
}

#endif
