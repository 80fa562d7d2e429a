#include "DeclarationHandler/Tokens/token.h"

#include "DeclarationHandler/Expressions/exprconstant.h"

namespace {

enum Precedence
{
    None = 0,
    Logical = 1,
    Comparison = 2,
    Additive = 3,
    Multiplicative = 4,
    Prefix = 5,
    Opening = 6
};

enum Boundary
{
    Anywhere,
    WordEnd
};

struct Row
{
    const char* text;
    Token::TOKEN_TYPE type;
    Boundary boundary;
    Precedence precedence;
    bool isBinary;
};

// All tokens with a fixed text, in the order in which they are tried.
constexpr Row Rows[] = {
    {"!=", Token::TT_NOT_EQUAL, Anywhere, Comparison, true},
    {"<=", Token::TT_EQUAL_OR_SMALLER, Anywhere, Comparison, true},
    {">=", Token::TT_EQUAL_OR_GREATER, Anywhere, Comparison, true},
    {"OR", Token::TT_OR, WordEnd, Logical, true},
    {"AND", Token::TT_AND, WordEnd, Logical, true},
    {"NOR", Token::TT_NOR, WordEnd, Logical, true},
    {"XOR", Token::TT_XOR, WordEnd, Logical, true},
    {"NAND", Token::TT_NAND, WordEnd, Logical, true},
    {"NOT", Token::TT_NOT, WordEnd, Prefix, false},
    {"HASVALUE", Token::TT_HASVALUE, WordEnd, Prefix, false},
    {"TRUE", Token::TT_TRUE, WordEnd, None, false},
    {"FALSE", Token::TT_FALSE, WordEnd, None, false},
    {"(", Token::TT_LEFT_PARENTHESIS, Anywhere, Opening, false},
    {")", Token::TT_RIGHT_PARENTHESIS, Anywhere, None, false},
    {"[", Token::TT_LEFT_BRACKET, Anywhere, None, false},
    {"]", Token::TT_RIGHT_BRACKET, Anywhere, None, false},
    {"-", Token::TT_MINUS, Anywhere, Additive, true},
    {"+", Token::TT_PLUS, Anywhere, Additive, true},
    {"/", Token::TT_DIVIDE, Anywhere, Multiplicative, true},
    {"*", Token::TT_MULTIPLY, Anywhere, Multiplicative, true},
    {"=", Token::TT_EQUAL, Anywhere, Comparison, true},
    {"<", Token::TT_SMALLER, Anywhere, Comparison, true},
    {">", Token::TT_GREATER, Anywhere, Comparison, true},
    {".", Token::TT_DOT, Anywhere, None, false},
};
constexpr int RowCount = sizeof(Rows) / sizeof(Rows[0]);

/// The largest kind in the rows from \a row on, or \a largest.
constexpr int LargestType(int row, int largest)
{
    return row == RowCount ? largest : LargestType(row + 1, Rows[row].type > largest ? Rows[row].type : largest);
}
constexpr int TypeCount = LargestType(0, 0) + 1;

bool IsSingleChar(const Row& row)
{
    return row.text[1] == '\0';
}

const int AsciiCount = 128;

/// The rows by what they are looked up by, and their texts as the tokens share them.
struct Index
{
    const Row* byType[TypeCount]; ///< Null for kinds without a fixed text.
    QString lexemes[RowCount];
    const Row* byChar[AsciiCount];  ///< The rows of one character; null for others.
    bool startsLongRow[AsciiCount]; ///< Whether a text of several characters starts with that character.

    Index() : byType(), byChar(), startsLongRow()
    {
        for (int i = 0; i < RowCount; ++i) {
            byType[Rows[i].type] = &Rows[i];
            lexemes[i] = QLatin1String(Rows[i].text);
            const int first = Rows[i].text[0];
            if (IsSingleChar(Rows[i]))
                byChar[first] = &Rows[i];
            else
                startsLongRow[first] = true;
        }
    }
};

const Index& GetIndex()
{
    // Complete before the first look-up in any thread.
    static const Index index;
    return index;
}

bool StartsLongRow(QChar character)
{
    return character.unicode() < AsciiCount && GetIndex().startsLongRow[character.unicode()];
}

const Row* FindRow(Token::TOKEN_TYPE type)
{
    return type < TypeCount ? GetIndex().byType[type] : nullptr;
}

bool Matches(const Row& row, const QString& text)
{
    // The first character alone rules out nearly all.
    if (text.at(0) != QLatin1Char(row.text[0]) || !text.startsWith(QLatin1String(row.text), Qt::CaseSensitive))
        return false;
    const int length = static_cast<int>(qstrlen(row.text));
    return row.boundary == Anywhere || text.length() == length || !text.at(length).isLetterOrNumber();
}

} // namespace

Token::Token(const QString& lexeme, TOKEN_TYPE type) : m_lexeme(lexeme), m_tokenType(type) {}

Token::~Token() {}

IExpression* Token::CreateExpression(IDataPeer*, IDataObserver*, QObject*, QObject*, const QString&, bool) const
{
    if (m_tokenType == TT_TRUE || m_tokenType == TT_FALSE)
        return new ExprConstant(m_tokenType == TT_TRUE);
    return nullptr;
}

int Token::GetLexemeOffset() const
{
    return 0;
}

int Token::GetPrecedence() const
{
    const Row* const row = FindRow(m_tokenType);
    return row ? row->precedence : None;
}

bool Token::IsBinOp() const
{
    const Row* const row = FindRow(m_tokenType);
    return row && row->isBinary;
}

Token* Token::Parse(const QString& text)
{
    if (text.isEmpty())
        return nullptr;
    Token* const token = ParseString(text);
    return token ? token : ParseChar(text);
}

Token* Token::ParseString(const QString& text)
{
    if (text.isEmpty() || !StartsLongRow(text.at(0)))
        return nullptr;
    for (int i = 0; i < RowCount; ++i) {
        if (!IsSingleChar(Rows[i]) && Matches(Rows[i], text))
            return new Token(GetIndex().lexemes[i], Rows[i].type);
    }
    return nullptr;
}

Token* Token::ParseChar(const QString& text)
{
    const ushort character = text.at(0).unicode();
    const Index& index = GetIndex();
    const Row* const row = character < AsciiCount ? index.byChar[character] : nullptr;
    return row ? new Token(index.lexemes[row - Rows], row->type) : nullptr;
}
