#ifndef FORMLOADER_H
#define FORMLOADER_H

#include <QPointer>
#include <QSet>
#include <QUiLoader>
#include <QVector>
#include <QWidget>

class QByteArray;
class QLayout;

/// Loads forms, also malformed ones on which Qt's loader crashes. A widget of a class that nobody knows becomes one
/// of the class that the form names as its base, or else a plain widget, a layout a vertical one, and a message tells
/// so. For each form a new loader.
class FormLoader : public QUiLoader
{
    Q_OBJECT

public:
    /// The form, without a parent and the caller's; null, with the reason in \a error, when the text is
    /// none. How deep its elements are nested, FormDocument::Parse() has to check before.
    QWidget* Load(const QByteArray& text, QString* error);

    /// The widgets that stand for ones of a class that is not known here, in the last form.
    struct StandIn
    {
        QPointer<QWidget> widget;
        QString className;
    };
    const QVector<StandIn>& StandIns() const { return m_standIns; }

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override;
    QLayout* createLayout(const QString& className, QObject* parent, const QString& name) override;

private:
    QSet<QString> m_asked; ///< Classes of which each extends the one before, while their widget is made.
    QVector<QPointer<QLayout>> m_layouts;
    QVector<StandIn> m_standIns;
};

#endif
