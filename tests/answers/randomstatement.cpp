#include "randomstatement.h"

#include "random.h"
#include "randomvalue.h"

namespace {

const char* const Operators[]
    = {"=", "!=", "=", "!=", "<", ">", "<=", ">=", "+", "-", "*", "/", "AND", "OR", "XOR", "NOR", "NAND"};
const char* const Literals[] = {"0", "1", "2", "3", "-1", "2.5", "-.5", "1234567", "0.30000000001", "TRUE", "FALSE"};
const char* const Properties[] = {"@Widget:number",         "@Widget:text",    "@Widget:any",
                                  "@Widget:list",           "@Widget:map",     "@Widget:letter",
                                  "@Widget:size",           "@TopWidget:free", "@ParentWidget:objectName",
                                  "@TopWidget\\target:real"};
const char* const Fragments[]
    = {"(", ")", "[", "]", ".", "'", "@", ":", "#", " ", "NOT ", "AND", "=", "<", "9", "x", "\\"};

QString RandomVariable(Random& random)
{
    const int number = random.Below(VariableCount);
    const QString name = "v" + QString::number(number);
    return number == VariableCount - 1 ? "@Other\\Part:" + name : name;
}

QString RandomAtom(Random& random)
{
    switch (random.Below(8)) {
    case 0:
        return "'" + RandomText(random) + "'";
    case 1:
        return random.Of(Literals);
    case 2:
        return random.OneIn(4) ? "missing" : random.Of(Properties);
    default:
        return RandomVariable(random);
    }
}

QString RandomExpression(Random& random, int depth)
{
    if (depth <= 0)
        return RandomAtom(random);
    switch (random.Below(12)) {
    case 0:
        return "NOT " + RandomExpression(random, depth - 1);
    case 1:
        return "HASVALUE " + RandomExpression(random, depth - 1);
    case 2:
        return "(" + RandomExpression(random, depth - 1) + ")";
    case 3:
    case 4:
        return RandomVariable(random) + "[" + RandomExpression(random, depth - 1) + "]";
    case 5:
        return RandomVariable(random) + " ." + RandomAtom(random);
    case 6:
        return RandomAtom(random);
    default: {
        // One after the other: the order of operands of «+» is not laid down.
        const QString left = RandomExpression(random, depth - 1);
        const QString infix = QString(" ") + random.Of(Operators) + " ";
        return left + infix + RandomExpression(random, depth - 1);
    }
    }
}

void Break(QString& statement, Random& random)
{
    const int place = random.Below(statement.length() + 1);
    if (random.OneIn(2))
        statement.insert(place, random.Of(Fragments));
    else
        statement.remove(place, 1 + random.Below(3));
}

} // namespace

QString RandomStatement(Random& random)
{
    QString statement = RandomExpression(random, random.Below(4));
    if (random.OneIn(20))
        Break(statement, random);
    return statement;
}
