#include "declview/detailpanel.h"

#include <QHeaderView>

#include <algorithm>

#include "declview/formsession.h"
#include "declview/statementparts.h"

namespace {

const int LinesWanted = 9;
const double TextShare = 0.6;

} // namespace

DetailPanel::DetailPanel(FormSession* session) : m_session(session)
{
    setObjectName("detail");
    setAlternatingRowColors(true);
    setUniformRowHeights(true);
    SetDeclaration(-1);
}

void DetailPanel::SetDeclaration(int position)
{
    m_position = position;
    const bool isThere = position >= 0 && position < m_session->Properties().size();
    const QString name = isThere
        ? m_session->Properties().at(position).path + ':' + m_session->Properties().at(position).name
        : "No declaration is selected";
    setHeaderLabels({name, "Value at present"});
    Refresh();
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

QSize DetailPanel::sizeHint() const
{
    return {QTreeWidget::sizeHint().width(), LinesWanted * (fontMetrics().height() + 4)};
}

QVector<DetailPanel::Row> DetailPanel::Rows() const
{
    QVector<Row> rows;
    if (m_position < 0 || m_position >= m_session->Properties().size())
        return rows;
    AppendParts(&rows);
    AppendReads(&rows);
    AppendReaders(&rows);
    return rows;
}

void DetailPanel::AppendParts(QVector<Row>* rows) const
{
    const ViewedProperty& property = m_session->Properties().at(m_position);
    const QVector<StatementPart> parts
        = EvaluateParts(property.statement, property.object, m_session->Form(), m_session->Files().defaultPackage);
    for (const StatementPart& part : parts) {
        const QString none = part.problem.isEmpty() ? "no value" : "no value: " + part.problem;
        rows->append({part.level, part.text, part.value.isValid() ? ValueToText(part.value) : none});
    }
    if (parts.isEmpty())
        rows->append({0, property.statement.simplified(), property.Problem()});
}

void DetailPanel::AppendReads(QVector<Row>* rows) const
{
    const BoundProperty bound = m_session->Bound(m_position);
    if (bound.variables.isEmpty() && bound.properties.isEmpty())
        return;
    rows->append({0, "Reads", QString()});
    for (const VariableIdentifier& identifier : bound.variables) {
        const QVariant value = m_session->Variables().Value(identifier);
        rows->append({1, identifier.GetPackage() + ':' + identifier.GetName(),
                      value.isValid() ? ValueToText(value) : "missing"});
    }
    for (const QPair<QPointer<QObject>, QString>& read : bound.properties) {
        if (read.first)
            rows->append({1, WidgetPath(read.first, m_session->Form()) + ':' + read.second,
                          ValueToText(read.first->property(read.second.toLatin1()))});
    }
}

void DetailPanel::AppendReaders(QVector<Row>* rows) const
{
    const QVector<int> readers = m_session->ReadersOf(m_position);
    if (readers.isEmpty())
        return;
    rows->append({0, "Is read by", QString()});
    for (const int reader : readers) {
        const ViewedProperty& property = m_session->Properties().at(reader);
        rows->append({1, property.path + ':' + property.name, ValueToText(property.Value())});
    }
}

void DetailPanel::Rebuild(const QVector<Row>& rows)
{
    clear();
    m_items.clear();
    QVector<QTreeWidgetItem*> above; // The last item of each level.
    for (const Row& row : rows) {
        above.resize(row.level);
        QTreeWidgetItem* const parent = above.isEmpty() ? invisibleRootItem() : above.last();
        auto* const item = new QTreeWidgetItem(parent, {row.text});
        item->setToolTip(0, row.text);
        above.append(item);
        m_items.append(item);
    }
    expandAll();
    header()->resizeSection(0, int(viewport()->width() * TextShare));
}
