#ifndef WIDGETFLASH_H
#define WIDGETFLASH_H

#include <QObject>
#include <QPointer>
#include <QTimer>

#include "view/widgethighlight.h"

/// Makes a widget of the host flash a few times.
class WidgetFlash : public QObject
{
    Q_OBJECT

public:
    WidgetFlash();
    ~WidgetFlash() override;

    /// The widget of that object: itself, or the nearest in sight that it belongs to. Null for none.
    static QWidget* WidgetOf(QObject* object);

    /// That widget flashes, and no other any more.
    void Start(QObject* object);
    /// The widget that flashes at present; null for none.
    QWidget* Target() const { return m_target; }

private:
    void Toggle();
    void Stop();

    QPointer<QWidget> m_target;
    QPointer<WidgetHighlight> m_highlight; ///< A child of the host's window while it flashes.
    QTimer m_timer;
    int m_togglesLeft = 0;
};

#endif
