#include "view/detailpanel.h"

#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

#include "DataLayer/idatapeer.h"
#include "view/declarationsource.h"
#include "view/statementparts.h"

DetailPanel::DetailPanel(DeclarationSource* source, const QFont& font)
    : m_source(source), m_label(new QLabel), m_tree(new QTreeWidget)
{
    m_tree->setObjectName("detail");
    m_tree->setFont(font);
    m_tree->header()->setFont(font);
    m_tree->setHeaderLabels({"Part", "Value at present"});
    m_tree->header()->setSectionResizeMode(QHeaderView::Stretch);
    m_tree->setAlternatingRowColors(true);
    m_tree->setUniformRowHeights(true);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_label);
    layout->addWidget(m_tree);
    SetDeclaration(-1);
}

void DetailPanel::SetDeclaration(int position)
{
    m_position = position;
    QString name;
    if (IsThere()) {
        const ViewedProperty& property = m_source->Properties().at(position);
        name = property.path.section('\\', -1) + ':' + property.name;
    }
    m_label->setText("<b>Declaration</b>&nbsp; " + name.toHtmlEscaped());
    Refresh();
}

/// False also for one whose object has been deleted.
bool DetailPanel::IsThere() const
{
    return m_position >= 0 && m_position < m_source->Properties().size()
        && m_source->Properties().at(m_position).object;
}

void DetailPanel::Refresh()
{
    const QVector<Row> rows = Rows();
    const bool same = rows.size() == m_items.size()
        && std::equal(rows.begin(), rows.end(), m_items.begin(),
                      [](const Row& row, const QTreeWidgetItem* item) { return row.text == item->text(0); });
    // The same rows stay, and so do their selection and the place in sight.
    if (!same)
        Rebuild(rows);
    for (int i = 0; i < rows.size(); ++i) {
        m_items.at(i)->setText(1, rows.at(i).value);
        m_items.at(i)->setToolTip(1, rows.at(i).value);
    }
}

QVector<DetailPanel::Row> DetailPanel::Rows() const
{
    QVector<Row> rows;
    if (!IsThere())
        return rows;
    AppendParts(&rows);
    if (!IsThere())
        return rows;
    AppendRemarks(&rows);
    AppendReads(&rows);
    if (!IsThere())
        return rows;
    AppendReaders(&rows);
    return rows;
}

void DetailPanel::AppendParts(QVector<Row>* rows) const
{
    // A copy: reading properties runs code of the host, which may end the form.
    const ViewedProperty property = m_source->Properties().at(m_position);
    const QVector<StatementPart> parts = EvaluateParts(property.statement, property.object, m_source->Form(),
                                                       m_source->DefaultPackage(), m_source->Data());
    for (const StatementPart& part : parts) {
        const QString none = part.problem.isEmpty() ? "no value" : "no value: " + part.problem;
        rows->append({part.level, part.text, part.value.isValid() ? ValueToText(part.value) : none});
    }
    if (parts.isEmpty())
        rows->append({0, property.statement.simplified(), property.Problem()});
}

void DetailPanel::AppendRemarks(QVector<Row>* rows) const
{
    const QStringList remarks = m_source->Properties().at(m_position).Remarks();
    if (remarks.isEmpty())
        return;
    rows->append({0, "Problems", QString()});
    for (const QString& remark : remarks)
        rows->append({1, remark, QString()});
}

void DetailPanel::AppendReads(QVector<Row>* rows) const
{
    const BoundProperty bound = m_source->Bound(m_position);
    if (bound.variables.isEmpty() && bound.properties.isEmpty())
        return;
    IDataPeer* const data = m_source->Data();
    rows->append({0, "Reads", QString()});
    for (const VariableIdentifier& identifier : bound.variables) {
        const QVariant value = data ? data->GetValue(identifier, QVariant()) : QVariant();
        rows->append({1, identifier.GetPackage() + ':' + identifier.GetName(),
                      value.isValid() ? ValueToText(value) : "missing"});
    }
    for (const QPair<QPointer<QObject>, QString>& read : bound.properties) {
        if (read.first)
            rows->append({1, WidgetPath(read.first, m_source->Form()) + ':' + read.second,
                          ValueToText(read.first->property(read.second.toLatin1()))});
    }
}

void DetailPanel::AppendReaders(QVector<Row>* rows) const
{
    const QVector<int> readers = m_source->ReadersOf(m_position);
    if (readers.isEmpty())
        return;
    rows->append({0, "Is read by", QString()});
    for (const int reader : readers) {
        if (reader >= m_source->Properties().size())
            return;
        const ViewedProperty property = m_source->Properties().at(reader);
        rows->append({1, property.path + ':' + property.name, ValueToText(property.Value())});
    }
}

void DetailPanel::Rebuild(const QVector<Row>& rows)
{
    m_tree->clear();
    m_items.clear();
    QVector<QTreeWidgetItem*> above; // The last item of each level.
    for (const Row& row : rows) {
        above.resize(row.level);
        QTreeWidgetItem* const parent = above.isEmpty() ? m_tree->invisibleRootItem() : above.last();
        auto* const item = new QTreeWidgetItem(parent, {row.text});
        item->setToolTip(0, row.text);
        above.append(item);
        m_items.append(item);
    }
    m_tree->expandAll();
}
