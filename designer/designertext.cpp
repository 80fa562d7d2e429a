#include "designertext.h"

#include <QDesignerFormEditorInterface>
#include <QDesignerFormWindowInterface>
#include <QDesignerFormWindowManagerInterface>
#include <QDesignerPropertySheetExtension>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include "designerobjects.h"

namespace {

const char Name[] = "~text";
/// In milliseconds.
const int IdleTime = 2000;

QString FormWith(const DesignerText& text)
{
    QString form;
    QXmlStreamWriter xml(&form);
    xml.writeStartElement("ui");
    xml.writeAttribute("version", "4.0");
    xml.writeStartElement("widget");
    xml.writeAttribute("class", "QWidget");
    xml.writeAttribute("name", "Form");
    xml.writeStartElement("property");
    xml.writeAttribute("name", Name);
    xml.writeAttribute("stdset", "0");
    xml.writeStartElement("string");
    xml.writeAttributes(text.attributes);
    xml.writeCharacters(text.text);
    xml.writeEndDocument();
    return form;
}

} // namespace

DesignerTexts::DesignerTexts(QDesignerFormEditorInterface* core) : m_core(core)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(IdleTime);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { delete m_form; });
}

DesignerTexts::~DesignerTexts()
{
    delete m_form;
}

QVariant DesignerTexts::ToValue(const DesignerText& text)
{
    MakeForm();
    m_form->setContents(FormWith(text));
    QWidget* const owner = m_form->mainContainer();
    return DesignerObjects::Sheet(m_core, owner)->property(DesignerObjects::DynamicIndex(m_core, owner, Name));
}

bool DesignerTexts::FromValue(const QVariant& value, DesignerText* text)
{
    if (ToValue(DesignerText()).userType() != value.userType())
        return false;
    QWidget* const owner = m_form->mainContainer();
    DesignerObjects::Sheet(m_core, owner)->setProperty(DesignerObjects::DynamicIndex(m_core, owner, Name), value);
    QXmlStreamReader xml(m_form->contents());
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("string"))
            continue;
        text->attributes = xml.attributes();
        text->text = xml.readElementText(QXmlStreamReader::SkipChildElements);
        return true;
    }
    return false;
}

/// Designer counts it among its forms, so that it is there only while it is needed.
void DesignerTexts::MakeForm()
{
    m_timer.start();
    if (!m_form)
        m_form = m_core->formWindowManager()->createFormWindow();
}
