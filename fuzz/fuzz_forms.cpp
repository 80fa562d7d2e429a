#include <QComboBox>
#include <QLabel>
#include <QSlider>
#include <QTableWidget>

#include <memory>
#include <set>

#include "DataLayer/memorydatapeer.h"
#include "DeclarationForms/formbinding.h"
#include "common/source/PlatformIndependent/propertyinfo.h"
#include "formparts.h"
#include "fuzzing.h"

// A form and its binding. Each line of the input is an operation: a letter, then its arguments, of which a "|" ends
// each. An object is named by a digit: 0 is the form, 1 a page with the objects 2 to 4 (two without a class of
// widgets, a slider), the others lie in the form (a combo box, a label, a table).
//
//   +OBJECT PROPERTY|STATEMENT   bind one property
//   dOBJECT PROPERTY|STATEMENT   bind one by default
//   =OBJECT PROPERTY|TEXT        set a text: marked, a format, a save policy, or any other
//   *OBJECT PROPERTY|VALUE       edit; VALUE is a character, see ChosenValue()
//   bOBJECT                      bind a scope, the form without OBJECT, as for the next three
//   uOBJECT                      unbind
//   sOBJECT                      save
//   rOBJECT                      revert
//   U                            update
//   nVARIABLE|VALUE              a change from another thread
//   e                            deliver what is queued
//   lOBJECT PROPERTY|TEXT        the language changes, for which the form sets a text
//   kOBJECT                      destroy
//   oOBJECT NAME                 rename
//   tOBJECT DIGIT                move one of the objects 2 and 3 into the form or the page, or out of both
//   pDIGITS                      policies of saving and edits, the interval of deliveries
//   q                            the data layer refuses to change, or takes changes again
//   iOPERATION                   from the slot of the next signal
//   x                            another binding

namespace {

const int ObjectCount = 8;
const int MaxOperations = 48;

/// Counts what the form does.
class Peer : public MemoryDataPeer
{
public:
    bool ChangeValue(const VariableIdentifier& identifier, const QVariant& value, ChangeValueFlags flags) override
    {
        ++m_writes;
        return !m_isRefusing && MemoryDataPeer::ChangeValue(identifier, value, flags);
    }
    bool AddObserver(const VariableIdentifier& identifier, IDataObserver* observer) override
    {
        Require(m_observers.insert(observer).second, "an observer is added once");
        return MemoryDataPeer::AddObserver(identifier, observer);
    }
    void RemoveObserver(IDataObserver* observer) override
    {
        Require(m_observers.erase(observer) == 1, "who is removed was added");
        MemoryDataPeer::RemoveObserver(observer);
    }

    std::set<IDataObserver*> m_observers;
    int m_writes = 0;
    bool m_isRefusing = false;
};

/// Sets a text when the language changes, as retranslateUi() does.
class Translated : public QWidget
{
public:
    void changeEvent(QEvent* event) override
    {
        if (event->type() == QEvent::LanguageChange)
            m_retranslate();
        QWidget::changeEvent(event);
    }

    std::function<void()> m_retranslate = [] {};
};

class Form
{
public:
    Form();
    ~Form();
    void Run(const QByteArray& line);

private:
    bool Do(char operation, QObject* object, const QStringList& arguments);
    bool DoWithScope(char operation, QObject* scope);
    void CheckAll() const;
    void CheckProblems(const QVector<FormProblem>& problems) const;
    void NewBinding();
    void Interrupt();
    bool Bind(QObject* object, const QStringList& arguments, bool isDefault);
    void Edit(QObject* object, const QStringList& arguments) const;
    void Translate(QObject* object, const QStringList& arguments) const;
    void Destroy(QObject* object) const;
    void Move(QObject* object, const QString& digit) const;
    void ChangeInAnotherThread(const QStringList& arguments);
    void SetPolicies(const QByteArray& digits) const;

