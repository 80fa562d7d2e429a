#ifndef DESIGNERTEXT_H
#define DESIGNERTEXT_H

#include <QPointer>
#include <QTimer>
#include <QVariant>
#include <QXmlStreamAttributes>

class QDesignerFormEditorInterface;
class QDesignerFormWindowInterface;

/// A text as Designer keeps it: with what it says to translators, such as notr="true" or a comment.
struct DesignerText
{
    QString text;
    QXmlStreamAttributes attributes;
};

/// Changes texts into the values that Designer's property sheets hold, and back. Its type of them is none of its
/// public interfaces, but a form's file tells all of a text: a form that nobody sees reads and writes one.
class DesignerTexts
{
public:
    explicit DesignerTexts(QDesignerFormEditorInterface* core);
    ~DesignerTexts();

    QVariant ToValue(const DesignerText& text);
    /// False for a value of another type.
    bool FromValue(const QVariant& value, DesignerText* text);

private:
    void MakeForm();

    QDesignerFormEditorInterface* const m_core;
    QPointer<QDesignerFormWindowInterface> m_form;
    QTimer m_timer; ///< Until the form goes.
};

#endif
