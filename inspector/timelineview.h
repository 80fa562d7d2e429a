#ifndef TIMELINEVIEW_H
#define TIMELINEVIEW_H

#include <QWidget>

class InspectedForm;

/// The last deliveries as bars, the newest at the right; the height is the time that each took.
class TimelineView : public QWidget
{
    Q_OBJECT

public:
    /// The form outlives this.
    explicit TimelineView(const InspectedForm* form);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const InspectedForm* const m_form;
};

#endif
