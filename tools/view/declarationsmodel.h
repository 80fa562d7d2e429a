#ifndef DECLARATIONSMODEL_H
#define DECLARATIONSMODEL_H

#include <QAbstractTableModel>
#include <QTimer>
#include <QVector>

class DeclarationSource;
struct ViewedProperty;

/// The declarations of the form as a table, a row for each in the order bound. Values are read when they
/// are drawn; changes are announced a few times a second, all of that time at once.
class DeclarationsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        Widget,
        Property,
        Statement,
        Value,
        Evaluations,
        Diagnostic,
        ColumnCount
    };

    explicit DeclarationsModel(DeclarationSource* source);

    QObject* Object(int row) const;
    /// The row of the first declaration with a problem; -1 for none.
    int FirstProblem() const;
    /// How many declarations have a problem.
    int ProblemCount() const;
    /// The rows of the nearest object, from that one outwards, that has declarations.
    QVector<int> RowsOf(const QObject* object) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    void MarkChanged(int row);
    void Announce();
    static QVariant Color(const ViewedProperty& property, int column);
    QVariant Cell(const ViewedProperty& property, int column) const;
    QString ToolTip(const ViewedProperty& property, int column) const;

    DeclarationSource* const m_source;
    QVector<int> m_changed; ///< May hold a row twice.
    QTimer m_timer;
};

#endif
