#include <cstdio>

#include "DeclarationHandler/Tokens/language.h"

// Prints the operators, keywords and brackets of the language as a dictionary for the fuzzer.
int main()
{
    for (int i = 0; i < Language::GetRowCount(); ++i)
        std::printf("\" %s \"\n", Language::GetRow(i).text);
}
