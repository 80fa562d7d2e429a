#ifndef FORMLOADER_H
#define FORMLOADER_H

#include <QUiLoader>

class QByteArray;

/// Loads forms. A widget of a class that nobody knows becomes one of the class that the form names as
/// its base, or else a plain widget, and a message tells so.
class FormLoader : public QUiLoader
{
    Q_OBJECT

public:
    /// The form, without a parent and the caller's; null, with the reason in \a error, when the text is
    /// none.
    QWidget* Load(const QByteArray& text, QString* error);

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override;
};

#endif
