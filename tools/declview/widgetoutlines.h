#ifndef WIDGETOUTLINES_H
#define WIDGETOUTLINES_H

#include <QHash>
#include <QObject>

class QWidget;

/// Draws plain widgets that stand for ones of a host's own class as an outline, with that class and their name.
class WidgetOutlines : public QObject
{
    Q_OBJECT

public:
    /// The widget is outlined as long as both live.
    void Add(QWidget* widget, const QString& className);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;

    QHash<const QObject*, QString> m_texts;
};

#endif
