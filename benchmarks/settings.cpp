#include <benchmark/benchmark.h>

#include <QDataWidgetMapper>
#include <QHash>
#include <QLineEdit>
#include <QStandardItemModel>
#include <vector>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/formbinding.h"
#include "DeclarationHandler/declarationhandler.h"
#include "settingspage.h"

// A settings page of line edits, bound in several ways to texts.

namespace {

/// Hand-written: remembers what it has shown, marks what is changed, and writes that alone.
class Hand
{
public:
    Hand()
    {
        for (int i = 0; i < SettingsPage::Count; ++i) {
            m_names.push_back(QString("v%1").arg(i));
            m_data[m_names[i]] = SettingsPage::InitialText(i);
        }
    }

    void Load()
    {
        for (int i = 0; i < SettingsPage::Count; ++i) {
            m_shown.push_back(m_data[m_names[i]].toString());
            m_isChanged.push_back(false);
            page.edits[i]->setText(m_shown[i]);
            QObject::connect(page.edits[i], &QLineEdit::textChanged, [this, i] { m_isChanged[i] = true; });
        }
    }

    void Save()
    {
        for (int i = 0; i < SettingsPage::Count; ++i) {
            if (!m_isChanged[i])
                continue;
            m_isChanged[i] = false;
            const QString text = page.edits[i]->text();
            if (text != m_shown[i])
                m_data[m_names[i]] = m_shown[i] = text;
        }
    }

    QString Value(int i) const { return m_data[m_names[i]].toString(); }

    SettingsPage page{"edit"};

private:
    QHash<QString, QVariant> m_data;
    std::vector<QString> m_names;
    std::vector<QString> m_shown;
    std::vector<bool> m_isChanged;
};

class Mapper
{
public:
    Mapper()
    {
        for (int i = 0; i < SettingsPage::Count; ++i)
            m_model.setItem(0, i, new QStandardItem(SettingsPage::InitialText(i)));
        m_mapper.setSubmitPolicy(QDataWidgetMapper::ManualSubmit);
    }

    void Load()
    {
        m_mapper.setModel(&m_model);
        for (int i = 0; i < SettingsPage::Count; ++i)
            m_mapper.addMapping(page.edits[i], i);
        m_mapper.toFirst();
    }

    void Save() { m_mapper.submit(); }
    QString Value(int i) const { return m_model.item(0, i)->text(); }

    SettingsPage page{"edit"};

private:
    QStandardItemModel m_model{1, SettingsPage::Count};
    QDataWidgetMapper m_mapper;
};

/// Its texts lie in the data layer.
class PeerSettings
{
public:
    PeerSettings()
    {
        for (int i = 0; i < SettingsPage::Count; ++i) {
            m_identifiers.push_back(VariableIdentifier(QString("v%1").arg(i), "Page"));
            m_peer->ChangeValue(m_identifiers[i], SettingsPage::InitialText(i), IDataPeer::NoFlag);
        }
    }

    QString Value(int i) const { return m_peer->GetValue(m_identifiers[i], QVariant()).toString(); }

    SettingsPage page{"edit"};

private:
    IDataPeer* const m_peer = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    std::vector<VariableIdentifier> m_identifiers;
};

class Handler : public PeerSettings
{
public:
    void Load()
    {
        for (int i = 0; i < SettingsPage::Count; ++i)
            m_handler.AddDeclaration(&page, page.edits[i], "_text", QString("v%1").arg(i), "Page", false, true);
        m_handler.ConnectPropertyCrossReferences();
        m_handler.Update();
    }

    void Save()
    {
        m_handler.Save(nullptr, QString());
        QCoreApplication::processEvents();
    }

private:
    DeclarationHandler m_handler;
};

/// A save ends when what it changed has been delivered.
class FormSettings : public PeerSettings
{
public:
    FormSettings()
    {
        for (int i = 0; i < SettingsPage::Count; ++i)
            page.edits[i]->setProperty("_text", QString("v%1").arg(i));
        m_binding.SetDefaultPackage("Page");
    }

    void Load() { m_binding.Bind(); }

    void Save()
    {
        m_binding.Save();
        QCoreApplication::processEvents();
    }

private:
    FormBinding m_binding{&page};
};

const bool registered = RegisterSettings<Hand>("hand") && RegisterSettings<Mapper>("QDataWidgetMapper")
    && RegisterSettings<Handler>("library") && RegisterSettings<FormSettings>("forms");

} // namespace
