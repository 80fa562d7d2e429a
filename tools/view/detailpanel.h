#ifndef DETAILPANEL_H
#define DETAILPANEL_H

#include <QVector>
#include <QWidget>

class DeclarationSource;
class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

/// What is behind one declaration: its parts with their values, what is wrong, what it reads and who reads it.
class DetailPanel : public QWidget
{
    Q_OBJECT

public:
    /// The source outlives this. The font is that of the tables.
    DetailPanel(DeclarationSource* source, const QFont& font);

    /// Shows the declaration at that position of the source; -1 for none.
    void SetDeclaration(int position);
    /// Reads the values again.
    void Refresh();

private:
    struct Row
    {
        int level;
        QString text;
        QString value;
    };

    bool IsThere() const;
    QVector<Row> Rows() const;
    void AppendParts(QVector<Row>* rows) const;
    void AppendRemarks(QVector<Row>* rows) const;
    void AppendReads(QVector<Row>* rows) const;
    void AppendReaders(QVector<Row>* rows) const;
    void Rebuild(const QVector<Row>& rows);

    DeclarationSource* const m_source;
    QLabel* const m_label;
    QTreeWidget* const m_tree;
    int m_position = -1;
    QVector<QTreeWidgetItem*> m_items; ///< One for each row that is shown.
};

#endif
