#include "DeclarationForms/adapterregistry.h"

#include <QMetaObject>

#include <algorithm>
#include <utility>

#include "DeclarationForms/choiceadapters.h"
#include "DeclarationForms/itemadapters.h"
#include "DeclarationForms/rowadapters.h"

namespace {

AdapterTable MakeAdapterTable()
{
    AdapterTable table;
    ItemAdapters::AddTo(&table);
    RowAdapters::AddTo(&table);
    ChoiceAdapters::AddTo(&table);
    return table;
}

} // namespace

void AdapterTable::Add(const QMetaObject* type, const QString& property, PropertyAdapter adapter)
{
    m_adapters.push_back(std::move(adapter));
    std::vector<Row>& rows = m_rows[property];
    const auto isOfType = [type](const Row& row) { return row.type == type; };
    const auto row = std::find_if(rows.begin(), rows.end(), isOfType);
    if (row == rows.end())
        rows.push_back({type, &m_adapters.back()});
    else
        row->adapter = &m_adapters.back();
}

const PropertyAdapter* AdapterTable::Find(const QObject* object, const QString& property) const
{
    const auto found = m_rows.constFind(property);
    if (found == m_rows.constEnd())
        return nullptr;
    for (const QMetaObject* type = object->metaObject(); type; type = type->superClass()) {
        for (const Row& row : *found) {
            if (row.type == type)
                return row.adapter;
        }
    }
    return nullptr;
}

AdapterTable& AdapterRegistry::Table()
{
    static AdapterTable table = MakeAdapterTable();
    return table;
}

const PropertyAdapter* AdapterRegistry::Find(const QObject* object, const QString& property)
{
    return Table().Find(object, property);
}
