#include "declview/propertyprobe.h"

#include <QMetaMethod>
#include <QMetaProperty>

#include "DeclarationHandler/declaration.h"
#include "DeclarationHandler/declarationhandler.h"
#include "common/statementtokens.h"

namespace {

bool IsName(const QString& property, const StatementTokens& statement)
{
    const QVector<Reference> read = statement.Properties();
    return read.size() == 1 && read.first().name == property && statement.Tokens().size() == 1;
}

} // namespace

PropertyProbe::PropertyProbe(DeclarationHandler* handler, QObject* object, const QString& property)
{
    const int index = object->metaObject()->indexOfProperty(property.toLatin1());
    const QMetaProperty metaProperty = object->metaObject()->property(index);
    if (metaProperty.hasNotifySignal())
        connect(object, metaProperty.notifySignal(), this, QMetaMethod::fromSignal(&PropertyProbe::Changed));

    const QString statement = "@TopWidget:" + property;
    if (!IsName(property, StatementTokens(statement)))
        return;
    m_declaration.reset(handler->CreateDeclaration(this, "value", object, statement, QString(), true));
    connect(m_declaration.data(), &Declaration::Updated, this, &PropertyProbe::Evaluated);
}

PropertyProbe::~PropertyProbe() = default;