    Peer m_peer;
    QPointer<QObject> m_objects[ObjectCount];
    QPointer<FormBinding> m_binding;
    QByteArray m_interruption;
    int m_depth = 0;         ///< Operations that run, one from inside the other.
    int m_interruptions = 0; ///< So far.
    bool m_toldEdited = false;
};

Form::Form()
{
    QWidget* const form = new Translated;
    QWidget* const page = new QWidget(form);
    Target* const targets[] = {new Target(page), new Target(page)};
    QSlider* const slider = new QSlider(page);
    QObject* const objects[]
        = {form, page, targets[0], targets[1], slider, new QComboBox(form), new QLabel(form), new QTableWidget(form)};
    for (int i = 0; i < ObjectCount; ++i) {
        m_objects[i] = objects[i];
        m_objects[i]->setObjectName(QChar('a' + i));
    }
    for (const Target* const target : targets)
        QObject::connect(target, &Target::Changed, [this] { Interrupt(); });
    QObject::connect(slider, &QSlider::valueChanged, [this] { Interrupt(); });
    NewBinding();
}

Form::~Form()
{
    m_interruption.clear();
    delete m_binding;
    Require(m_peer.m_observers.empty(), "without a binding nobody observes");
    for (const QPointer<QObject>& object : m_objects)
        delete object;
}

void Form::NewBinding()
{
    delete m_binding;
    m_toldEdited = false;
    m_binding = new FormBinding(m_objects[0]);
    m_binding->SetDataPeer(&m_peer);
    m_binding->SetDefaultPackage("p");
    QObject::connect(m_binding, &FormBinding::ProblemFound, [this](const FormProblem& problem) {
        CheckProblems({problem});
        Interrupt();
    });
    QObject::connect(m_binding, &FormBinding::EditedChanged, [this](bool isEdited) {
        Require(isEdited != m_toldEdited, "edited is told when it changes");
        m_toldEdited = isEdited;
        Interrupt();
    });
    QObject::connect(m_binding, &FormBinding::Saved, [this] { Interrupt(); });
}

void Form::Interrupt()
{
    if (!m_interruption.isEmpty())
        Run(std::exchange(m_interruption, QByteArray()));
}

// Widgets have properties that open windows or read style sheets, which is Qt's affair.
QString PropertyOf(const QObject* object, const QString& name)
{
    static const QStringList allowed = {"value", "maximum", "minimum", "text", "currentText", "currentIndex"};
    const QString normal = PropertyInfo::ToNormal(name);
    const bool isFree = !object || !object->isWidgetType() || allowed.contains(normal)
        || object->metaObject()->indexOfProperty(normal.toUtf8()) < 0;
    return isFree ? name : name.left(name.size() - normal.size()) + "toolTip";
}

bool Form::Bind(QObject* object, const QStringList& arguments, bool isDefault)
{
    const QString property = PropertyOf(object, arguments.value(0));
    const QString statement = arguments.value(1);
    const int before = m_interruptions;
    const bool isBound = isDefault ? m_binding->BindDefault(object, property, statement)
                                   : m_binding->Bind(object, property, statement);
    Require(!isBound || (object && property != PropertyInfo::ToNormal(property)), "only marked properties are bound");
    if (isBound || !object || before != m_interruptions)
        return true;
    bool isTold = false;
    for (const FormProblem& problem : m_binding->Problems(object))
        isTold = isTold || (problem.severity == FormProblem::Error && problem.property == property);
    Require(isTold, "what is not bound has an error");
    return true;
}

void Form::Edit(QObject* object, const QStringList& arguments) const
{
    const QString choice = arguments.value(1);
    const QByteArray name = PropertyOf(object, arguments.value(0)).toUtf8();
    if (object && !name.isEmpty())
        object->setProperty(name, ChosenValue(choice.isEmpty() ? 0 : choice.at(0).unicode()));
}

void Form::Translate(QObject* object, const QStringList& arguments) const
{
    Translated* const form = static_cast<Translated*>(m_objects[0].data());
    const QByteArray name = PropertyOf(object, arguments.value(0)).toUtf8();
    if (!form || !object || name.isEmpty())
        return;
    const QPointer<QObject> guarded = object;
    form->m_retranslate = [=] { guarded ? guarded->setProperty(name, arguments.value(1)) : false; };
    QEvent event(QEvent::LanguageChange);
    QCoreApplication::sendEvent(form, &event);
}

// Inside their own signals only some classes may be destroyed: those on the page.
void Form::Destroy(QObject* object) const
{
    const bool isOnPage = m_objects[1] && object && (object == m_objects[1] || object->parent() == m_objects[1]);
    if (m_depth == 1 || isOnPage)
        delete object;
}

void Form::Move(QObject* object, const QString& digit) const
{
    if (object && !object->isWidgetType())
        object->setParent(digit == "0" ? m_objects[0] : digit == "1" ? m_objects[1] : nullptr);
}

void Form::ChangeInAnotherThread(const QStringList& arguments)
{
    const VariableIdentifier variable(arguments.value(0), "p");
    const QString choice = arguments.value(1);
    const QVariant value = ChosenValue(choice.isEmpty() ? 0 : choice.at(0).unicode());
    RunInAnotherThread([&] { m_peer.ChangeValue(variable, value, IDataPeer::NoFlag); });
}

void Form::SetPolicies(const QByteArray& digits) const
{
    const auto digit = [&digits](int index) { return index < digits.size() ? uchar(digits.at(index)) : 0; };
    m_binding->SetSavePolicy(FormBinding::SavePolicy(digit(0) % 3));
    m_binding->SetEditPolicy(FormBinding::EditPolicy(digit(1) % 2));
    m_binding->SetDeliveryInterval(digit(2) % 2);
}

bool Form::DoWithScope(char operation, QObject* scope)
{
    const int interruptions = m_interruptions;
    const int count = m_binding->BoundProperties().size();
    const bool isBound = operation != 'b' || m_binding->Bind(scope);
    if (operation == 'u')
        m_binding->Unbind(scope);
    else if (operation == 's')
        Require(m_binding->Save(scope).saved <= count, "only what is bound is saved");
    else if (operation == 'r')
        m_binding->Revert(scope);
    if (m_interruptions != interruptions)
        return true;
    Require(isBound || !m_objects[0] || !m_binding->Problems().isEmpty(), "what is not bound has a problem");
    Require(operation != 'u' || m_binding->BoundProperties(scope).isEmpty(), "what is unbound is not bound");
    Require(operation != 'u' || m_binding->Problems(scope).isEmpty(), "what is unbound has no problem");
    Require(operation != 'u' || scope || m_peer.m_observers.empty(), "without bound properties nobody observes");
    return true;
}

/// Answers whether there is such an operation.
bool Form::Do(char operation, QObject* object, const QStringList& arguments)
{
    switch (operation) {
    case '+':
    case 'd':
        return Bind(object, arguments, operation == 'd');
    case 'b':
    case 'u':
    case 's':
    case 'r':
        return DoWithScope(operation, object);
    case '=':
        return object && object->setProperty(PropertyOf(object, arguments.value(0)).toUtf8(), arguments.value(1));
    case '*':
        return Edit(object, arguments), true;
    case 'U':
        return m_binding->Update(), true;
    case 'l':
        return Translate(object, arguments), true;
    case 'k':
        return Destroy(object), true;
    case 'o':
        return object && (object->setObjectName(arguments.value(0)), true);
    case 't':
        return Move(object, arguments.value(0)), true;
    case 'x':
        return NewBinding(), true;
    default:
        return false;
    }
}

void Form::CheckProblems(const QVector<FormProblem>& problems) const
{
    for (const FormProblem& problem : problems) {
        Require(!problem.message.isEmpty(), "a problem has a message");
        const bool hasPlace = problem.position >= 0 && problem.length >= 0
            && problem.position + problem.length <= problem.statement.size();
        Require(hasPlace || (problem.position == -1 && problem.length == 0), "a place lies in the statement");
    }
}

void Form::CheckAll() const
{
    const bool isEdited = m_binding->IsEdited();
    bool isOneEdited = false;
    std::set<QPair<QObject*, QString>> known;
    for (const BoundProperty& bound : m_binding->BoundProperties()) {
        Require(bound.object, "what is bound has an object");
        Require(known.insert({bound.object, PropertyInfo::ToNormal(bound.property)}).second, "it is bound once");
        Require(!bound.edited || bound.writable, "only what can be written is edited");
        isOneEdited = isOneEdited || bound.edited;
    }
    Require(isEdited == isOneEdited, "a form is edited if one of its properties is");
    CheckProblems(m_binding->Problems());
    // Of some properties edits are noticed when somebody asks, and told with the next turn.
    for (int turn = 0; m_binding && turn < 2; ++turn) {
        m_binding->IsEdited();
        QCoreApplication::sendPostedEvents();
    }
    if (m_binding)
        Require(m_toldEdited == m_binding->IsEdited(), "it is told whether the form is edited");
}

void Form::Run(const QByteArray& line)
{
    const int maxDepth = 3;
    if (line.isEmpty() || m_depth >= maxDepth || !m_binding)
        return;
    m_interruptions += m_depth > 0;
    ++m_depth;
    const char operation = line.at(0);
    const bool hasObject = line.size() > 1;
    QObject* const object = hasObject ? m_objects[uchar(line.at(1)) % ObjectCount].data() : nullptr;
    if (operation == 'n')
        ChangeInAnotherThread(QString::fromUtf8(line.mid(1)).split('|'));
    else if (operation == 'e')
        QCoreApplication::processEvents();
    else if (operation == 'p')
        SetPolicies(line.mid(1));
    else if (operation == 'q')
        m_peer.m_isRefusing = !m_peer.m_isRefusing;
    else if (operation == 'i')
        m_interruption = line.mid(1);
    else if (hasObject == (object != nullptr))
        Do(operation, object, QString::fromUtf8(line.mid(2)).trimmed().split('|'));
    if (m_depth == 1)
        CheckAll();
    --m_depth;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    StartApplication();
    SilenceMessages();
    Form form;
    Input input(data, size);
    for (int i = 0; i < MaxOperations && !input.AtEnd(); ++i)
        form.Run(input.TakeLine());
    return 0;
}
