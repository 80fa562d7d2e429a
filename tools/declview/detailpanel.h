#ifndef DETAILPANEL_H
#define DETAILPANEL_H

#include <QTreeWidget>
#include <QVector>

class FormSession;

/// What is behind one declaration: its parts with their values, what it reads and who reads it.
class DetailPanel : public QTreeWidget
{
    Q_OBJECT

public:
    /// The session outlives this.
    explicit DetailPanel(FormSession* session);

    /// Shows the declaration at that position of the session; -1 for none.
    void SetDeclaration(int position);
    /// Reads the values again.
    void Refresh();

    QSize sizeHint() const override;

private:
    struct Row
    {
        int level;
        QString text;
        QString value;
    };

    QVector<Row> Rows() const;
    void AppendParts(QVector<Row>* rows) const;
    void AppendReads(QVector<Row>* rows) const;
    void AppendReaders(QVector<Row>* rows) const;
    void Rebuild(const QVector<Row>& rows);

    FormSession* const m_session;
    int m_position = -1;
    QVector<QTreeWidgetItem*> m_items; ///< One for each row that is shown.
};

#endif
