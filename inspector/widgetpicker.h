#ifndef WIDGETPICKER_H
#define WIDGETPICKER_H

#include <QObject>
#include <QPointer>
#include <QWidget>

/// Has the user point at a widget of the program: by a click, which the program does not get, or by Enter on the
/// widget that has the focus. Escape gives up.
class WidgetPicker : public QObject
{
    Q_OBJECT

public:
    /// Widgets of that window are left out, and work as ever.
    explicit WidgetPicker(const QWidget* window) : m_window(window) {}
    ~WidgetPicker() override;

    void Start();
    void Stop();
    bool IsPicking() const { return m_isPicking; }

Q_SIGNALS:
    void Picked(QWidget* widget);
    /// Whether something was picked or not.
    void Ended();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool OnKey(QWidget* widget, int key);
    void Pick(QWidget* widget);

    const QWidget* const m_window;
    bool m_isPicking = false;
    bool m_isReleasing = false; ///< The release of the button that picked is still to come.
};

#endif
