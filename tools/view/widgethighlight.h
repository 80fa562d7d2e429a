#ifndef WIDGETHIGHLIGHT_H
#define WIDGETHIGHLIGHT_H

#include <QPointer>
#include <QRubberBand>
#include <QVector>

/// A band over one widget of the form, which it follows. The form itself does not change.
class WidgetHighlight : public QRubberBand
{
    Q_OBJECT

public:
    /// \a stage holds the form.
    explicit WidgetHighlight(QWidget* stage);

    /// The band goes to that widget; null takes it away.
    void SetTarget(QWidget* target);
    /// Brings the pages to the front that it lies on.
    void Reveal(QWidget* target) const;
    /// False also for a widget that is hidden.
    bool Shows() const { return m_target && isVisible(); }

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void Place();

    QPointer<QWidget> m_target;
    QVector<QPointer<QWidget>> m_watched; ///< The target and all that it lies in, up to the stage.
};

#endif
