#include "DeclarationHandler/Tokens/variabletoken.h"

#include <QDebug>
#include <QObject>

#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/Expressions/exprobjectproperty.h"
#include "DeclarationHandler/Expressions/exprvariable.h"
#include "DeclarationHandler/Tokens/formscope.h"
#include "DeclarationHandler/Tokens/identifiertoken.h"
#include "DeclarationHandler/Tokens/nametext.h"
#include "DeclarationHandler/Tokens/packagetoken.h"
#include "DeclarationHandler/Tokens/textview.h"

namespace {

const char* const NoObjectMessage = "Not a valid QObject found for: '%1'";

const QLatin1String WidgetElement("Widget");
const QLatin1String TopWidgetElement("TopWidget");
const QLatin1String ParentWidgetElement("ParentWidget");

QStringList PathOf(const Token* package)
{
    const PackageToken* const prefix = dynamic_cast<const PackageToken*>(package);
    return prefix ? prefix->GetPackages() : QStringList();
}

bool IsWidgetPath(const QStringList& path)
{
    if (path.isEmpty())
        return false;
    const QString& first = path.first();
    return first == WidgetElement || first == TopWidgetElement || first == ParentWidgetElement;
}

} // namespace

VariableToken::VariableToken(const QString& lexeme, Token* package, Token* identifier)
    : Token(lexeme, TT_VARIABLE),
      m_package(package),
      m_identifier(identifier),
      m_name(identifier ? identifier->GetLexeme() : QString::fromLatin1("")),
      m_path(PathOf(package))
{
}

VariableToken::VariableToken(const QString& name)
    : Token(name, TT_VARIABLE), m_package(nullptr), m_identifier(nullptr), m_name(name)
{
}

VariableToken::~VariableToken()
{
    delete m_package;
    delete m_identifier;
}

Token* VariableToken::Parse(const QString& text)
{
    if (text.isEmpty())
        return nullptr;
    Token* const package = PackageToken::Parse(text);
    if (!package) {
        const int nameLength = NameText::Length(text);
        return nameLength == 0 ? nullptr : new VariableToken(FormScope::StartOf(text, nameLength));
    }
    const int position = package->GetLexemeLength();
    Token* const identifier = IdentifierToken::Parse(TextView::From(text, position));
    if (!identifier) {
        delete package;
        return nullptr;
    }
    const int length = position + identifier->GetLexemeLength();
    return new VariableToken(TextView::StartOf(text, length), package, identifier);
}

QStringList VariableToken::GetPathStarts()
{
    return QStringList() << WidgetElement << TopWidgetElement << ParentWidgetElement;
}

QString VariableToken::GetVariableName() const
{
    return m_name;
}

QString VariableToken::GetPackage(const QString& defaultPackage) const
{
    if (!m_package)
        return defaultPackage;
    return m_package->GetLexeme().mid(1, m_package->GetLexemeLength() - 2);
}

bool VariableToken::HasPackage() const
{
    return m_package != nullptr;
}

QObject* VariableToken::GetTopObject(QObject* widget, QObject* topWidget, const QStringList& path) const
{
    const QString first = path.value(0);
    if (first == WidgetElement)
        return widget;
    if (first == ParentWidgetElement)
        return widget && widget->parent() ? widget->parent() : topWidget;
    return first == TopWidgetElement ? topWidget : nullptr;
}

QObject* VariableToken::GetChildObject(QObject* parent, const QStringList& path, int* index) const
{
    if (!parent)
        return nullptr;
    QObject* const child = FormScope::FindChild(parent, path.value(*index));
    ++*index;
    return child;
}

QObject* VariableToken::GetObjectFromPackage(QObject* widget, QObject* topWidget) const
{
    if (!m_package)
        return nullptr;
    QObject* object = GetTopObject(widget, topWidget, m_path);
    int index = 1;
    while (object && index < m_path.count())
        object = GetChildObject(object, m_path, &index);
    return object;
}

IExpression* VariableToken::CreateExpression(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* widget,
                                             QObject* topWidget, const QString& defaultPackage, bool readOnly) const
{
    if (!m_package) {
        const VariableIdentifier identifier(GetVariableName(), defaultPackage);
        return new ExprVariable(dataPeer, identifier, dataObserver, readOnly);
    }
    const QString name = FormScope::Shared(GetVariableName());
    const QString package = GetPackage(defaultPackage);
    if (!IsWidgetPath(m_path)) {
        const VariableIdentifier identifier(name, FormScope::Shared(package));
        return new ExprVariable(dataPeer, identifier, dataObserver, readOnly);
    }

    QObject* const object = GetObjectFromPackage(widget, topWidget);
    if (!object) {
        qDebug() << QString::fromLatin1(NoObjectMessage).arg(package);
        return nullptr;
    }
    return new ExprObjectProperty(object, name, readOnly);
}
