#include <QtTest>

#include <memory>

#include "DeclarationHandler/Expressions/exprobjectproperty.h"
#include "DeclarationHandler/Tokens/identifiertoken.h"
#include "DeclarationHandler/Tokens/lexer.h"
#include "DeclarationHandler/Tokens/packagetoken.h"
#include "DeclarationHandler/Tokens/variabletoken.h"
#include "DeclarationHandler/parser.h"
#include "support/messagecatcher.h"
#include "support/values.h"

namespace {

/// The lexeme, with a letter in front for number, text or variable.
QString Describe(const Token& token)
{
    static const QMap<int, QString> letters = {{Token::TT_NUMBER, "n:"},
                                               {Token::TT_VARIABLE, "v:"},
                                               {Token::TT_SINGLE_QUOTE, "t:"},
                                               {Token::TT_DOUBLE_QUOTE, "t:"}};
    return letters.value(token.GetTokenType()) + token.GetLexeme();
}

} // namespace

// Hosts are compiled with these numbers.
static_assert(Token::TT_IDENTIFIER == 1 && Token::TT_HASVALUE == 29, "A new kind comes last, and stands here then");

class tst_Tokens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Kinds_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("precedence");
        QTest::addColumn<bool>("isBinary");
        using Kinds = std::vector<std::pair<const char*, Token::TOKEN_TYPE>>;
        const auto add = [](int precedence, bool isBinary, const Kinds& kinds) {
            for (const auto& [text, kind] : kinds)
                QTest::newRow(text) << int(kind) << precedence << isBinary;
        };
        add(0, false,
            {{"name", Token::TT_IDENTIFIER},
             {")", Token::TT_RIGHT_PARENTHESIS},
             {"[", Token::TT_LEFT_BRACKET},
             {"]", Token::TT_RIGHT_BRACKET},
             {"TRUE", Token::TT_TRUE},
             {"FALSE", Token::TT_FALSE},
             {"7", Token::TT_NUMBER},
             {"@p:v", Token::TT_VARIABLE},
             {".", Token::TT_DOT},
             {"''", Token::TT_SINGLE_QUOTE},
             {"\"\"", Token::TT_DOUBLE_QUOTE}});
        add(5, false, {{"NOT", Token::TT_NOT}, {"HASVALUE", Token::TT_HASVALUE}});
        add(6, false, {{"(", Token::TT_LEFT_PARENTHESIS}});
        add(1, true,
            {{"OR", Token::TT_OR},
             {"AND", Token::TT_AND},
             {"XOR", Token::TT_XOR},
             {"NOR", Token::TT_NOR},
             {"NAND", Token::TT_NAND}});
        add(2, true,
            {{"=", Token::TT_EQUAL},
             {"!=", Token::TT_NOT_EQUAL},
             {"<", Token::TT_SMALLER},
             {">", Token::TT_GREATER},
             {"<=", Token::TT_EQUAL_OR_SMALLER},
             {">=", Token::TT_EQUAL_OR_GREATER}});
        add(3, true, {{"+", Token::TT_PLUS}, {"-", Token::TT_MINUS}});
        add(4, true, {{"*", Token::TT_MULTIPLY}, {"/", Token::TT_DIVIDE}});
    }

    void Kinds()
    {
        QFETCH(int, kind);
        const QString text = QTest::currentDataTag();
        const bool isName = kind == Token::TT_IDENTIFIER;
        const QScopedPointer<Token> token(isName ? IdentifierToken::Parse(text) : Lexer(text).ReadToken());
        QCOMPARE(int(token->GetTokenType()), kind);
        QCOMPARE(token->GetLexeme(), text);
        QCOMPARE(token->GetLexemeOffset(), 0);
        QTEST(token->GetPrecedence(), "precedence");
        QTEST(token->IsBinOp(), "isBinary");
    }

    // A "?" stands before the rest that is not recognised.
    void Lexing_data()
    {
        Rows({
            // Keywords and names.
            {" => ", " \t\n => ", "a AND b => v:a AND v:b", "a and b => v:a v:and v:b", "ORDER => v:ORDER",
             "TRUE1 => v:TRUE1", "HASVALUEx => v:HASVALUEx", "OR( => OR (", "TRUE.FALSE => TRUE . FALSE",
             "AND_x => AND ?_x", "a_1.b => v:a_1.b", "a..b. => v:a..b.", "_a => ?_a", "[0].k => [ n:0 ] . v:k",
             "\u00e9\u2003\u0663\u00a0x => v:\u00e9 n:\u0663 v:x"},
            // Operators.
            {"x<=5 => v:x <= n:5", "x< =5 => v:x < = n:5", "x==5 => v:x = = n:5", "x>=-5 => v:x >= n:-5", "!x => ?!x",
             "a ! = b => v:a ?! = b", "a + $b => v:a + ?$b", "a,b => v:a ?,b", "a - 1 => v:a - n:1", "a-b => v:a - v:b",
             "a-(1) => v:a - ( n:1 )", "-x => - v:x", "- => -", ". => ."},
            // Numbers.
            {"a-1 => v:a n:-1", "5-3 => n:5 n:-3", "--5 => - n:-5", "-.5 => n:-.5", "-. => n:-.", "5. => n:5.",
             "12.5.3 => n:12.5 n:.3", "1e5 => n:1 v:e5", "+5 => + n:5"},
            // Texts.
            {"'it''s' => t:'it' t:'s'", "'' => t:''", "\"a'b\" => t:\"a'b\"", "'a\\' => t:'a\\'", "' => ?'",
             "x 'abc => v:x ?'abc", "\"abc' => ?\"abc'"},
            // References.
            {"@Engine:speed AND x => v:@Engine:speed AND v:x", "@E\\Left:rpm => v:@E\\Left:rpm", "@a:NOT => v:@a:NOT",
             "@\\E\\\\Left\\:rpm => v:@\\E\\\\Left\\:rpm", "@a:b:c => v:@a:b ?:c", "@E: speed => ?@E: speed",
             "@E:5 => ?@E:5", "@E => ?@E", "@:x => ?@:x", "@\\:x => ?@\\:x", "@a\\5:x => ?@a\\5:x",
             "@a b:x => ?@a b:x"},
        });
    }

    void Lexing()
    {
        QFETCH(QString, given);
        QStringList tokens;
        Lexer lexer(given);
        int end = 0;
        while (const std::unique_ptr<Token> token{lexer.ReadToken()}) {
            const TextPlace place = lexer.GetPlace();
            tokens << Describe(*token);
            QCOMPARE(given.mid(place.offset, place.length), token->GetLexeme());
            QVERIFY(place.length > 0 && given.mid(end, place.offset - end).trimmed().isEmpty());
            end = place.End();
        }
        const QString rest = given.mid(lexer.GetUnread().offset);
        if (!rest.isEmpty())
            tokens << "?" + rest;
        QTEST(tokens.join(" "), "expected");

        Parser parser;
        parser.Tokenize(given);
        const QScopedPointer<IParsingResult> result(parser.CopyResult());
        QCOMPARE(result->GetParsedCharacters(), rest.isEmpty() ? 0 : lexer.GetUnread().offset);
        QCOMPARE(result->GetErrorMessage(), rest.isEmpty() ? "" : "Unrecognised token at \"" + rest + "\".");
    }

    // The widget bound is the edit in the form { outer, panel { box { inner }, edit } }.
    void WidgetPaths_data()
    {
        Rows({{"@Widget:p => edit", "@ParentWidget:p => panel", "@TopWidget:p => form", "@TopWidget\\edit:p => edit",
               "@TopWidget\\panel\\button:p => inner", "@TopWidget\\button:p => outer",
               "@ParentWidget\\box\\button:p => inner",
               "@TopWidget\\panel\\nobody\\button:p => "
               "\"Not a valid QObject found for: 'TopWidget\\\\panel\\\\nobody\\\\button'\"",
               "@Widget\\box:p => \"Not a valid QObject found for: 'Widget\\\\box'\""}});
    }

    void WidgetPaths()
    {
        const auto add = [](QObject* parent, const char* name, const char* label) {
            QObject* const object = new QObject(parent);
            object->setObjectName(name);
            object->setProperty("p", label);
            return object;
        };
        QObject root;
        QObject* const form = add(&root, "form", "form");
        add(form, "button", "outer");
        QObject* const panel = add(form, "panel", "panel");
        add(add(panel, "box", "box"), "button", "inner");
        QObject* const edit = add(panel, "edit", "edit");

        QFETCH(QString, given);
        MessageCatcher messages;
        const QScopedPointer<Token> token(VariableToken::Parse(given));
        QScopedPointer<IExpression> node(token->CreateExpression(nullptr, nullptr, edit, form, "d", false));
        QCOMPARE(!node, !dynamic_cast<ExprObjectProperty*>(node.data()));
        QTEST(node ? node->Retrieve().toString() : messages.Take().join("|"), "expected");
    }

    void ParentOfAnObjectWithoutOneIsTheTop()
    {
        QObject alone;
        QObject form;
        const QScopedPointer<Token> token(VariableToken::Parse("@ParentWidget:p"));
        const VariableToken* const reference = dynamic_cast<VariableToken*>(token.data());
        QCOMPARE(reference->GetObjectFromPackage(&alone, &form), &form);
    }

    void References()
    {
        const QString text = "@\\E\\\\L\\:x.y";
        const QScopedPointer<Token> token(VariableToken::Parse(text));
        const QScopedPointer<Token> prefix(PackageToken::Parse(text));
        const VariableToken* const reference = dynamic_cast<VariableToken*>(token.data());
        QVERIFY(reference->HasPackage());
        QCOMPARE(reference->GetVariableName() + " " + reference->GetPackage("d"), QString("x.y \\E\\\\L\\"));
        QCOMPARE(dynamic_cast<PackageToken*>(prefix.data())->GetPackages(), (QStringList{"E", "L"}));
        QVERIFY(!prefix->CreateExpression(nullptr, nullptr, this, this, "d", false));
        QVERIFY(!reference->GetObjectFromPackage(this, this));
        const VariableToken plain("x", nullptr, IdentifierToken::Parse("x"));
        QVERIFY(!plain.HasPackage() && plain.GetPackage("d") == "d" && plain.GetPackage(QString()).isNull());
    }
};

QTEST_APPLESS_MAIN(tst_Tokens)
#include "tst_tokens.moc"
