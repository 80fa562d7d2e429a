#include <QWidget>

#include <memory>

#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/memorydatapeer.h"
#include "DeclarationHandler/declarationhandler.h"
#include "formparts.h"
#include "fuzzing.h"

// A form and its handler. Each line of the input is an operation: a letter, then its arguments, of which a "|"
// ends each. An object is named by a digit: 0 is the form, 1 a page in it, the others lie in the page.
//
//   +OBJECT PROPERTY|STATEMENT|FLAGS   a declaration; "r" read-only, "i" initialize
//   dOBJECT PROPERTY|STATEMENT         a default declaration
//   mOBJECT ENTRY|VALUE                an entry of a constant map
//   c                                  connect the cross references
//   u                                  update
//   nVARIABLE|VALUE                    a change from another thread; VALUE is a character, see ChosenValue()
//   e                                  deliver what is queued
//   kOBJECT                            destroy
//   oOBJECT NAME                       rename
//   tOBJECT DIGIT                      move into the form or the page, or out of both
//   sOBJECT NAME                       save with a scope; without a NAME, everything
//   pOBJECT PROPERTY                   save one property
//   l                                  clear at the next notification of a written property
//   x                                  clear

namespace {

const int ObjectCount = 6;
const int MaxOperations = 48;

std::unique_ptr<MemoryDataPeer> s_peer;

class Factory : public IDataPeerFactory
{
public:
    IDataPeer* GetDataPeer(const qint32&) override { return s_peer.get(); }
};

class Form
{
public:
    Form();
    ~Form();
    void Run(char operation, const QByteArray& arguments);

private:
    QObject* Object(char digit) const { return m_objects[uchar(digit) % ObjectCount]; }
    void Add(QObject* object, const QStringList& arguments);
    void AddDefault(QObject* object, const QStringList& arguments);
    void Save(QObject* object, const QStringList& arguments);
    void Move(QObject* object, const QString& digit) const;
    void ChangeInAnotherThread(const QStringList& arguments) const;
    void ClearOnce();

    QPointer<QObject> m_objects[ObjectCount];
    DeclarationHandler m_handler;
    bool m_clearNext = false;
};

Form::Form()
{
    QWidget* const form = new QWidget;
    m_objects[0] = form;
    m_objects[1] = new QWidget(form);
    for (int i = 2; i < ObjectCount; ++i) {
        Target* const target = new Target(m_objects[1]);
        QObject::connect(target, &Target::Changed, [this] { ClearOnce(); });
        m_objects[i] = target;
    }
    for (int i = 0; i < ObjectCount; ++i)
        m_objects[i]->setObjectName(QChar('a' + i));
}

Form::~Form()
{
    m_handler.Clear();
    for (const QPointer<QObject>& object : m_objects)
        delete object;
}

void Form::ClearOnce()
{
    if (m_clearNext)
        m_handler.Clear();
    m_clearNext = false;
}

// Widgets have properties that open windows or read style sheets, which is Qt's affair.
QString PropertyOf(const QObject* object, const QString& name)
{
    return object && object->isWidgetType() ? "~toolTip" : name;
}

void Form::Add(QObject* object, const QStringList& arguments)
{
    const QString flags = arguments.value(2);
    const QString property = arguments.value(0);
    const bool added = m_handler.AddDeclaration(m_objects[0], object, PropertyOf(object, property), arguments.value(1),
                                                "p", flags.contains('r'), flags.contains('i'));
    Require(!added || object, "only objects are bound");
}

void Form::AddDefault(QObject* object, const QStringList& arguments)
{
    const QString property = PropertyOf(object, arguments.value(0));
    m_handler.AddDefaultDeclaration(m_objects[0], object, property, arguments.value(1), "p");
    Require(!m_handler.AddDefaultDeclaration(m_objects[0], object, property, "second", "p"),
            "a property has one default declaration");
}

void Form::Save(QObject* object, const QStringList& arguments)
{
    m_handler.Save(object, arguments.value(0));
}

void Form::Move(QObject* object, const QString& digit) const
{
    if (object && !object->isWidgetType())
        object->setParent(digit == "0" ? m_objects[0] : digit == "1" ? m_objects[1] : nullptr);
}

void Form::ChangeInAnotherThread(const QStringList& arguments) const
{
    const VariableIdentifier variable(arguments.value(0), "p");
    const QString choice = arguments.value(1);
    const QVariant value = ChosenValue(choice.isEmpty() ? 0 : choice.at(0).unicode());
    RunInAnotherThread([&] { s_peer->ChangeValue(variable, value, IDataPeer::NoFlag); });
}

void Form::Run(char operation, const QByteArray& line)
{
    QObject* const object = Object(line.isEmpty() ? '0' : line.at(0));
    const QStringList arguments = QString::fromUtf8(line.mid(1)).split('|');
    switch (operation) {
    case '+':
        return Add(object, arguments);
    case 'd':
        return AddDefault(object, arguments);
    case 'm':
        m_handler.AddConstMapDeclaration(object, arguments.value(0), arguments.value(1));
        return;
    case 'c':
        return m_handler.ConnectPropertyCrossReferences();
    case 'u':
        return m_handler.Update();
    case 'n':
        return ChangeInAnotherThread(QString::fromUtf8(line).split('|'));
    case 'e':
        return QCoreApplication::sendPostedEvents();
    case 'k':
        delete object;
        return;
    case 'o':
        return object ? object->setObjectName(arguments.value(0)) : void();
    case 't':
        return Move(object, arguments.value(0));
    case 's':
        return Save(object, arguments);
    case 'p':
        return m_handler.SaveProperty(object, arguments.value(0));
    case 'l':
        m_clearNext = true;
        return;
    case 'x':
        return m_handler.Clear();
    default:
        return;
    }
}

} // namespace

IDataPeerFactory* Ovex_DataPeerFactory(bool)
{
    static Factory factory;
    return &factory;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    StartApplication();
    SilenceMessages();
    s_peer = std::make_unique<MemoryDataPeer>();
    Form form;
    Input input(data, size);
    for (int i = 0; i < MaxOperations && !input.AtEnd(); ++i) {
        const QByteArray line = input.TakeLine();
        if (!line.isEmpty())
            form.Run(line.at(0), line.mid(1));
    }
    return 0;
}
